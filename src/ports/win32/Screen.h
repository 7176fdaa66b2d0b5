#pragma once

#include "base/Geometry.h"
#include "ports/win32/System.h"

namespace krx::win32 {

// While it lives, the thread sees true pixels of every monitor, whatever the host's awareness is;
// then the host's own setting counts again.
class DpiScope {
 public:
  DpiScope();
  ~DpiScope();
  DpiScope(const DpiScope&) = delete;
  DpiScope& operator=(const DpiScope&) = delete;

 private:
  HANDLE previous_;
};

// Converts between twips and the pixels of one resolution. Whole pixels survive the way to twips
// and back.
struct Scale {
  int Dpi = 96;

  int Pixels(Twips length) const;
  Twips ToTwips(int pixels) const;
  // A length given in pixels of 96 dpi, at least one pixel.
  int Thickness(int pixels) const;
  // A measure of the system at this resolution.
  int Metric(int index) const;
  bool operator==(const Scale&) const = default;
};

// A monitor: its resolution and the part that no taskbar covers, in pixels.
struct Screen {
  win32::Scale Scale;
  RECT WorkArea{};

  // The monitor that shows most of the window; the primary one without a window.
  static Screen Of(HWND window);
};

// The window that the operator works with: the thread's active window, or else the foreground
// window if it is of this process; null otherwise.
HWND WindowInUse();

// Place of a window of this size in the middle of the work area.
RECT Centred(const RECT& work_area, SIZE size);
// The rectangle moved into the work area. One that is larger keeps its right and bottom edge
// inside, because there are the close button and the answer buttons.
RECT MovedInside(const RECT& work_area, RECT window);
// The rectangle where an operator may move it: within the work area of the monitor that it is on
// most. Of one that is larger, any part may be brought into sight.
RECT KeptInReach(const RECT& window);

}  // namespace krx::win32
