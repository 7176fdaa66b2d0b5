#pragma once

#include "ports/win32/System.h"

namespace krx::win32 {

class FormPeer;

// Marks the keystrokes that SendKeys sends.
inline constexpr ULONG_PTR kOwnKeys = 0x4B525831;

// Brings the keyboard to the model before the windows see it: first to the focused control's
// events, then to what all forms do with keys.
class KeyFilter {
 public:
  // Whether the message is used up. Errors of handlers are kept for the form's modal call.
  bool Uses(FormPeer& form, MSG& message) noexcept;

 private:
  bool Key(FormPeer& peer, MSG& message);
  bool Down(FormPeer& peer, MSG& message);
  bool Up(FormPeer& peer, MSG& message);
  bool Character(FormPeer& peer, MSG& message);

  // The last key pressed came from SendKeys; the character that follows is not the operator's.
  bool own_key_ = false;
};

}  // namespace krx::win32
