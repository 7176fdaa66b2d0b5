// Names with characters that nobody sees, or that turn the text around: the tool and the dialog
// refuse them and say so.

#include "access/Reader.h"
#include "users/UsersTest.h"

namespace krx::drive {
namespace {

struct Unseen {
  const char* Name;
  wchar_t Letter;
  const char* Code;
};

void PrintTo(const Unseen& unseen, std::ostream* out) {
  *out << unseen.Code;
}

class UnseenNames : public UsersTest, public ::testing::WithParamInterface<Unseen> {
 protected:
  void SetUp() override {
    UsersTest::SetUp();
    CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
  }
  void TearDown() override {
    CoUninitialize();
    UsersTest::TearDown();
  }
  static std::wstring NameWith(wchar_t letter) { return std::wstring(L"ut") + letter + L"a"; }
};

TEST_P(UnseenNames, ProvisioningRefusesThemAndNamesTheCharacter) {
  const UserStoreFolder empty;
  empty.Use();
  RunCommand(L"\"" + (ProgramFolder() / "krxusers.exe").wstring() + L"\" provision " +
             NameWith(GetParam().Letter) + L" --generate");
  EXPECT_EQ(TheClient().Finish(), 1u);
  const Lines said = TheClient().Lines();
  ASSERT_FALSE(said.empty());
  EXPECT_NE(said.back().find(std::string("this is no user name: it has a character that is not "
                                         "seen, ") +
                             GetParam().Code),
            std::string::npos)
      << said.back();
  for (const std::string& line : said)
    EXPECT_EQ(line.find("Password"), std::string::npos) << line;
}

TEST_P(UnseenNames, AddingAUserRefusesThemAndKeepsTheForm) {
  RunUserScript("LogOn \"admin\"\r\nWScript.Echo CStr(Dialogs.KRAddUser())\r\n");
  const Window form = Form(L"FAddUser", L"txtName");
  Element(form.Child(L"txtName")).SetValue(NameWith(GetParam().Letter));
  form.Child(L"txtName").WaitForText(NameWith(GetParam().Letter));
  Move(form, L"Enter", L"txtFullName");
  Move(form, L"Enter", L"txtPassword");
  Type(form, L"txtPassword", L"Acht Pumpen");
  Move(form, L"Enter", L"txtPassword2");
  Type(form, L"txtPassword2", L"Acht Pumpen");
  Move(form, L"Enter", L"cboUserClass");
  PressKey(L"Down");
  const Window classes = form.Child(L"cboUserClass");
  EXPECT_TRUE(Within(kPatience, [&] { return !classes.Text().empty(); }));
  Move(form, L"Enter", L"txtComment");
  PressKey(L"Enter");
  Confirm(Text("msgCallFailed"));
  form.WaitUntilAtRest();
  EXPECT_EQ(form.Child(L"txtName").Text(), NameWith(GetParam().Letter));
  PressKey(L"Esc");
  EXPECT_EQ(Printed(), (Lines{"False", "end"}));
  EXPECT_NE(Store->AuditLog().find(std::string("refused: this is no user name: it has a character "
                                               "that is not seen, ") +
                                   GetParam().Code),
            std::string::npos);
}

INSTANTIATE_TEST_SUITE_P(With, UnseenNames,
                         ::testing::Values(Unseen{"AnOverride", 0x202E, "U+202E"},
                                           Unseen{"AnIsolate", 0x2066, "U+2066"},
                                           Unseen{"ABlankWithoutWidth", 0x200B, "U+200B"},
                                           Unseen{"ASoftHyphen", 0x00AD, "U+00AD"}),
                         [](const auto& test) { return std::string(test.param.Name); });

}  // namespace
}  // namespace krx::drive
