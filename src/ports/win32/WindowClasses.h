#pragma once

#include "ports/win32/System.h"

namespace krx::win32 {

inline constexpr const wchar_t* kFormClass = L"KRXForm";
inline constexpr const wchar_t* kPaneClass = L"KRXPane";  // controls that are drawn by us

// Keeps the window classes of this module registered while any platform lives; the last one takes
// them away, so the module can be unloaded and loaded again.
class WindowClasses {
 public:
  explicit WindowClasses(WNDPROC procedure);
  ~WindowClasses();
  WindowClasses(const WindowClasses&) = delete;
  WindowClasses& operator=(const WindowClasses&) = delete;
};

}  // namespace krx::win32
