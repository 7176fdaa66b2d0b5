// What is around the rows: the border and, where a finger drags the rows, a strip that shows how
// far they are dragged. A scroll bar would take the finger's room.

#include <algorithm>

#include "ports/win32/ListPeer.h"

namespace krx::win32 {

namespace {

constexpr int kStrip = 6;  // pixels at 96 dpi
constexpr int kSliderMargin = 1;
constexpr int kLowestSlider = 24;

}  // namespace

int ListPeer::StripWidth() const {
  return list_.DragScrolls ? form_.Scale().Thickness(kStrip) : 0;
}

// The system's list shows its scroll bar by its style, anew whenever its rows change.
LRESULT ListPeer::SizeFrame(WPARAM w, LPARAM l) {
  DropSystemBars(Window(), WS_VSCROLL | WS_HSCROLL);
  const LRESULT result = Default(WM_NCCALCSIZE, w, l);
  // Both forms of the message start with what is to be the client area.
  RECT& client = *reinterpret_cast<RECT*>(l);
  if (!list_.DragScrolls) {
    bar_.TakeRoom(Window(), client);
    level_.TakeRoom(Window(), client);
  }
  const bool mirrored = (GetWindowLongPtrW(Window(), GWL_EXSTYLE) & WS_EX_LAYOUTRTL) != 0;
  (mirrored ? client.left : client.right) += mirrored ? StripWidth() : -StripWidth();
  return result;
}

void ListPeer::PaintBorder() const {
  const HDC dc = GetWindowDC(Window());
  if (!dc) return;
  RECT whole{};
  GetWindowRect(Window(), &whole);
  OffsetRect(&whole, -whole.left, -whole.top);
  const int edge = GetSystemMetrics(SM_CXEDGE);
  const RECT strip{whole.right - edge - StripWidth(), edge, whole.right - edge,
                   whole.bottom - edge};
  PaintStrip(dc, strip);
  PaintCorner(dc, whole);
  ExcludeClipRect(dc, edge, edge, whole.right - edge, whole.bottom - edge);
  PaintField(dc, whole, {list_.Enabled(), GetFocus() == Window(), hovering_.Inside()});
  ReleaseDC(Window(), dc);
  if (list_.DragScrolls) return;
  bar_.Paint(Window());
  level_.Paint(Window());
}

// Where the scroll bars meet.
void ListPeer::PaintCorner(HDC dc, const RECT& whole) const {
  if (list_.DragScrolls) return;
  const int edge = GetSystemMetrics(SM_CXEDGE);
  RECT area{};
  GetClientRect(Window(), &area);
  Flood(dc, {edge + area.right, edge + area.bottom, whole.right - edge, whole.bottom - edge},
        form_.Theme()->Face);
}

ui::BarTrack::Rows ListPeer::Breadth() const {
  constexpr int kStep = 20;  // pixels at 96 dpi
  int columns = 0;
  for (int column = 0; column < columns_; ++column)
    columns += static_cast<int>(Send(LVM_GETCOLUMNWIDTH, static_cast<WPARAM>(column)));
  RECT area{};
  GetClientRect(Window(), &area);
  return {columns, static_cast<int>(area.right), GetScrollPos(Window(), SB_HORZ),
          form_.Scale().Thickness(kStep)};
}

ui::BarTrack::Rows ListPeer::Extent() const {
  return {list_.RowCount(), static_cast<int>(Send(LVM_GETCOUNTPERPAGE)), TopRow()};
}

void ListPeer::FollowBreadth() {
  if (!list_.DragScrolls) level_.Follow(Window());
}

void ListPeer::FollowRows() {
  if (!list_.DragScrolls) {
    bar_.Follow(Window());
    level_.Follow(Window());
    return;
  }
  if (IsWindowVisible(Window())) PaintBorder();
}

void ListPeer::PaintStrip(HDC dc, const RECT& strip) const {
  if (strip.left == strip.right) return;
  Flood(dc, strip, Ground());
  const int rows = list_.RowCount();
  const int page = static_cast<int>(Send(LVM_GETCOUNTPERPAGE));
  if (page <= 0 || rows <= page) return;
  const Scale scale = form_.Scale();
  RECT slider = strip;
  InflateRect(&slider, -scale.Thickness(kSliderMargin), -scale.Thickness(kSliderMargin));
  const int room = slider.bottom - slider.top;
  const int height =
      std::min(room, std::max(MulDiv(room, page, rows), scale.Thickness(kLowestSlider)));
  slider.top += MulDiv(room - height, std::min(TopRow(), rows - page), rows - page);
  slider.bottom = slider.top + height;
  Flood(dc, slider, form_.Theme()->Border);
}

void ListPeer::AdoptTop() {
  if (list_.TopRow.Adopt(TopRow())) FollowRows();
}

// The pointer is over another row, or over none.
void ListPeer::Hover(UINT message, LPARAM point) {
  if (hovering_.Changes(Window(), message)) PaintBorder();
  if (message != WM_MOUSEMOVE && message != WM_MOUSELEAVE) return;
  // Where fingers drag, the pointer is where the last one was.
  const bool shown = hovering_.Inside() && !list_.DragScrolls;
  const int row = shown ? RowAt(point) : ui::RowList::kNoRow;
  if (row == hot_) return;
  for (const int other : {std::exchange(hot_, row), row})
    if (other >= 0) Send(LVM_REDRAWITEMS, static_cast<WPARAM>(other), other);
}

}  // namespace krx::win32
