#include "ports/win32/DropList.h"

#include <algorithm>

namespace krx::win32 {

DropList::DropList(Toolkit& toolkit, FormPeer& form, ScrollBar::Wide wide)
    : form_(form),
      bar_(toolkit, form, wide, {[this] { return Extent(); }, [this](int top) { ScrollTo(top); }}) {
}

void DropList::Take(HWND list) {
  if (list_ || !list) return;
  list_ = list;
  SetWindowLongPtrW(list, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
  native_ = reinterpret_cast<WNDPROC>(
      SetWindowLongPtrW(list, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&Procedure)));
  SetWindowPos(list, nullptr, 0, 0, 0, 0,
               SWP_NOMOVE | SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE | SWP_FRAMECHANGED);
}

void DropList::Release() {
  if (!list_) return;
  SetWindowLongPtrW(list_, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(native_));
  list_ = nullptr;
}

LRESULT CALLBACK DropList::Procedure(HWND window, UINT message, WPARAM w, LPARAM l) noexcept {
  DropList& list = *reinterpret_cast<DropList*>(GetWindowLongPtrW(window, GWLP_USERDATA));
  try {
    if (message != WM_NCDESTROY) return list.Handle(message, w, l);
  } catch (...) {
    list.form_.Fail(std::current_exception());
    return 0;
  }
  const WNDPROC native = list.native_;
  list.Release();
  return CallWindowProcW(native, window, message, w, l);
}

LRESULT DropList::Handle(UINT message, WPARAM w, LPARAM l) {
  if (const auto heard = bar_.Hear(list_, message, w, l)) return *heard;
  switch (message) {
    case WM_NCCALCSIZE:
      return SizeFrame(w, l);
    case WM_NCPAINT:
      PaintFrame();
      return 0;
    case WM_MOUSEWHEEL: {
      const int delta = static_cast<short>(HIWORD(w));
      ScrollTo(Extent().Top + RowsTurned(delta, Extent().Page, wheel_rest_));
      return 0;
    }
    default:
      break;
  }
  const LRESULT result = Default(message, w, l);
  // Keys and the pointer below the last row scroll, too.
  if (list_ && IsWindowVisible(list_)) bar_.Follow(list_);
  return result;
}

LRESULT DropList::SizeFrame(WPARAM w, LPARAM l) {
  DropSystemBars(list_, WS_VSCROLL);
  const LRESULT result = Default(WM_NCCALCSIZE, w, l);
  // Both forms of the message start with what is to be the client area.
  bar_.TakeRoom(list_, *reinterpret_cast<RECT*>(l));
  return result;
}

void DropList::PaintFrame() const {
  const HDC dc = GetWindowDC(list_);
  if (!dc) return;
  RECT whole{};
  GetWindowRect(list_, &whole);
  OffsetRect(&whole, -whole.left, -whole.top);
  FrameRect(dc, &whole, BrushFor(dc, form_.Theme()->Border));
  ReleaseDC(list_, dc);
  bar_.Paint(list_);
}

// The height that the list has just been given counts, not that of its rows before.
ui::BarTrack::Rows DropList::Extent() const {
  RECT whole{};
  GetWindowRect(list_, &whole);
  const int height = static_cast<int>(whole.bottom - whole.top) - 2 * GetSystemMetrics(SM_CYBORDER);
  const auto row = static_cast<int>(Default(LB_GETITEMHEIGHT));
  return {static_cast<int>(Default(LB_GETCOUNT)), row > 0 ? height / row : 0,
          static_cast<int>(Default(LB_GETTOPINDEX))};
}

void DropList::ScrollTo(int top) const {
  const ui::BarTrack::Rows rows = Extent();
  const int row = std::clamp(top, 0, std::max(rows.Count - rows.Page, 0));
  SendMessageW(list_, LB_SETTOPINDEX, static_cast<WPARAM>(row), 0);
}

}  // namespace krx::win32
