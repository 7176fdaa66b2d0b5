#pragma once

#include <windows.h>

namespace krx::win32 {

// Whether the mouse pointer is over a window. A finger does not hover.
class Hovering {
 public:
  bool Inside() const { return inside_; }
  // Hears every message of the window; true when it has changed.
  bool Changes(HWND window, UINT message);

 private:
  bool inside_ = false;
};

}  // namespace krx::win32
