#include "com/RegistryKey.h"

#include "com/Errors.h"

namespace krx::com {

RegistryKey::RegistryKey(HKEY parent, const std::wstring& path) {
  if (!parent) Refuse(E_ACCESSDENIED);
  const LSTATUS status = RegCreateKeyExW(parent, path.c_str(), 0, nullptr, 0, KEY_READ | KEY_WRITE,
                                         nullptr, &key_, nullptr);
  Check(HRESULT_FROM_WIN32(static_cast<DWORD>(status)));
}

void RegistryKey::Set(const wchar_t* name, const std::wstring& value) const {
  const auto bytes = static_cast<DWORD>((value.size() + 1) * sizeof(wchar_t));
  const LSTATUS status =
      RegSetValueExW(key_, name, 0, REG_SZ, reinterpret_cast<const BYTE*>(value.c_str()), bytes);
  Check(HRESULT_FROM_WIN32(static_cast<DWORD>(status)));
}

void DeleteKey(HKEY parent, const std::wstring& path) {
  if (!parent) return;
  const LSTATUS status = RegDeleteTreeW(parent, path.c_str());
  if (status == ERROR_FILE_NOT_FOUND || status == ERROR_PATH_NOT_FOUND) return;
  Check(HRESULT_FROM_WIN32(static_cast<DWORD>(status)));
}

}  // namespace krx::com
