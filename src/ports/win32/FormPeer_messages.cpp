#include "ports/win32/FormPeer.h"

#include <algorithm>

#include "ports/win32/ControlPeer.h"
#include "ports/win32/DrawnPeer.h"
#include "ports/win32/IndexScroll.h"
#include "ports/win32/Stacking.h"
#include "ports/win32/TimerPeer.h"
#include "ui/Keyboard.h"

namespace krx::win32 {

LRESULT FormPeer::Handle(UINT message, WPARAM w, LPARAM l) {
  switch (message) {
    case WM_NCCALCSIZE: {
      // Both forms of the message start with the window's rectangle.
      const int edge = scale_.Thickness(kEdge);
      InflateRect(reinterpret_cast<RECT*>(l), -edge, -edge);
      return 0;
    }
    case WM_NCPAINT:
      PaintEdge();
      return 0;
    case WM_NCACTIVATE:
      return TRUE;  // the edge looks the same, active or not
    case WM_ERASEBKGND: {
      RECT area;
      GetClientRect(Window(), &area);
      Flood(reinterpret_cast<HDC>(w), area, theme_(form_.BackColor()));
      return 1;
    }
    case WM_PAINT:
      PaintForm();
      return 0;
    case WM_MOUSEACTIVATE:
    case WM_POINTERACTIVATE:
      if (!form_.Attached) break;
      return MA_NOACTIVATE;
    case kSettle:
      SettleBeside();
      return 0;
    case WM_ACTIVATE:
      if (LOWORD(w) == WA_INACTIVE && form_.Beside) form_.Beside->Leave();
      if (LOWORD(w) != WA_INACTIVE && HIWORD(w) == 0) ::SetFocus(FocusWindow());
      return 0;
    case WM_MOUSEWHEEL:
      if (!TurnWheel(static_cast<short>(HIWORD(w)))) break;
      return 0;
    case kStandWhereAsked:
      StandWhereAsked();
      return 0;
    case kOthersMoved:
      ComeToTheFront(w != 0);
      return 0;
    case WM_SETFOCUS:
      FocusCameTo(nullptr);
      return 0;
    case WM_COMMAND:
      return ToChild(reinterpret_cast<HWND>(l), message, w, l);
    case WM_NOTIFY:
      return ToChild(reinterpret_cast<const NMHDR*>(l)->hwndFrom, message, w, l);
    case WM_DRAWITEM:
      return ToChild(reinterpret_cast<const DRAWITEMSTRUCT*>(l)->hwndItem, message, w, l);
    case WM_MEASUREITEM:
      // Comes from a window that is being created, whose peer has just entered.
      if (children_.empty() || children_.back()->Window()) break;
      children_.back()->Measure(*reinterpret_cast<MEASUREITEMSTRUCT*>(l));
      return TRUE;
    case WM_CTLCOLOREDIT:
    case WM_CTLCOLORSTATIC:
    case WM_CTLCOLORBTN:
      return ToChild(reinterpret_cast<HWND>(l), message, w, l);
    case WM_TIMER:
      w == kSettleTimer ? SettleBeside() : Tick(w);
      return 0;
    case WM_CLOSE:
      // An open list would take Esc for itself.
      if (const HWND focused = GetFocus()) SendMessageW(focused, WM_CANCELMODE, 0, 0);
      ui::DispatchKey(form_, ui::kKeyEscape, 0);
      return 0;
    case WM_SETCURSOR:
      if (!toolkit_.Pointer) break;
      SetCursor(toolkit_.Pointer);
      return TRUE;
    case WM_WINDOWPOSCHANGED: {
      const LRESULT result = Default(message, w, l);
      FollowWindow();
      if (caps_lock_) FollowCapsLock();
      return result;
    }
    case WM_DISPLAYCHANGE:
      LayOutAnew();
      break;
    case WM_DPICHANGED:
      ChangeResolution(HIWORD(w), *reinterpret_cast<const RECT*>(l));
      return 0;
    case WM_SYSCOLORCHANGE:
    case WM_THEMECHANGED:
    case WM_SETTINGCHANGE:
      ChangeLook(message, w, l);
      if (message == WM_SETTINGCHANGE && w == SPI_SETWORKAREA) LayOutAnew();
      return 0;
    default:
      break;
  }
  return Default(message, w, l);
}

LRESULT FormPeer::GiveObject(WPARAM w, LPARAM l) {
  if (form_.Attached) return WindowPeer::GiveObject(w, l);
  const LRESULT element = provider_.Answer(Window(), w, l);
  return element != 0 ? element : WindowPeer::GiveObject(w, l);
}

void FormPeer::PaintEdge() const {
  const HDC dc = GetWindowDC(Window());
  if (!dc) return;
  RECT edge{0, 0, place_.right - place_.left, place_.bottom - place_.top};
  for (int i = scale_.Thickness(kEdge); i > 0; --i) {
    FrameRect(dc, &edge, BrushFor(dc, theme_->Border));
    InflateRect(&edge, -1, -1);
  }
  ReleaseDC(Window(), dc);
}

void FormPeer::PaintForm() {
  {
    const PaintScope paint(Window());
    PaintParts(paint.Dc());
  }
  form_.Paint();
}

// The wheel comes from whatever control has no use for it.
bool FormPeer::TurnWheel(int delta) {
  ui::KRXIndex* const text = ui::ScrollingText(form_);
  if (text) IndexScroll::Turn(*text, delta, wheel_rest_);
  return text != nullptr;
}

void FormPeer::Tick(UINT_PTR id) {
  const auto found = std::find_if(timers_.begin(), timers_.end(),
                                  [&](const TimerPeer* t) { return t->Id() == id; });
  if (found != timers_.end() && form_.Visible()) (*found)->Tick();
}

void FormPeer::ChangeResolution(int dpi, const RECT& suggested) {
  scale_ = {dpi};
  const SIZE size = WindowSize();
  AdoptPosition({suggested.left, suggested.top, suggested.left + size.cx, suggested.top + size.cy});
  SetWindowPos(Window(), nullptr, place_.left, place_.top, size.cx, size.cy,
               SWP_NOZORDER | SWP_NOACTIVATE | SWP_FRAMECHANGED);
  LayOutAnew();
}

// What is measured now must be measured for the resolution in which this form is shown. It stays
// where it is as far as the screen has room for it there.
void FormPeer::LayOutAnew() {
  Screen screen = Screen::Of(Window());
  screen.Scale = scale_;
  const Toolkit::Measuring measuring(toolkit_, screen);
  for (ControlPeer* const child : children_)
    child->Rescale();
  for (DrawnPeer* const part : parts_)
    part->Rescale();
  form_.ScreenChanged();
  Disturbed();
  const RECT wanted = MovedInside(screen.WorkArea, place_);
  if (EqualRect(&wanted, &place_)) return;
  AdoptPosition(wanted);
  SetWindowPos(Window(), nullptr, wanted.left, wanted.top, 0, 0,
               SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}

void FormPeer::ChangeLook(UINT message, WPARAM w, LPARAM l) {
  theme_ = win32::Theme(form_.Panel.Theme);
  // Only top-level windows are told by the system; they pass it on. Some controls keep colours.
  for (ControlPeer* const child : children_) {
    SendMessageW(child->Window(), message, w, l);
    child->Update(ui::Aspect::Colors);
  }
  Default(message, w, l);
  RedrawWindow(Window(), nullptr, nullptr,
               RDW_INVALIDATE | RDW_ERASE | RDW_FRAME | RDW_ALLCHILDREN);
}

LRESULT FormPeer::ToChild(HWND child, UINT message, WPARAM w, LPARAM l) {
  ControlPeer* const peer = Child(child);
  return peer ? peer->FromParent(message, w, l) : Default(message, w, l);
}

}  // namespace krx::win32
