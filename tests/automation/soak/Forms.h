#pragma once

#include <windows.h>

namespace krx::soak {

// The form of this thread that is up, or a control of it by its name; null when there is none.
HWND FormOnShow();
HWND ControlOnShow(const wchar_t* name);

// Both are posted: the form acts once it handles its messages.
void Click(HWND control);
void PressEscape(HWND form);

// Handles what is in the thread's queue.
void HandlePending();

}  // namespace krx::soak
