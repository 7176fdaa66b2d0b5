// Both widths on one machine: what their packages share stays until the last of them goes.

#include "install/Installer.h"

#ifndef _WIN64

namespace krx::install {
namespace {

class SideBySide : public InstallTest {
 protected:
  void TearDown() override {
    Msiexec64(L"/x");
    InstallTest::TearDown();
  }

  // The installer of the other width, which this one does not reach by its name.
  static DWORD Msiexec64(const std::wstring& action) {
    return RunToEnd(LR"(C:\windows\sysnative\msiexec.exe /qn )" + action + L" \"" +
                    (Packages(Version::New) / "x64.msi").wstring() + L"\"");
  }

  // Where the help lies is one value for both widths: the one that was written last holds.
  Picture WithoutHelp() const {
    Picture picture = TakePictureOf(Classes());
    std::erase_if(picture, [](const auto& entry) {
      return entry.first.find(L"\\HELPDIR") != std::wstring::npos ||
             entry.first.starts_with(L"\\Installer");
    });
    return picture;
  }

  void ExpectClasses(const Picture& expected) const {
    for (const std::string& line : Changes(expected, WithoutHelp()))
      ADD_FAILURE() << line;
  }
};

TEST_P(SideBySide, X86StaysWhenX64ComesAndGoes) {
  Install(Version::New);
  const Picture alone = WithoutHelp();
  ASSERT_EQ(Msiexec64(L"/i"), static_cast<DWORD>(ERROR_SUCCESS));
  UseTheDialogs();
  ASSERT_EQ(Msiexec64(L"/x"), static_cast<DWORD>(ERROR_SUCCESS));
  ExpectClasses(alone);
  UseTheDialogs();
}

TEST_P(SideBySide, X64StaysWhenX86ComesAndGoes) {
  const Picture bare = WithoutHelp();
  ASSERT_EQ(Msiexec64(L"/i"), static_cast<DWORD>(ERROR_SUCCESS));
  const Picture alone = WithoutHelp();
  Install(Version::New);
  Uninstall();
  ExpectClasses(alone);
  ASSERT_EQ(Msiexec64(L"/x"), static_cast<DWORD>(ERROR_SUCCESS));
  ExpectClasses(bare);
}

INSTANTIATE_TEST_SUITE_P(For, SideBySide, ::testing::Values(Scope::Machine),
                         [](const auto&) { return "TheMachine"; });

}  // namespace
}  // namespace krx::install

#endif
