// A program that brings the components along and names them in its manifest opens every kind of
// dialog; nothing is registered. The files are those of this build, or of an unpacked archive.

#include "driver/List.h"
#include "manifest/Components.h"
#include "users/UsersTest.h"

namespace krx::drive {
namespace {

namespace fs = std::filesystem;

constexpr const wchar_t* kProgram = L"every_dialog.exe";

class WithoutRegistration : public UsersTest {
 protected:
  // Users are made by the test that needs them: a script client would need registration.
  void SetUp() override { DialogTest::SetUp(); }

  void Open(const std::string& arguments, const fs::path& folder = Components()) {
    RunCommand(L"\"" + (folder / kProgram).wstring() + L"\" " + Widen(arguments));
  }
  void OpenInEnglish(const std::string& arguments) { Open("--language en " + arguments); }
};

struct Dialog {
  std::string Method;
  const wchar_t* Form;
  const char* Title;  // key of its text
};

class EverySelection : public WithoutRegistration, public testing::WithParamInterface<Dialog> {};

TEST_P(EverySelection, OpensWithTheTextsOfTheRuntimeAndIsCancelled) {
  const Dialog& dialog = GetParam();
  OpenInEnglish(dialog.Method);
  const Window form = WaitForForm(dialog.Form);
  form.WaitUntilAtRest();
  EXPECT_EQ(form.Child(L"idxCaption").Text(), Text(dialog.Title));
  form.Child(L"keyCancel").Click();
  EXPECT_EQ(Printed(), Lines{dialog.Method + ": "});
}

INSTANTIATE_TEST_SUITE_P(
    WithoutRegistration, EverySelection,
    testing::Values(Dialog{"KRSelectDirectory", L"FSelectDirectory", "TitleSelectDirectory"},
                    Dialog{"KRSelectDirectoryTouch", L"FDirectorySelectTouch",
                           "TitleSelectDirectory"},
                    Dialog{"KROpenFile", L"FFileSelect", "TitleOpen"},
                    Dialog{"KRSaveFileAs", L"FFileSelect", "TitleSaveAs"},
                    Dialog{"KROpenFileTouch", L"FFileSelectTouch", "TitleOpen"}),
    [](const auto& test) { return test.param.Method; });

TEST_F(WithoutRegistration, AMessageBoxAsksAndTheAnswerArrives) {
  OpenInEnglish("KRMsgBox");
  const Window box = NextBox();
  EXPECT_EQ(box.Child(L"idxCaption").Text(), L"Pump");
  EXPECT_EQ(box.Child(L"idxMessage").Text(), L"Start the pump?");
  EXPECT_EQ(Shown(box.Child(L"keyButton(0)")), Text("Yes"));
  box.Child(L"keyButton(0)").Click();
  EXPECT_EQ(Printed(), Lines{"KRMsgBox: yes"});
}

TEST_F(WithoutRegistration, FreeButtonsAreShownAndTheAnswerArrives) {
  OpenInEnglish("KRMsgBoxEx");
  const Window box = NextBox();
  EXPECT_EQ(Shown(box.Child(L"keyButton(1)")), L"Straight on");
  box.Child(L"keyButton(1)").Click();
  EXPECT_EQ(Printed(), Lines{"KRMsgBoxEx: button 2"});
}

TEST_F(WithoutRegistration, TheRuntimesSettingsHoldForTheDialogs) {
  Open("--language de KRMsgBox");
  const Window box = NextBox();
  EXPECT_EQ(Shown(box.Child(L"keyButton(1)")), Text("No", "de"));
  box.Child(L"keyButton(1)").Click();
  EXPECT_EQ(Printed(), Lines{"KRMsgBox: no"});
}

TEST_F(WithoutRegistration, CallsComeFromAnotherApartment) {
  OpenInEnglish("--from-another-apartment KRMsgBox");
  NextBox().Child(L"keyButton(0)").Click();
  EXPECT_EQ(Printed(), Lines{"KRMsgBox: yes"});
  ForgetTypeLibraries();
}

TEST_F(WithoutRegistration, NothingIsRegisteredByTheWay) {
  OpenInEnglish("KRMsgBox");
  NextBox().Child(L"keyButton(0)").Click();
  EXPECT_EQ(Printed(), Lines{"KRMsgBox: yes"});
  for (const wchar_t* component : kComponents)
    EXPECT_FALSE(IsRegistered(AttributesOf(*TypeLibraryOf(component))));
}

TEST_F(WithoutRegistration, TheFirstAdministratorLogsOnAndSeesEveryDialogOfUsers) {
  Store.emplace();
  const std::wstring generated = Widen(Store->Provision("leitung"));
  OpenInEnglish("KRUserLogOn KRWhoAmI KRChangePassword KRAddUser KRUser");
  LogOn(L"leitung", generated);
  Confirm(Text("msgRenewPassword"));
  ChangePassword(generated, kPassword);
  Type(Form(L"FLogOn", L"txtPassword"), L"txtPassword", kPassword);
  PressKey(L"Enter");
  EXPECT_EQ(Form(L"FWhoAmI", L"keyOK").Child(L"txtName").Text(), L"leitung");
  PressKey(L"Enter");
  Form(L"FChangePassword", L"txtActPassword");
  PressKey(L"Esc");
  Form(L"FAddUser", L"txtName");
  PressKey(L"Esc");
  const List users(Form(L"FUser", L"lvwUser"), L"lvwUser");
  EXPECT_EQ(users.Column(0), std::vector<std::wstring>{L"leitung"});
  PressKey(L"Esc");
  EXPECT_EQ(Printed(), (Lines{"KRUserLogOn: yes", "KRWhoAmI: closed", "KRChangePassword: closed",
                              "KRAddUser: no", "KRUser: closed"}));
}

TEST_F(WithoutRegistration, TheListOfUsersOpens) {
  Store.emplace();
  Store->Provision("leitung");
  OpenInEnglish("KRUserLogOnCombo");
  const Window form = WaitForForm(L"FLogOnCombo");
  form.WaitUntilAtRest();
  form.Child(L"keyCancel").Click();
  EXPECT_EQ(Printed(), Lines{"KRUserLogOnCombo: no"});
}

TEST_F(WithoutRegistration, EveryDialogOpensInTurnAlsoWhileNobodyIsLoggedOn) {
  Store.emplace();
  Store->Provision("leitung");
  OpenInEnglish("");
  HWND before = nullptr;
  for (const wchar_t* name :
       {L"FMessageBox", L"FMessageBox", L"FLogOn", L"FLogOnCombo", L"FMessageBox", L"FMessageBox",
        L"FMessageBox", L"FUser", L"FSelectDirectory", L"FDirectorySelectTouch", L"FFileSelect",
        L"FFileSelect", L"FFileSelectTouch"}) {
    const Window form = WaitForForm(name, before);
    before = form.Handle();
    form.WaitUntilAtRest();
    // Where a finger is expected, only the button gives up.
    const bool touch = std::wstring_view(name).ends_with(L"Touch");
    form.Child(touch ? L"keyCancel" : L"keyClose").Click();
    form.WaitUntilGone();
  }
  const Lines printed = Printed();
  EXPECT_EQ(printed.size(), 13u);
  EXPECT_EQ(printed.back(), "KROpenFileTouch: ");
}

// A copy of all that the program brings along.
class Copy {
 public:
  Copy() : folder_(fs::temp_directory_path() / L"krx-every-dialog") {
    fs::remove_all(folder_);
    fs::create_directories(folder_);
    for (const auto& file : fs::directory_iterator(Components())) {
      const std::wstring name = file.path().filename().wstring();
      if (name.starts_with(L"Korvel") || name.starts_with(kProgram) || name == L"KRXDialogs.dll")
        fs::copy_file(file.path(), folder_ / name);
    }
  }
  ~Copy() {
    std::error_code ignored;
    fs::remove_all(folder_, ignored);
  }
  const fs::path& Folder() const { return folder_; }

 private:
  fs::path folder_;
};

TEST_F(WithoutRegistration, TheClassIsNotRegisteredOnceTheManifestIsTakenAway) {
  const Copy copy;
  Open("--language en KRMsgBox", copy.Folder());
  NextBox().Child(L"keyButton(0)").Click();
  EXPECT_EQ(Printed(), Lines{"KRMsgBox: yes"});
  ASSERT_TRUE(fs::remove(copy.Folder() / L"every_dialog.exe.manifest"));
  Open("KRMsgBox", copy.Folder());
  EXPECT_EQ(TheClient().Finish(), 1u);
  EXPECT_EQ(TheClient().Lines(),
            Lines{"the components: failed with 0x80040154"});  // REGDB_E_CLASSNOTREG
}

}  // namespace
}  // namespace krx::drive
