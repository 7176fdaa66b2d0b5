#include "ports/win32/ScrollBar.h"

#include <windowsx.h>

#include <algorithm>

namespace krx::win32 {

namespace {

constexpr UINT_PTR kTimer = 0x4B54;
constexpr UINT kFirstRepeat = 400;  // milliseconds
constexpr UINT kRepeat = 60;
constexpr Twips kFingerWidth = 400;  // 7 millimetres
constexpr int kLowestThumb = 20;     // pixels at 96 dpi
constexpr int kThumbMargin = 3;

POINT PointOf(LPARAM l) {
  return {GET_X_LPARAM(l), GET_Y_LPARAM(l)};
}

bool MirroredWindow(HWND window) {
  return (GetWindowLongPtrW(window, GWL_EXSTYLE) & WS_EX_LAYOUTRTL) != 0;
}

}  // namespace

void DropSystemBars(HWND window, LONG_PTR bars) {
  const auto style = GetWindowLongPtrW(window, GWL_STYLE);
  if ((style & bars) != 0) SetWindowLongPtrW(window, GWL_STYLE, style & ~bars);
}

int RowsTurned(int delta, int page, int& rest) {
  UINT lines = 3;
  SystemParametersInfoW(SPI_GETWHEELSCROLLLINES, 0, &lines, 0);
  rest += delta * (lines == WHEEL_PAGESCROLL ? page : static_cast<int>(lines));
  const int rows = rest / WHEEL_DELTA;
  rest -= rows * WHEEL_DELTA;
  return -rows;
}

int ScrollBar::Width() const {
  const Scale scale = form_.Scale();
  const int usual = scale.Metric(SM_CXVSCROLL);
  return wide_ == Wide::ForFingers ? std::max(usual, scale.Pixels(kFingerWidth)) : usual;
}

void ScrollBar::TakeRoom(HWND, RECT& client) {
  has_room_ = target_.Rows().Scroll();
  if (!has_room_) return;
  if (Level()) {
    client.bottom -= Width();
    return;
  }
  (OnTheLeft() ? client.left : client.right) += OnTheLeft() ? Width() : -Width();
}

void ScrollBar::Follow(HWND window) {
  const ui::BarTrack::Rows rows = target_.Rows();
  if (rows.Scroll() != has_room_)
    SetWindowPos(window, nullptr, 0, 0, 0, 0,
                 SWP_NOMOVE | SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE | SWP_FRAMECHANGED);
  if (rows == shown_) return;
  shown_ = rows;
  if (IsWindowVisible(window)) Paint(window);
}

RECT ScrollBar::PlaceOnScreen(HWND window) const {
  RECT area{};
  GetClientRect(window, &area);
  MapWindowPoints(window, nullptr, reinterpret_cast<POINT*>(&area), 2);
  if (Level()) return {area.left, area.bottom, area.right, area.bottom + Width()};
  if (OnTheLeft()) return {area.left - Width(), area.top, area.left, area.bottom};
  return {area.right, area.top, area.right + Width(), area.bottom};
}

ui::BarTrack ScrollBar::Track(const RECT& place, const ui::BarTrack::Rows& rows) const {
  const auto width = static_cast<int>(place.right - place.left);
  const auto height = static_cast<int>(place.bottom - place.top);
  return {Level() ? width : height, Level() ? height : width, form_.Scale().Thickness(kLowestThumb),
          rows};
}

UINT_PTR ScrollBar::Timer() const {
  return Level() ? kTimer + 1 : kTimer;
}

int ScrollBar::Along(const RECT& place, POINT screen) const {
  if (!Level()) return static_cast<int>(screen.y - place.top);
  return static_cast<int>(OnTheLeft() ? place.right - 1 - screen.x : screen.x - place.left);
}

RECT ScrollBar::Piece(const RECT& place, int from, int to) const {
  if (!Level()) return {place.left, place.top + from, place.right, place.top + to};
  return {place.left + from, place.top, place.left + to, place.bottom};
}

ScrollBar::Part ScrollBar::PartAt(HWND window, POINT screen) const {
  const RECT place = PlaceOnScreen(window);
  if (!has_room_ || !PtInRect(&place, screen)) return Part::None;
  return Track(place, target_.Rows()).At(Along(place, screen));
}

// A list that drops has the mouse while it is open, so presses beside its rows may come as if they
// were on them.
std::optional<LRESULT> ScrollBar::Hear(HWND window, UINT message, WPARAM w, LPARAM l) {
  POINT at = PointOf(l);
  if (message == WM_MOUSEMOVE || message == WM_LBUTTONDOWN) ClientToScreen(window, &at);
  switch (message) {
    case WM_NCHITTEST: {
      const RECT place = PlaceOnScreen(window);
      if (has_room_ && PtInRect(&place, at)) return Level() ? HTHSCROLL : HTVSCROLL;
      return {};
    }
    case WM_NCLBUTTONDOWN:
    case WM_NCLBUTTONDBLCLK:
    case WM_LBUTTONDOWN:
    case WM_LBUTTONDBLCLK:
      if (Press(window, at)) return 0;
      return {};
    case WM_MOUSEMOVE:
    case WM_NCMOUSEMOVE:
      Move(window, at);
      if (held_ != Part::None) return 0;
      return {};
    case WM_NCMOUSELEAVE:
      Heat(window, Part::None);
      return {};
    case WM_LBUTTONUP:
      if (held_ == Part::None) return {};
      LetGo(window);
      return 0;
    case WM_CAPTURECHANGED:
    case WM_CANCELMODE:
      if (held_ != Part::None) LetGo(window);
      return {};
    case WM_TIMER:
      if (w != Timer()) return {};
      Repeat(window);
      return 0;
    default:
      return {};
  }
}

bool ScrollBar::Press(HWND window, POINT screen) {
  const Part part = PartAt(window, screen);
  if (part == Part::None) return false;
  const RECT place = PlaceOnScreen(window);
  held_ = part;
  pointer_ = screen;
  grip_ = Along(place, screen) - Track(place, target_.Rows()).ThumbTop();
  captured_ = GetCapture() != window;
  if (captured_) SetCapture(window);
  if (part != Part::Thumb) {
    SetTimer(window, Timer(), kFirstRepeat, nullptr);
    Step(window);
  }
  Paint(window);
  return true;
}

void ScrollBar::Move(HWND window, POINT screen) {
  pointer_ = screen;
  if (held_ == Part::None) return Heat(window, PartAt(window, screen));
  if (held_ != Part::Thumb) return;
  const RECT place = PlaceOnScreen(window);
  const int thumb = Along(place, screen) - grip_;
  target_.ScrollTo(Track(place, target_.Rows()).TopFor(thumb));
  Follow(window);
}

void ScrollBar::Step(HWND window) {
  target_.ScrollTo(Track(PlaceOnScreen(window), target_.Rows()).After(held_));
  Follow(window);
}

// Only while the pointer is on what was pressed: pages end where it is.
void ScrollBar::Repeat(HWND window) {
  SetTimer(window, Timer(), kRepeat, nullptr);
  if (PartAt(window, pointer_) == held_) Step(window);
}

void ScrollBar::LetGo(HWND window) {
  held_ = Part::None;
  KillTimer(window, Timer());
  if (std::exchange(captured_, false) && GetCapture() == window) ReleaseCapture();
  hot_ = PartAt(window, pointer_);
  Paint(window);
}

void ScrollBar::Heat(HWND window, Part part) {
  if (part == hot_) return;
  hot_ = part;
  TRACKMOUSEEVENT wanted{sizeof wanted, TME_LEAVE | TME_NONCLIENT, window, 0};
  if (part != Part::None) TrackMouseEvent(&wanted);
  Paint(window);
}

void ScrollBar::Paint(HWND window) const {
  const HDC dc = has_room_ ? GetWindowDC(window) : nullptr;
  if (!dc) return;
  RECT whole{};
  GetWindowRect(window, &whole);
  RECT place = PlaceOnScreen(window);
  OffsetRect(&place, -whole.left, -whole.top);
  if (MirroredWindow(window)) {
    const LONG width = whole.right - whole.left;
    place = {width - place.right, place.top, width - place.left, place.bottom};
  }
  const ui::BarTrack track = Track(place, target_.Rows());
  PaintArrow(dc, Piece(place, 0, track.Arrow()), Part::LineUp);
  PaintArrow(dc, Piece(place, track.Length() - track.Arrow(), track.Length()), Part::LineDown);
  PaintThumb(dc, place);
  ReleaseDC(window, dc);
}

void ScrollBar::PaintArrow(HDC dc, const RECT& place, Part part) const {
  const Theme& theme = form_.Theme();
  const bool held = held_ == part;
  const COLORREF ground = held ? theme->KeyPressed : hot_ == part ? theme->KeyHot : theme->Face;
  const COLORREF ink = held ? theme->PressedText : hot_ == part ? theme->KeyText : theme->Text;
  Flood(dc, place, ground);
  const auto size = static_cast<int>(place.right - place.left) * 3 / 5;
  const bool first = part == Part::LineUp;
  const ui::Picture picture = Level() ? first ? ui::Picture::Back : ui::Picture::Inside
                              : first ? ui::Picture::Above
                                      : ui::Picture::Down;
  toolkit_.Drawing.Picture(dc, place, picture, size, ui::InksOf(theme.Colors(), ink), ground);
}

void ScrollBar::PaintThumb(HDC dc, const RECT& place) const {
  const Theme& theme = form_.Theme();
  const ui::BarTrack track = Track(place, target_.Rows());
  Flood(dc, Piece(place, track.Arrow(), track.ThumbTop()), theme->Face);
  Flood(dc, Piece(place, track.ThumbEnd(), track.Length() - track.Arrow()), theme->Face);
  if (track.ThumbTop() == track.ThumbEnd()) return;
  const RECT whole = Piece(place, track.ThumbTop(), track.ThumbEnd());
  const int margin = form_.Scale().Thickness(kThumbMargin);
  RECT thumb = whole;
  InflateRect(&thumb, Level() ? 0 : -margin, Level() ? -margin : 0);
  Flood(dc,
        {whole.left, whole.top, Level() ? whole.right : thumb.left,
         Level() ? thumb.top : whole.bottom},
        theme->Face);
  Flood(dc,
        {Level() ? whole.left : thumb.right, Level() ? thumb.bottom : whole.top, whole.right,
         whole.bottom},
        theme->Face);
  const COLORREF color = held_ == Part::Thumb  ? theme->Accent
                         : hot_ == Part::Thumb ? theme->Text
                                               : theme->Border;
  toolkit_.Drawing.Box(dc, thumb,
                       {theme->Face, color, color, 1, form_.Scale().Thickness(kCornerRadius)});
}

}  // namespace krx::win32
