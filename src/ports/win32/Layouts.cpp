#include "ports/win32/Layouts.h"

#include <array>

#include "ports/win32/System.h"

namespace krx::win32 {

namespace {

constexpr DWORD kLargest = 64 * 1024;  // far more than a layout needs

std::string ReadFileBeside(StringView name) {
  std::array<wchar_t, 1024> module{};
  const DWORD length =
      GetModuleFileNameW(ThisModule(), module.data(), static_cast<DWORD>(module.size()));
  if (length == 0 || length >= module.size()) return {};
  const StringView path = Narrow(module.data(), length);
  const String file = String(path.substr(0, path.find_last_of(u"\\/") + 1)) + u"KRXKeyboard." +
                      String(name) + u".txt";
  const HANDLE handle = CreateFileW(Wide(file), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_DELETE,
                                    nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
  if (handle == INVALID_HANDLE_VALUE) return {};
  std::string text(kLargest, '\0');
  DWORD read = 0;
  if (!ReadFile(handle, text.data(), kLargest, &read, nullptr)) read = 0;
  CloseHandle(handle);
  text.resize(read);
  return text;
}

// The linker keeps the names of resources in upper case.
std::string ReadCarried(StringView name) {
  const String resource = u"KEYBOARD_" + AsciiUpper(name);
  const HINSTANCE module = ThisModule();
  const HRSRC found = FindResourceW(module, Wide(resource), RT_RCDATA);
  if (!found) return {};
  const void* const bytes = LockResource(LoadResource(module, found));
  return {static_cast<const char*>(bytes), SizeofResource(module, found)};
}

}  // namespace

std::string ReadLayout(StringView name) {
  std::string text = ReadFileBeside(name);
  return text.empty() ? ReadCarried(name) : text;
}

}  // namespace krx::win32
