#include "install/Installer.h"

#include <msi.h>
#include <shlobj.h>

#include <fstream>
#include <sstream>
#include <stdexcept>

#include "install/FoundClasses.h"

namespace krx::install {

namespace {

namespace fs = std::filesystem;

#ifdef _WIN64
constexpr const wchar_t* kForMachine = L"{6B1C0A52-3D1E-4C57-9B7E-5A0E2F3C4001}";
constexpr const wchar_t* kForUser = L"{6B1C0A52-3D1E-4C57-9B7E-5A0E2F3C4002}";
#else
constexpr const wchar_t* kForMachine = L"{6B1C0A52-3D1E-4C57-9B7E-5A0E2F3C4003}";
constexpr const wchar_t* kForUser = L"{6B1C0A52-3D1E-4C57-9B7E-5A0E2F3C4004}";
#endif
constexpr drive::Milliseconds kInstallation{600000};

fs::path KnownFolder(int id) {
  wchar_t path[MAX_PATH] = {};
  if (FAILED(SHGetFolderPathW(nullptr, id, nullptr, SHGFP_TYPE_CURRENT, path)))
    throw std::runtime_error("a folder of the system is not known");
  return path;
}

// What is installed under an upgrade code; empty when nothing is.
std::wstring InstalledProduct(const wchar_t* upgrade_code) {
  wchar_t product[39] = {};
  const UINT status = MsiEnumRelatedProductsW(upgrade_code, 0, 0, product);
  return status == ERROR_SUCCESS ? product : L"";
}

const wchar_t* UpgradeCode(Scope scope) {
  return scope == Scope::Machine ? kForMachine : kForUser;
}

DWORD Msiexec(const std::wstring& arguments) {
  return RunToEnd(L"msiexec.exe /qn " + arguments);
}

void UninstallAll() {
  for (const wchar_t* code : {kForMachine, kForUser})
    for (std::wstring product = InstalledProduct(code); !product.empty();
         product = InstalledProduct(code))
      if (Msiexec(L"/x " + product) != ERROR_SUCCESS)
        throw std::runtime_error("what an earlier test has installed cannot be removed");
}

}  // namespace

fs::path Packages(Version version) {
  return fs::path(KRX_PACKAGES) / (version == Version::New ? "new" : "old");
}

DWORD RunToEnd(const std::wstring& command) {
  return drive::Client(command).Finish(kInstallation);
}

std::string Read(const fs::path& file) {
  std::ostringstream text;
  text << std::ifstream(file, std::ios::binary).rdbuf();
  return text.str();
}

void InstallTest::SetUp() {
  DialogTest::SetUp();
  UninstallAll();
}

void InstallTest::TearDown() {
  DialogTest::TearDown();
  UninstallAll();
}

DWORD InstallTest::TryToInstall(Version version, const std::wstring& options) {
  const std::wstring name = std::wstring(kWidth) + (For() == Scope::User ? L"-user" : L"");
  const fs::path package = Packages(version) / (name + L".msi");
  return Msiexec(L"/i \"" + package.wstring() + L"\" " + options);
}

void InstallTest::Install(Version version, const std::wstring& options) {
  ASSERT_EQ(TryToInstall(version, options), static_cast<DWORD>(ERROR_SUCCESS));
}

void InstallTest::Repair() {
  Install(Version::New, L"REINSTALL=ALL REINSTALLMODE=amus");
}

void InstallTest::Uninstall() {
  ASSERT_EQ(Msiexec(L"/x " + InstalledProduct(UpgradeCode(For()))),
            static_cast<DWORD>(ERROR_SUCCESS));
  ASSERT_EQ(InstalledVersion(), L"");
}

std::wstring InstallTest::InstalledVersion() const {
  const std::wstring product = InstalledProduct(UpgradeCode(For()));
  wchar_t version[64] = {};
  DWORD length = 64;
  if (product.empty() || MsiGetProductInfoW(product.c_str(), INSTALLPROPERTY_VERSIONSTRING, version,
                                            &length) != ERROR_SUCCESS)
    return {};
  return version;
}

bool InstallTest::Has(const wchar_t* feature) const {
  const std::wstring product = InstalledProduct(UpgradeCode(For()));
  return MsiQueryFeatureStateW(product.c_str(), feature) == INSTALLSTATE_LOCAL;
}

void InstallTest::UseTheDialogs() {
  const FoundClasses classes(For());
  RunScript(drive::Ask(4));
  NextBox().Child(L"keyButton(0)").Click();
  EXPECT_EQ(Printed(), drive::Lines{"6"});
}

fs::path InstallTest::Folder() const {
  const fs::path product = fs::path("Korvel") / "KRXDialogs";
  if (For() == Scope::Machine) return KnownFolder(CSIDL_PROGRAM_FILES) / product;
  return KnownFolder(CSIDL_LOCAL_APPDATA) / "Programs" / product;
}

fs::path InstallTest::StartMenu() const {
  const fs::path everybodys = KnownFolder(CSIDL_COMMON_PROGRAMS) / "KRXDialogs";
  // Not every platform's installer has a menu of everybody.
  return fs::exists(everybodys) ? everybodys : KnownFolder(CSIDL_PROGRAMS) / "KRXDialogs";
}

std::wstring InstallTest::Classes() const {
  return For() == Scope::Machine ? L"HKLM\\Software\\Classes" : L"HKCU\\Software\\Classes";
}

}  // namespace krx::install
