#pragma once

#include "ports/win32/FingerScroll.h"
#include "ports/win32/Screen.h"
#include "ui/BarTrack.h"
#include "ui/KRXIndex.h"

namespace krx::win32 {

// Scrolls the text of an index control that is higher than its window: by scroll bar, wheel and
// finger. The keys are the form's.
class IndexScroll {
 public:
  explicit IndexScroll(ui::KRXIndex& index) : index_(index) {}

  // Lets the system know what there is to scroll, for whoever asks it.
  void Show(HWND window) const;
  // What the scroll bar shows and does.
  ui::BarTrack::Rows Extent() const;
  void ScrollTo(int line);
  // What a message to the window does to the text; the window handles it all the same.
  void Hear(HWND window, Scale scale, UINT message, WPARAM w, LPARAM l);
  // Turns the wheel over a form's text; `rest` keeps what is less than a line.
  static void Turn(ui::KRXIndex& index, int delta, int& rest);

 private:
  void Press(HWND window, Twips y, double now);
  void ScrollByBar(HWND window, int what);

  ui::KRXIndex& index_;
  FingerScroll finger_;
};

}  // namespace krx::win32
