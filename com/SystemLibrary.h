#pragma once

#include <windows.h>

#include "base/Error.h"
#include "com/Errors.h"
#include "com/Text.h"

namespace krx::com {

// A library of the system's own folder, looked up when it is needed: who does not use it does not
// load it, and a system without it still runs the component. It stays loaded.
class SystemLibrary {
 public:
  // Raises what `failure` makes of the reason when there is none, and when it lacks a function.
  SystemLibrary(const wchar_t* name, Error (*failure)(String reason))
      : name_(FromWide(name)),
        failure_(failure),
        module_(LoadLibraryExW(name, nullptr, LOAD_LIBRARY_SEARCH_SYSTEM32)) {
    if (!module_) Fail();
  }

  template <class Function>
  void Find(Function& function, const char* name) const {
    function = reinterpret_cast<Function>(reinterpret_cast<void*>(GetProcAddress(module_, name)));
    if (!function) Fail();
  }

 private:
  [[noreturn]] void Fail() const {
    throw failure_(name_ + u": " + SystemMessage(HRESULT_FROM_WIN32(GetLastError())));
  }

  String name_;
  Error (*failure_)(String reason);
  HMODULE module_;
};

}  // namespace krx::com
