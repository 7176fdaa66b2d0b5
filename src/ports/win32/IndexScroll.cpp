#include "ports/win32/IndexScroll.h"

#include <windowsx.h>

#include "ports/win32/ScrollBar.h"
#include "ui/Form.h"
#include "ui/Platform.h"

namespace krx::win32 {

void IndexScroll::Show(HWND window) const {
  if (!index_.Scrolls()) return;
  SCROLLINFO info{};
  info.cbSize = sizeof info;
  info.fMask = SIF_RANGE | SIF_PAGE | SIF_POS | SIF_DISABLENOSCROLL;
  info.nMax = index_.LineCount() - 1;
  info.nPage = static_cast<UINT>(index_.LinesInSight());
  info.nPos = index_.TopLine();
  SetScrollInfo(window, SB_VERT, &info, FALSE);
}

ui::BarTrack::Rows IndexScroll::Extent() const {
  if (!index_.Scrolls()) return {};
  return {index_.LineCount(), index_.LinesInSight(), index_.TopLine()};
}

void IndexScroll::ScrollTo(int line) {
  finger_.StopGliding();
  index_.ScrollTo(line);
}

void IndexScroll::Hear(HWND window, Scale scale, UINT message, WPARAM w, LPARAM l) {
  const Twips y = scale.ToTwips(GET_Y_LPARAM(l));
  const double now = index_.Parent().ThePlatform().Ticks();
  switch (message) {
    case WM_LBUTTONDOWN:
      return Press(window, y, now);
    case WM_MOUSEMOVE:
      if (finger_.Touched() && (w & MK_LBUTTON) != 0) index_.ScrollTo(finger_.Move(y, now));
      return;
    case WM_LBUTTONUP:
      if (finger_.Touched()) finger_.End(now);
      return;
    case WM_TIMER:
      if (w != FingerScroll::kTimer) return;
      if (const auto line = finger_.Glide(now)) index_.ScrollTo(*line);
      return;
    case WM_CAPTURECHANGED:
      return finger_.LetGo();
    case WM_VSCROLL:
      return ScrollByBar(window, LOWORD(w));
    default:
      return;
  }
}

void IndexScroll::Press(HWND window, Twips y, double now) {
  if (GetFocus() != window) SetFocus(window);
  finger_.Begin(window, {index_.LineHeight(), index_.LineCount(), index_.LinesInSight()},
                index_.TopLine(), y, now);
}

void IndexScroll::ScrollByBar(HWND window, int what) {
  finger_.StopGliding();
  SCROLLINFO info{};
  info.cbSize = sizeof info;
  info.fMask = SIF_TRACKPOS;
  switch (what) {
    case SB_LINEUP:
      return index_.ScrollTo(index_.TopLine() - 1);
    case SB_LINEDOWN:
      return index_.ScrollTo(index_.TopLine() + 1);
    case SB_PAGEUP:
      return index_.ScrollTo(index_.TopLine() - index_.LinesInSight());
    case SB_PAGEDOWN:
      return index_.ScrollTo(index_.TopLine() + index_.LinesInSight());
    case SB_TOP:
      return index_.ScrollTo(0);
    case SB_BOTTOM:
      return index_.ScrollTo(index_.LineCount());
    case SB_THUMBTRACK:
    case SB_THUMBPOSITION:
      // The message's own position has 16 bits only.
      if (GetScrollInfo(window, SB_VERT, &info)) index_.ScrollTo(info.nTrackPos);
      return;
    default:
      return;
  }
}

void IndexScroll::Turn(ui::KRXIndex& index, int delta, int& rest) {
  index.ScrollTo(index.TopLine() + RowsTurned(delta, index.LinesInSight(), rest));
}

}  // namespace krx::win32
