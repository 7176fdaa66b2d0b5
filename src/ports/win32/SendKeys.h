#pragma once

#include "ui/Keyboard.h"

namespace krx::win32 {

// Sends keystrokes to whatever window has the focus, as if they were typed. Runtime error 5 for a
// malformed notation, 70 when the system lets no input through.
void SendKeys(StringView notation);

// The same for one key or character. A character is sent as it is, whatever keyboard the system
// knows.
void PressKey(const ui::Keystroke& stroke);

}  // namespace krx::win32
