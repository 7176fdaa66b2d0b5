#pragma once

#include "base/String.h"

namespace krx::win32 {

// Sends keystrokes to whatever window has the focus, as if they were typed. Runtime error 5 for a
// malformed notation, 70 when the system lets no input through.
void SendKeys(StringView notation);

}  // namespace krx::win32
