#include "ports/win32/ControlPeer.h"

#include <tpcshrd.h>

#include <algorithm>
#include <cstring>
#include <utility>

#include "ui/Keyboard.h"

namespace krx::win32 {

namespace {

constexpr LRESULT kOnlyPresses = TABLET_DISABLE_PRESSANDHOLD | TABLET_DISABLE_FLICKS;

bool IsField(ui::Kind kind) {
  return kind == ui::Kind::TextBox || kind == ui::Kind::PasswordBox;
}

}  // namespace

ControlPeer::ControlPeer(Toolkit& toolkit, FormPeer& form, ui::Control& control)
    : toolkit_(toolkit),
      form_(form),
      font_(toolkit.Texts.FontFor(control.Font(), form.Scale())),
      control_(control),
      place_(form.PlaceOf(control)) {
  form_.Add(*this);
}

ControlPeer::~ControlPeer() {
  form_.Leave(*this);
}

void ControlPeer::CreateChild(const wchar_t* window_class, DWORD style, DWORD ex_style,
                              const String& text) {
  style |= WS_CHILD | WS_VISIBLE | WS_CLIPSIBLINGS;
  if (!control_.Enabled()) style |= WS_DISABLED;
  if (control_.TabStop()) style |= WS_TABSTOP;
  if (form_.Mirrored()) ex_style |= MirrorStyle();
  Create(toolkit_.Controls, {window_class, style, ex_style, Wide(text), place_, form_.Window()},
         control_.Name());
  Created();
  GiveFont();
  if (!control_.LiesBelow()) StandInOrder();
}

// New windows lie below their elder siblings. One that comes late takes its place in the tab order:
// there a screen reader finds it, and there it lies above what lies below others.
void ControlPeer::StandInOrder() const {
  const HWND before = form_.WindowBefore(control_);
  if (GetWindow(Window(), GW_HWNDPREV) == before) return;
  SetWindowPos(Window(), before ? before : HWND_TOP, 0, 0, 0, 0,
               SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
}

void ControlPeer::Update(ui::Aspect aspect) {
  if (!Window()) return;
  Adapt(aspect);
  if (!Silent()) TellChange(aspect);
}

void ControlPeer::Adapt(ui::Aspect aspect) {
  const DpiScope scope;
  switch (aspect) {
    case ui::Aspect::Bounds:
      return UpdateBounds();
    case ui::Aspect::Visible:
      if (!control_.Visible() && GetFocus() == Window()) form_.FocusElsewhere();
      ShowWindow(Window(), control_.Visible() ? SW_SHOWNA : SW_HIDE);
      return;
    case ui::Aspect::Enabled:
      // The system would leave the keyboard with a disabled window.
      if (!control_.Enabled() && GetFocus() == Window()) form_.FocusElsewhere();
      EnableWindow(Window(), control_.Enabled());
      return;
    case ui::Aspect::Font:
      UpdateFont();
      return UpdateContent(aspect);
    case ui::Aspect::Colors:
      return Invalidate();
    default:
      return UpdateContent(aspect);
  }
}

void ControlPeer::TellChange(ui::Aspect aspect) const {
  switch (aspect) {
    case ui::Aspect::Text:
      return Tell(control_.Kind() == ui::Kind::ComboBox ? EVENT_OBJECT_VALUECHANGE
                                                        : EVENT_OBJECT_NAMECHANGE,
                  Window());
    case ui::Aspect::Enabled:
    case ui::Aspect::Locked:
      return Tell(EVENT_OBJECT_STATECHANGE, Window());
    case ui::Aspect::Items:
    case ui::Aspect::MoreItems:
      return Tell(EVENT_OBJECT_REORDER, Window());
    default:
      return;
  }
}

void ControlPeer::SetFocus() {
  if (Window()) form_.FocusOn(*this);
}

void ControlPeer::Rescale() {
  UpdateBounds();
  UpdateFont();
  UpdateContent(ui::Aspect::Font);
}

void ControlPeer::UpdateBounds() {
  const RECT wanted = form_.PlaceOf(control_);
  if (EqualRect(&wanted, &place_)) return;
  place_ = wanted;
  SetWindowPos(Window(), nullptr, wanted.left, wanted.top, wanted.right - wanted.left,
               wanted.bottom - wanted.top, SWP_NOACTIVATE | SWP_NOZORDER);
  Invalidate();
}

void ControlPeer::UpdateFont() {
  font_ = toolkit_.Texts.FontFor(control_.Font(), form_.Scale());
  GiveFont();
  Invalidate();
}

void ControlPeer::GiveFont() const {
  SendMessageW(Window(), WM_SETFONT, reinterpret_cast<WPARAM>(font_->Get()), FALSE);
}

void ControlPeer::Invalidate() const {
  InvalidateRect(Window(), nullptr, TRUE);
}

COLORREF ControlPeer::FieldGround(bool enabled) const {
  return enabled ? form_.Theme()(control_.BackColor()) : form_.Theme()->Face;
}

void ControlPeer::PaintField(HDC dc, const RECT& place, const FieldState& state) const {
  const Theme& theme = form_.Theme();
  const Scale scale = form_.Scale();
  const bool focused = state.Focused && form_.ShowsFocus();
  const COLORREF border = !state.Enabled ? theme->Line
                          : focused      ? theme->Focus
                          : state.Hot    ? theme->Text
                                         : theme->Border;
  toolkit_.Drawing.Box(dc, place,
                       {theme(form_.GroundOf(control_)), border, FieldGround(state.Enabled),
                        scale.Thickness(focused ? kFocusRing : 1), scale.Thickness(kCornerRadius)});
}

void ControlPeer::SetText(const String& text) const {
  SetWindowTextW(Window(), Wide(text));
}

LRESULT ControlPeer::AnswerText(StringView text, WPARAM capacity, LPARAM buffer) {
  if (capacity == 0) return 0;
  const std::size_t length = std::min<std::size_t>(text.size(), capacity - 1);
  auto* const out = reinterpret_cast<wchar_t*>(buffer);
  std::memcpy(out, text.data(), length * sizeof(wchar_t));
  out[length] = 0;
  return static_cast<LRESULT>(length);
}

LRESULT ControlPeer::FromParent(UINT message, WPARAM w, LPARAM l) {
  switch (message) {
    case WM_COMMAND:
      Notified(HIWORD(w));
      return 0;
    case WM_NOTIFY:
      return 0;
    case WM_DRAWITEM: {
      const auto& item = *reinterpret_cast<const DRAWITEMSTRUCT*>(l);
      // The list that drops from a mirrored field is a window without a mirror of its own.
      const MirroredDrawing mirrored(item.hDC, form_.Mirrored());
      Draw(item);
      return TRUE;
    }
    default: {  // asks for the colours
      const HDC dc = reinterpret_cast<HDC>(w);
      const COLORREF back = form_.Theme()(control_.BackColor());
      SetTextColor(dc, form_.Theme()(control_.ForeColor()));
      SetBkColor(dc, back);
      return reinterpret_cast<LRESULT>(BrushFor(dc, back));
    }
  }
}

LRESULT ControlPeer::Handle(UINT message, WPARAM w, LPARAM l) {
  switch (message) {
    case WM_SETFOCUS: {
      const LRESULT result = Default(message, w, l);
      FocusChanged(true);
      form_.FocusCameTo(&control_);
      return result;
    }
    case WM_KILLFOCUS: {
      // Where the focus went is reported from there. While another application has it, the control
      // stays the form's active one and gets the focus back without new events.
      const LRESULT result = Default(message, w, l);
      FocusChanged(false);
      return result;
    }
    case WM_TABLET_QUERYSYSTEMGESTURESTATUS:
      // A finger that stays on a button or a row for long means nothing else than a short one.
      return IsField(control_.Kind()) ? Default(message, w, l) : kOnlyPresses;
    default:
      HandleMouse(message, w, l);
      return Default(message, w, l);
  }
}

// Before the control takes the focus for it.
void ControlPeer::TellPress() const {
  ui::Companion* const beside = form_.Form().Beside.get();
  if (!beside) return;
  beside->Pressed(control_, ByFinger());
  form_.Disturbed();
}

std::optional<LRESULT> ControlPeer::HandleTouch(UINT message, WPARAM w, LPARAM l) {
  const std::optional<Touch> touch = TouchOf(Window(), message, w, l);
  if (!touch) return {};
  if (touch->Message == 0) return 0;
  const bool before = std::exchange(touching_, true);
  const LRESULT result = Handle(touch->Message, touch->Keys, touch->Point);
  touching_ = before;
  return result;
}

void ControlPeer::HandleMouse(UINT message, WPARAM w, LPARAM l) {
  switch (message) {
    case WM_LBUTTONDOWN:
    case WM_LBUTTONDBLCLK:
      TellPress();
      return MouseEvent(control_.MouseDown, ui::kLeftButton, w, l);
    case WM_RBUTTONDOWN:
    case WM_RBUTTONDBLCLK:
      return MouseEvent(control_.MouseDown, ui::kRightButton, w, l);
    case WM_LBUTTONUP:
      return MouseEvent(control_.MouseUp, ui::kLeftButton, w, l);
    case WM_RBUTTONUP:
      return MouseEvent(control_.MouseUp, ui::kRightButton, w, l);
    case WM_MOUSEMOVE: {
      const int held = ((w & MK_LBUTTON) != 0 ? ui::kLeftButton : 0) |
                       ((w & MK_RBUTTON) != 0 ? ui::kRightButton : 0);
      return MouseEvent(control_.MouseMove, held, w, l);
    }
    default:
      return;
  }
}

void ControlPeer::MouseEvent(const ui::Event<int, int, Twips, Twips>& event, int button, WPARAM w,
                             LPARAM l) {
  const int shift = ((w & MK_SHIFT) != 0 ? ui::kShift : 0) |
                    ((w & MK_CONTROL) != 0 ? ui::kControl : 0) |
                    (GetKeyState(VK_MENU) < 0 ? ui::kAlt : 0);
  const Scale scale = form_.Scale();
  int x = static_cast<short>(LOWORD(l));
  // A mirrored window counts from its right edge, the model from the left one.
  if (form_.Mirrored() && (MirrorStyle() & WS_EX_LAYOUTRTL) != 0) {
    RECT area{};
    GetClientRect(Window(), &area);
    x = static_cast<int>(area.right) - 1 - x;
  }
  event(button, shift, scale.ToTwips(x), scale.ToTwips(static_cast<short>(HIWORD(l))));
}

}  // namespace krx::win32
