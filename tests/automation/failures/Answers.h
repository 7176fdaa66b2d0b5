#pragma once

#include <windows.h>

namespace krx::failures {

// Gives every dialog of this thread up as long as it is there, also one whose parts bear no names:
// by Cancel, then by Esc, by closing it and at last by whatever can be clicked. A timer's
// procedure.
void CALLBACK GiveUp(HWND, UINT, UINT_PTR, DWORD);

// Whether a dialog has been seen since the last question.
bool TakeSeen();

}  // namespace krx::failures
