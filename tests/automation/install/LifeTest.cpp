// A product's life on a machine: it comes, is used, gets newer, is mended and goes.

#include "driver/Window.h"
#include "install/Installer.h"

namespace krx::install {
namespace {

namespace fs = std::filesystem;

constexpr const wchar_t* kServer =
    L"\\CLSID\\{6B1C0A52-3D1E-4C57-9B7E-5A0E2F3C3020}\\InprocServer32";

// The machine as it was before any test of this program has installed anything. The script host
// enters its own classes when it is used for the first time.
class Bare : public ::testing::Environment {
 public:
  void SetUp() override {
    RunToEnd(drive::ScriptFile("WScript.Echo 1\r\n").Command());
    picture = TakePicture();
  }

  static inline Picture picture;
};
[[maybe_unused]] const auto* const bare_machine = ::testing::AddGlobalTestEnvironment(new Bare);

class Life : public InstallTest {
 protected:
  // Whether the installed component is that of the version under test, not that of the version
  // before.
  bool HasBuiltComponent() const {
    const std::string name = "KRXDialogs.dll";
    return Read(Folder() / name) == Read(Packages(Version::New) / kWidth / name);
  }
  static void ExpectNothingChanged(const Picture& before) {
    for (const std::string& line : Changes(before, TakePicture()))
      ADD_FAILURE() << line;
  }
};

TEST_P(Life, WhatIsInstalledWorksAndGoesWithoutATrace) {
  Install(Version::New);
  EXPECT_EQ(InstalledVersion(), KRX_VERSION);
  EXPECT_TRUE(fs::exists(Folder() / "KRXDialogs.dll"));
  EXPECT_TRUE(fs::exists(StartMenu() / "KRXDialogs samples.lnk"));
  EXPECT_TRUE(fs::exists(StartMenu() / "KRXDialogs help.lnk"));
  UseTheDialogs();
  Uninstall();
  ExpectNothingChanged(Bare::picture);
}

TEST_P(Life, TheSystemsListOfProgramsNamesVersionAndPublisher) {
  Install(Version::New);
  std::wstring found;
  for (const wchar_t* software :
       {L"HKLM\\Software", L"HKLM\\Software\\Wow6432Node", L"HKCU\\Software"}) {
    const std::wstring list =
        software + std::wstring(L"\\Microsoft\\Windows\\CurrentVersion\\Uninstall");
    for (const auto& [path, content] : TakePictureOf(list))
      if (content == L"1:KRXDialogs") found = list + path.substr(0, path.find(L" : "));
  }
  ASSERT_NE(found, L"") << "no entry";
  Picture entry = TakePictureOf(found);
  EXPECT_EQ(entry[L" : DisplayVersion"], std::wstring(L"1:") + KRX_VERSION);
  EXPECT_EQ(entry[L" : Publisher"], L"1:Korvel");
}

TEST_P(Life, ANewerVersionTakesThePlaceOfTheOneBefore) {
  Install(Version::Old);
  EXPECT_EQ(InstalledVersion(), L"0.9.0");
  EXPECT_FALSE(HasBuiltComponent());
  Install(Version::New);
  EXPECT_EQ(InstalledVersion(), KRX_VERSION);
  EXPECT_TRUE(HasBuiltComponent());
  UseTheDialogs();
}

TEST_P(Life, AnOlderVersionIsRefusedAndChangesNothing) {
  Install(Version::New);
  const Picture before = TakePicture();
  EXPECT_EQ(TryToInstall(Version::Old), static_cast<DWORD>(ERROR_INSTALL_FAILURE));
  EXPECT_EQ(InstalledVersion(), KRX_VERSION);
  ExpectNothingChanged(before);
}

TEST_P(Life, ARepairBringsBackAFileAndAValueThatWereDeleted) {
  Install(Version::New);
  const Picture installed = TakePictureOf(Classes() + kServer);
  fs::remove(Folder() / "KRXDialogs.dll");
  RegDeleteTreeW(For() == Scope::Machine ? HKEY_LOCAL_MACHINE : HKEY_CURRENT_USER,
                 (Classes().substr(5) + kServer).c_str());
  ASSERT_TRUE(TakePictureOf(Classes() + kServer).empty());
  Repair();
  EXPECT_TRUE(HasBuiltComponent());
  EXPECT_EQ(TakePictureOf(Classes() + kServer), installed);
  UseTheDialogs();
}

INSTANTIATE_TEST_SUITE_P(For, Life, ::testing::Values(Scope::Machine, Scope::User),
                         [](const auto& scope) {
                           return scope.param == Scope::Machine ? "TheMachine" : "TheUser";
                         });

}  // namespace
}  // namespace krx::install
