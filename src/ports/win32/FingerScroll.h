#pragma once

#include <windows.h>

#include <optional>

#include "ui/DragScroll.h"

namespace krx::win32 {

// Scrolls what a finger drags over a window: rows, or lines of a text. Let go in motion they glide
// on, by a timer of the window.
class FingerScroll {
 public:
  static constexpr UINT_PTR kTimer = 0x4B52;  // far from the numbers of the system's list

  // The window is touched, in twips from its upper edge; `top` is the row at the top. Times are
  // ticks of the platform.
  void Begin(HWND window, const ui::DragScroll::List& list, int top, Twips y, double now);
  // The row that belongs at the top now that the touch has moved.
  int Move(Twips y, double now) { return drag_.Move(y, now); }
  // The touch is over; true when it was a click.
  bool End(double now);
  // What the window's timer does: the row that belongs at the top, none when nothing glides.
  std::optional<int> Glide(double now);

  // The touch ends without a click.
  void LetGo();
  void StopGliding();

  bool Touched() const { return drag_.Touched(); }

 private:
  void Stop();

  HWND window_ = nullptr;
  ui::DragScroll drag_;
};

}  // namespace krx::win32
