#pragma once

#include <optional>

#include "ports/win32/System.h"

namespace krx::win32 {

// Whether the message that the thread is handling comes from a finger or a pen, be it one of a
// pointer or one of the mouse that the system makes of a touch.
bool FromFinger();

// The message of the mouse that a touch of a window stands for; no message where it is to be passed
// over, as those of a second finger are.
struct Touch {
  UINT Message = 0;
  WPARAM Keys = 0;
  LPARAM Point = 0;
};

// The touch that a message to a window brings; none where the message is no finger's or pen's.
std::optional<Touch> TouchOf(HWND window, UINT message, WPARAM w, LPARAM l);

}  // namespace krx::win32
