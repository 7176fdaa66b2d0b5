#include "install/FoundClasses.h"

#include <array>

#include "platform/Differences.h"

namespace krx::install {

namespace {

constexpr const wchar_t* kClasses = L"Software\\Classes\\";

bool IsOurs(const std::wstring& name) {
  return name.starts_with(L"{6B1C0A52-3D1E-4C57-9B7E-5A0E2F3C") ||
         name.starts_with(L"KRXDialogs.") || name.starts_with(L"KorvelRuntime.");
}

// Whether a class of the user is found by programs, as a key of the test's own shows.
bool ProgramsFindClassesOfTheUser() {
  const std::wstring name = L"KRXTests.Shown";
  HKEY key = nullptr;
  RegCreateKeyW(HKEY_CURRENT_USER, (kClasses + name).c_str(), &key);
  RegCloseKey(key);
  const bool found = RegOpenKeyW(HKEY_CLASSES_ROOT, name.c_str(), &key) == ERROR_SUCCESS;
  if (found) RegCloseKey(key);
  RegDeleteKeyW(HKEY_CURRENT_USER, (kClasses + name).c_str());
  return found;
}

}  // namespace

FoundClasses::FoundClasses(Scope scope) {
  if (scope == Scope::Machine) return;
  const bool found = ProgramsFindClassesOfTheUser();
  EXPECT_EQ(found, test::Expected(test::kClassesOfEverybodyAlone, false, true));
  if (found) return;
  for (const wchar_t* folder : {L"", L"CLSID\\", L"Interface\\", L"TypeLib\\"})
    Show(folder);
}

FoundClasses::~FoundClasses() {
  for (const std::wstring& path : shown_)
    RegDeleteTreeW(HKEY_LOCAL_MACHINE, path.c_str());
}

void FoundClasses::Show(const std::wstring& folder) {
  HKEY from = nullptr;
  if (RegOpenKeyW(HKEY_CURRENT_USER, (kClasses + folder).c_str(), &from) != ERROR_SUCCESS) return;
  std::array<wchar_t, 256> name;
  for (DWORD index = 0; RegEnumKeyW(from, index, name.data(), 256) == ERROR_SUCCESS; ++index) {
    if (!IsOurs(name.data())) continue;
    const std::wstring path = kClasses + folder + name.data();
    HKEY to = nullptr;
    EXPECT_EQ(RegCreateKeyW(HKEY_LOCAL_MACHINE, path.c_str(), &to), ERROR_SUCCESS);
    shown_.push_back(path);
    EXPECT_EQ(RegCopyTreeW(from, name.data(), to), ERROR_SUCCESS);
    RegCloseKey(to);
  }
  RegCloseKey(from);
}

}  // namespace krx::install
