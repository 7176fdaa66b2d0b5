#pragma once

#include <windows.h>

#include <string>

#include "base/Error.h"
#include "base/String.h"

namespace krx::win32 {

// Texts of the model and of the system are both UTF-16; only the type of the unit differs.
static_assert(sizeof(wchar_t) == sizeof(char16_t));

inline const wchar_t* Wide(const String& text) {
  return reinterpret_cast<const wchar_t*>(text.c_str());
}
inline const wchar_t* WideData(StringView text) {
  return reinterpret_cast<const wchar_t*>(text.data());
}
inline StringView Narrow(const wchar_t* text, std::size_t length) {
  return {reinterpret_cast<const char16_t*>(text), length};
}

// The failure of a system call as an error of the dialogs: what was attempted, and the system's own
// words for the code.
Error SystemError(StringView attempted, DWORD code = GetLastError());

// The module that contains this code: a component may live in a library of its own.
HINSTANCE ThisModule();

// Entry of a library that older systems may lack; null without it. The library stays loaded.
template <class Function>
Function* OptionalFunction(const wchar_t* library, const char* name) {
  const HMODULE module = LoadLibraryExW(library, nullptr, LOAD_LIBRARY_SEARCH_SYSTEM32);
  if (!module) return nullptr;
  return reinterpret_cast<Function*>(reinterpret_cast<void*>(GetProcAddress(module, name)));
}

}  // namespace krx::win32
