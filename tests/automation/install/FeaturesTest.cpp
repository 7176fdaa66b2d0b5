// Which parts are installed is the plant's choice.

#include "install/FoundClasses.h"
#include "install/Installer.h"
#include "platform/Differences.h"

namespace krx::install {
namespace {

namespace fs = std::filesystem;
using drive::Lines;

class Features : public InstallTest {};

TEST_P(Features, TheToolForUsersComesOnRequestAlone) {
  Install(Version::New);
  for (const wchar_t* feature : {L"Dialogs", L"Runtime", L"Samples"})
    EXPECT_TRUE(Has(feature)) << std::wstring(feature).c_str();
  EXPECT_FALSE(fs::exists(Folder() / "krxusers.exe"));
  Install(Version::New, L"ADDLOCAL=UsersTool");
  EXPECT_TRUE(fs::exists(Folder() / "krxusers.exe"));
}

TEST_P(Features, TheDialogsComeWithWhateverIsChosen) {
  Install(Version::New, L"ADDLOCAL=UsersTool");
  EXPECT_TRUE(fs::exists(Folder() / "krxusers.exe"));
  EXPECT_EQ(fs::exists(Folder() / "KRXDialogs.dll"),
            test::Expected(test::kPartsComeWithoutWhatTheyBelongTo, false, true));
}

TEST_P(Features, APartMayBeTakenAwayAgain) {
  Install(Version::New, L"ADDLOCAL=Dialogs,UsersTool");
  EXPECT_TRUE(fs::exists(Folder() / "KRXDialogs.dll"));
  EXPECT_FALSE(fs::exists(Folder() / "KorvelRuntime.dll"));
  Install(Version::New, L"REMOVE=UsersTool");
  EXPECT_FALSE(fs::exists(Folder() / "krxusers.exe"));
  EXPECT_TRUE(fs::exists(Folder() / "KRXDialogs.dll"));
}

TEST_P(Features, APlantWithItsOwnRuntimeLeavesTheReferenceRuntimeOut) {
  Install(Version::New, L"ADDLOCAL=Dialogs");
  EXPECT_FALSE(fs::exists(Folder() / "KorvelRuntime.dll"));
  EXPECT_FALSE(fs::exists(Folder() / "samples"));
  const FoundClasses classes(For());
  RunPlainScript(
      "On Error Resume Next\r\n"
      "CreateObject(\"KRXDialogs.KRXDialog\").KRMsgBox \"Text\"\r\n"
      "WScript.Echo Hex(Err.Number), Err.Description\r\n");
  EXPECT_EQ(Printed(), Lines{"80040154 The runtime's class FontService is not registered"});
}

TEST_P(Features, TheEventLogOfAMachineFindsTheTextsOfEventsInTheRuntime) {
  const std::wstring source =
      L"HKLM\\System\\CurrentControlSet\\Services\\EventLog\\Application\\KRXUsers";
  Install(Version::New);
  Picture entry = TakePictureOf(source);
  if (For() == Scope::User) {
    EXPECT_TRUE(entry.empty()) << "a user has no rights to that";
    return;
  }
  EXPECT_EQ(entry[L" : EventMessageFile"], L"2:" + (Folder() / "KorvelRuntime.dll").wstring());
  EXPECT_EQ(entry[L" : TypesSupported"], L"4:07000000");
  Install(Version::New, L"REMOVE=Runtime");
  EXPECT_TRUE(TakePictureOf(source).empty());
}

TEST_P(Features, TheFolderMayBeChosenAndIsKept) {
  const fs::path folder = fs::temp_directory_path() / "krx chosen";
  Install(Version::Old, L"INSTALLDIR=\"" + folder.wstring() + L"\"");
  EXPECT_TRUE(fs::exists(folder / "KRXDialogs.dll"));
  Install(Version::New);
  EXPECT_TRUE(fs::exists(folder / "KRXDialogs.dll"));
  EXPECT_FALSE(fs::exists(Folder()));
  UseTheDialogs();
  Uninstall();
  EXPECT_FALSE(fs::exists(folder));
}

INSTANTIATE_TEST_SUITE_P(For, Features, ::testing::Values(Scope::Machine, Scope::User),
                         [](const auto& scope) {
                           return scope.param == Scope::Machine ? "TheMachine" : "TheUser";
                         });

}  // namespace
}  // namespace krx::install
