#pragma once

#include "ports/win32/ScrollBar.h"

namespace krx::win32 {

// The list that drops from a combo box, which is a window of the system's: has its border and its
// scroll bar in the colours of the form.
class DropList {
 public:
  DropList(Toolkit& toolkit, FormPeer& form, ScrollBar::Wide wide);
  ~DropList() { Release(); }
  DropList(const DropList&) = delete;
  DropList& operator=(const DropList&) = delete;

  // The list is about to drop.
  void Take(HWND list);

 private:
  static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM w, LPARAM l) noexcept;
  LRESULT Handle(UINT message, WPARAM w, LPARAM l);
  LRESULT Default(UINT message, WPARAM w = 0, LPARAM l = 0) const {
    return CallWindowProcW(native_, list_, message, w, l);
  }
  void Release();
  LRESULT SizeFrame(WPARAM w, LPARAM l);
  void PaintFrame() const;
  ui::BarTrack::Rows Extent() const;
  void ScrollTo(int top) const;

  FormPeer& form_;
  ScrollBar bar_;
  HWND list_ = nullptr;
  WNDPROC native_ = nullptr;
  int wheel_rest_ = 0;  // turns of the wheel that make no whole row yet
};

}  // namespace krx::win32
