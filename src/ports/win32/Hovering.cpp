#include "ports/win32/Hovering.h"

namespace krx::win32 {

namespace {

// What the system writes into the mouse messages that it makes of touches.
bool MadeOfTouch() {
  constexpr LPARAM kMask = 0xFFFFFF00;
  constexpr LPARAM kTouch = 0xFF515700;
  return (GetMessageExtraInfo() & kMask) == kTouch;
}

}  // namespace

bool Hovering::Changes(HWND window, UINT message) {
  if (message == WM_MOUSELEAVE && inside_) {
    inside_ = false;
    return true;
  }
  if (message != WM_MOUSEMOVE || inside_ || MadeOfTouch()) return false;
  TRACKMOUSEEVENT wanted{sizeof wanted, TME_LEAVE, window, 0};
  inside_ = TrackMouseEvent(&wanted) != FALSE;
  return inside_;
}

}  // namespace krx::win32
