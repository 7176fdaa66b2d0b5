#pragma once

#include <string>

#include "base/String.h"

namespace krx::win32 {

// Text of a keyboard layout: that of the file KRXKeyboard.<name>.txt beside this module, or else
// the one that the module carries. Empty: there is none, or it cannot be read.
std::string ReadLayout(StringView name);

}  // namespace krx::win32
