#pragma once

#include <windows.h>

#include <filesystem>
#include <string>

#include "install/Picture.h"
#include "support/DialogTest.h"

namespace krx::install {

#ifdef _WIN64
inline constexpr const wchar_t* kWidth = L"x64";
#else
inline constexpr const wchar_t* kWidth = L"x86";
#endif

// For whom a package installs.
enum class Scope { Machine, User };

// The packages made for these tests: the version under test and one that is older than it.
enum class Version { Old, New };

// Base of the tests: nothing of the product is installed or registered when a test begins, and
// nothing when it has ended.
class InstallTest : public drive::DialogTest, public ::testing::WithParamInterface<Scope> {
 protected:
  void SetUp() override;
  void TearDown() override;

  // Installs without any question; `options` are further properties. Anything but success is a
  // failure.
  void Install(Version version, const std::wstring& options = {});
  // The same, and what the installer answers.
  DWORD TryToInstall(Version version, const std::wstring& options = {});
  // Repairs whatever is amiss.
  void Repair();
  void Uninstall();
  // Version of the product as the installer knows it; empty when it is not installed.
  std::wstring InstalledVersion() const;
  // Whether a part of the product is installed.
  bool Has(const wchar_t* feature) const;

  // Opens a message box by a script and answers it; fails unless the script gets the answer.
  void UseTheDialogs();

  Scope For() const { return GetParam(); }
  std::filesystem::path Folder() const;
  // The folder of the start menu that shows the product's entries.
  std::filesystem::path StartMenu() const;
  // The key that holds the classes of everybody or of the user.
  std::wstring Classes() const;
};

// The folder of the packages for these tests, as the build machine names it; what they are made of
// lies in its folders x64 and x86.
std::filesystem::path Packages(Version version);

// Runs a command to its end and returns what it answers.
DWORD RunToEnd(const std::wstring& command);

std::string Read(const std::filesystem::path& file);

}  // namespace krx::install
