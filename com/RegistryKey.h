#pragma once

#include <windows.h>

#include <string>

namespace krx::com {

// An open registry key. A null parent is a place without rights and without keys. Every failure is
// raised as Error with the system's status.
class RegistryKey {
 public:
  // Creates the key, or opens it when it exists already.
  RegistryKey(HKEY parent, const std::wstring& path);
  ~RegistryKey() { RegCloseKey(key_); }
  RegistryKey(const RegistryKey&) = delete;
  RegistryKey& operator=(const RegistryKey&) = delete;

  HKEY Get() const { return key_; }
  // Sets a text value; the empty name is the key's default value.
  void Set(const wchar_t* name, const std::wstring& value) const;

 private:
  HKEY key_ = nullptr;
};

// Removes a key with all that is below it; a key that does not exist is no failure.
void DeleteKey(HKEY parent, const std::wstring& path);

}  // namespace krx::com
