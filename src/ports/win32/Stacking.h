#pragma once

#include "ports/win32/System.h"

namespace krx::win32 {

// Message to a form that a window which is disabled while it is up was raised, activated or, where
// its first parameter is not 0, clicked.
inline constexpr UINT kOthersMoved = WM_USER + 1;

// Brings a form in front of the windows of its thread that are disabled, and the activation from
// them to the form.
void StandInFront(HWND form);

// While it lives, the thread's form in use hears of what becomes of its disabled windows. A form
// has no owner, which the system would keep it in front of.
class Stacking {
 public:
  Stacking();
  ~Stacking();
  Stacking(const Stacking&) = delete;
  Stacking& operator=(const Stacking&) = delete;

 private:
  HHOOK hook_;
};

}  // namespace krx::win32
