#include "ports/win32/KeyFilter.h"

#include "ports/win32/FormPeer.h"
#include "ui/Control.h"
#include "ui/Keyboard.h"

namespace krx::win32 {

namespace {

constexpr LPARAM kWasDown = 1L << 30;

int ShiftState() {
  return (GetKeyState(VK_SHIFT) < 0 ? ui::kShift : 0) |
         (GetKeyState(VK_CONTROL) < 0 ? ui::kControl : 0) |
         (GetKeyState(VK_MENU) < 0 ? ui::kAlt : 0);
}

// A key that is still held down from before the form opened must not answer it, and holding one
// down answers no second form: what presses buttons counts once, when it goes down.
bool HeldTooLong(const ui::Form& form, const MSG& message) {
  if ((message.lParam & kWasDown) == 0) return false;
  const bool typing = form.ActiveControl() && form.ActiveControl()->TakesText();
  return message.wParam == VK_RETURN || message.wParam == VK_ESCAPE ||
         (message.wParam == VK_SPACE && !typing);
}

}  // namespace

bool KeyFilter::Uses(FormPeer& form, MSG& message) noexcept {
  if (message.message < WM_KEYFIRST || message.message > WM_KEYLAST) return false;
  if (message.hwnd != form.Window() && !IsChild(form.Window(), message.hwnd)) return false;
  try {
    return Key(form, message);
  } catch (...) {
    form.Fail(std::current_exception());
    return true;
  }
}

bool KeyFilter::Key(FormPeer& peer, MSG& message) {
  switch (message.message) {
    case WM_KEYDOWN:
    case WM_SYSKEYDOWN:
      return Down(peer, message);
    case WM_KEYUP:
    case WM_SYSKEYUP:
      return Up(peer, message);
    case WM_CHAR:
    case WM_SYSCHAR:
      return Character(peer, message);
    default:
      return false;
  }
}

bool KeyFilter::Down(FormPeer& peer, MSG& message) {
  ui::Form& form = peer.Form();
  own_key_ = static_cast<ULONG_PTR>(GetMessageExtraInfo()) == kOwnKeys;
  if (HeldTooLong(form, message)) return true;
  const int shift = ShiftState();
  int key = static_cast<int>(message.wParam);
  if (key == VK_F4 && shift == ui::kAlt) {
    SendMessageW(peer.Window(), WM_CLOSE, 0, 0);
    return true;
  }
  if (ui::DispatchKey(form, key, shift)) return true;
  ui::Control* const control = form.ActiveControl();
  if (!control) return false;
  key = ui::KeyInDirection(*control, key);
  control->KeyDown(key, shift);
  if (key == 0 || !form.Visible()) return true;
  message.wParam = static_cast<WPARAM>(ui::KeyInDirection(*control, key));
  return false;
}

bool KeyFilter::Up(FormPeer& peer, MSG& message) {
  ui::Control* const control = peer.Form().ActiveControl();
  if (!control) return false;
  int key = static_cast<int>(message.wParam);
  control->KeyUp(key, ShiftState());
  message.wParam = static_cast<WPARAM>(key);
  return key == 0;
}

bool KeyFilter::Character(FormPeer& peer, MSG& message) {
  ui::Form& form = peer.Form();
  const bool alt = message.message == WM_SYSCHAR;
  auto character = static_cast<char16_t>(message.wParam);
  ui::Control* const control = form.ActiveControl();
  if (control && !alt) {
    control->KeyPress(character);
    if (character == 0 || !form.Visible()) return true;
    message.wParam = character;
  }
  // Keys that the form sent itself (the help key's) would press its own buttons.
  if (character <= u' ' || (own_key_ && !alt)) return false;
  if ((message.lParam & kWasDown) != 0) return alt;
  return ui::DispatchAccessKey(form, character, alt);
}

}  // namespace krx::win32
