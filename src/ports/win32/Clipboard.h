#pragma once

#include "ports/win32/System.h"

namespace krx::win32 {

// Puts a text on the clipboard, on behalf of a window. Where another program holds the clipboard
// nothing happens: a copy is never worth an error.
void CopyText(HWND window, StringView text);

}  // namespace krx::win32
