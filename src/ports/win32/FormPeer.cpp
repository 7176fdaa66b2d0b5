#include "ports/win32/FormPeer.h"

#include <algorithm>
#include <array>
#include <utility>

#include "ports/win32/ControlPeer.h"
#include "ports/win32/DrawnPeer.h"
#include "ports/win32/ModalLoop.h"
#include "ports/win32/Stacking.h"
#include "ports/win32/TimerPeer.h"
#include "ui/Keyboard.h"

namespace krx::win32 {

namespace {

constexpr DWORD kStyle = WS_POPUP | WS_CLIPCHILDREN | WS_CLIPSIBLINGS;
constexpr DWORD kAttachedStyle = WS_EX_NOACTIVATE | WS_EX_TOPMOST | WS_EX_TOOLWINDOW;

HWND OwnerOf(const ui::Form& form) {
  return form.Attached ? static_cast<const FormPeer*>(form.Attached->ThePeer())->Window() : nullptr;
}

// Who moves a window by the window manager holds a button, or a key that calls it.
bool AnythingHeld() {
  constexpr std::array kKeys{VK_LBUTTON, VK_MBUTTON, VK_RBUTTON, VK_MENU,
                             VK_CONTROL, VK_SHIFT,   VK_LWIN,    VK_RWIN};
  return std::any_of(kKeys.begin(), kKeys.end(), [](int key) { return GetAsyncKeyState(key) < 0; });
}

}  // namespace

FormPeer::FormPeer(Toolkit& toolkit, ui::Form& form)
    : toolkit_(toolkit),
      form_(form),
      scale_(toolkit.OpeningScreen().Scale),
      theme_(form.Panel.Theme) {
  place_ = FirstPlace();
  const DWORD ex_style = form.Attached ? kAttachedStyle : WS_EX_CONTROLPARENT;
  Create(toolkit.Controls,
         {kFormClass, kStyle, ex_style, Wide(form.Caption()), place_, OwnerOf(form)}, form.Name());
  AdoptPosition(place_);
  // Keyboard users see the focus and the access keys from the start.
  if (SendMessageW(Window(), WM_QUERYUISTATE, 0, 0) != 0)
    SendMessageW(Window(), WM_UPDATEUISTATE, MAKEWPARAM(UIS_CLEAR, UISF_HIDEFOCUS | UISF_HIDEACCEL),
                 0);
}

RECT FormPeer::FirstPlace() const {
  const SIZE size = WindowSize();
  if (!form_.Attached) return Centred(toolkit_.OpeningScreen().WorkArea, size);
  const POINT at{scale_.Pixels(form_.Left()), scale_.Pixels(form_.Top())};
  return {at.x, at.y, at.x + size.cx, at.y + size.cy};
}

void FormPeer::Update(ui::Aspect aspect) {
  if (!Window()) return;
  const DpiScope scope;
  switch (aspect) {
    case ui::Aspect::Bounds:
      return UpdateBounds();
    case ui::Aspect::Colors:
      InvalidateRect(Window(), nullptr, TRUE);
      return;
    case ui::Aspect::Caption:
      SetWindowTextW(Window(), Wide(form_.Caption()));
      return;
    case ui::Aspect::Visible:
      if (form_.Attached) return ShowAttached();
      return ModalLoop::Hidden(toolkit_, *this);
    default:
      return;
  }
}

SIZE FormPeer::WindowSize() const {
  const int edges = 2 * scale_.Thickness(kEdge);
  return {scale_.Pixels(form_.Width()) + edges, scale_.Pixels(form_.Height()) + edges};
}

void FormPeer::AdoptPosition(const RECT& window) {
  place_ = window;
  TellPosition(window);
}

// Others move windows as well, a window manager above all, and while a drag is on its way it may
// set the window back for a moment: a form that did not know would be dragged from the wrong place.
void FormPeer::FollowWindow() {
  const DpiScope scope;
  RECT now{};
  if (!GetWindowRect(Window(), &now) || EqualRect(&now, &place_)) return;
  // While a window appears on a busy machine, some systems confuse its place inside the window
  // manager's frame with that on the screen, and then what drops from it drops in the corner. A
  // window that has moved before, or that somebody is moving, is meant to be there.
  if (now.left == 0 && now.top == 0 && !moved_ && !AnythingHeld()) {
    asked_ = POINT{place_.left, place_.top};
    PostMessageW(Window(), kStandWhereAsked, 0, 0);
  }
  moved_ = moved_ || IsWindowVisible(Window());
  AdoptPosition(now);
}

// Asked within the system's own move it would not reach the screen.
void FormPeer::StandWhereAsked() {
  if (!asked_) return;
  const POINT at = *std::exchange(asked_, std::nullopt);
  if (place_.left == 0 && place_.top == 0)
    SetWindowPos(Window(), nullptr, at.x, at.y, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}

void FormPeer::TellPosition(const RECT& window) {
  form_.Left.Adopt(scale_.ToTwips(window.left));
  form_.Top.Adopt(scale_.ToTwips(window.top));
}

// The model's position stays as it was set: the next move counts from there, so rounding to pixels
// never adds up. Only where a drag would take the buttons off the screen it is corrected: a dialog
// that is modal and out of reach would hold its client for good.
void FormPeer::UpdateBounds() {
  const SIZE size = WindowSize();
  const POINT at{scale_.Pixels(form_.Left()), scale_.Pixels(form_.Top())};
  const RECT asked{at.x, at.y, at.x + size.cx, at.y + size.cy};
  const RECT wanted = form_.KeptInReach ? KeptInReach(asked) : asked;
  if (!EqualRect(&wanted, &asked)) TellPosition(wanted);
  if (EqualRect(&wanted, &place_)) return;
  asked_.reset();
  moved_ = moved_ || IsWindowVisible(Window());
  const bool resized =
      size.cx != place_.right - place_.left || size.cy != place_.bottom - place_.top;
  place_ = wanted;
  SetWindowPos(Window(), nullptr, wanted.left, wanted.top, size.cx, size.cy,
               SWP_NOZORDER | SWP_NOACTIVATE | (resized ? 0u : SWP_NOSIZE));
  if (resized && Mirrored()) PlaceChildrenAnew();
}

void FormPeer::Show() {
  for (ControlPeer* const child : children_)
    child->Settle();
  ShowWindow(Window(), SW_SHOW);
  StandInFront(Window());
  Tell(EVENT_SYSTEM_DIALOGSTART, Window());
  // Everything is painted in one go instead of window by window as the queue runs empty.
  RedrawWindow(Window(), nullptr, nullptr, RDW_UPDATENOW | RDW_ALLCHILDREN);
  form_.CameUp();
}

void FormPeer::ComeToTheFront(bool called) {
  if (!IsWindowVisible(Window()) || !IsWindowEnabled(Window())) return;  // another form is in use
  StandInFront(Window());
  if (called) SetForegroundWindow(Window());
}

void FormPeer::Remove() {
  if (Window()) Tell(EVENT_SYSTEM_DIALOGEND, Window());
  if (form_.Loaded()) {
    ShowWindow(Window(), SW_HIDE);
  } else {
    Destroy();
  }
}

void FormPeer::Fail(std::exception_ptr error) noexcept {
  if (form_.Attached)
    return static_cast<FormPeer*>(form_.Attached->ThePeer())->Fail(std::move(error));
  if (error_) return;
  error_ = std::move(error);
  ModalLoop::Wake(toolkit_, *this);
}

void FormPeer::FocusOn(ControlPeer& child) {
  if (GetActiveWindow() == Window()) {
    ::SetFocus(child.Window());
  } else {
    FocusCameTo(&child.TheControl());
  }
}

void FormPeer::FocusCameTo(ui::Control* control) {
  const ui::Control* const before = DefaultKey();
  form_.FocusMovedTo(control);
  Disturbed();
  const ui::Control* const now = DefaultKey();
  if (before == now) return;
  for (const ui::Control* const key : {before, now}) {
    const ControlPeer* const peer = key ? Child(*key) : nullptr;
    if (peer && peer->Window()) InvalidateRect(peer->Window(), nullptr, FALSE);
  }
}

void FormPeer::FocusElsewhere() {
  FocusCameTo(nullptr);
  ::SetFocus(FocusWindow());
}

HWND FormPeer::FocusWindow() const {
  const auto window_of = [this](const ui::Control* control) -> HWND {
    const ControlPeer* const peer = control ? Child(*control) : nullptr;
    return peer && control->Visible() && control->Enabled() ? peer->Window() : nullptr;
  };
  if (const HWND active = window_of(form_.ActiveControl())) return active;
  const HWND first = window_of(form_.FirstFocus());
  return first ? first : Window();
}

HWND FormPeer::WindowBefore(const ui::Control& control) const {
  const auto& order = form_.TabOrder();
  for (auto at = std::find(order.begin(), order.end(), &control); at != order.begin();) {
    const ui::Control& before = **--at;
    const ControlPeer* const peer = Child(before);
    if (peer && peer->Window() && !before.LiesBelow()) return peer->Window();
  }
  return nullptr;
}

ControlPeer* FormPeer::Child(HWND window) const {
  const auto found = std::find_if(children_.begin(), children_.end(),
                                  [&](const ControlPeer* c) { return c->Window() == window; });
  return found == children_.end() ? nullptr : *found;
}

ControlPeer* FormPeer::Child(const ui::Control& control) const {
  const auto found = std::find_if(children_.begin(), children_.end(), [&](const ControlPeer* c) {
    return &c->TheControl() == &control;
  });
  return found == children_.end() ? nullptr : *found;
}

}  // namespace krx::win32
