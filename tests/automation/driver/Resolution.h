#pragma once

#include <windows.h>

#include <string>
#include <vector>

namespace krx::drive {

// Programs started while it lives find a screen of this resolution; the one before comes back.
class Resolution {
 public:
  explicit Resolution(DWORD dpi) : Resolution(dpi, dpi) {}
  // What the desktop says and what is noted of the screens; platforms differ in what they read.
  Resolution(DWORD desktop, DWORD screens);
  ~Resolution();
  Resolution(const Resolution&) = delete;
  Resolution& operator=(const Resolution&) = delete;

 private:
  // A number of the registry, which may be missing.
  struct Setting {
    HKEY Root = nullptr;
    std::wstring Key;
    std::wstring Name;
    DWORD Before = 0;
    bool Present = false;
  };

  void Set(HKEY root, const std::wstring& key, const wchar_t* name, DWORD value);

  std::vector<Setting> settings_;
};

}  // namespace krx::drive
