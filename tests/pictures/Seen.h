#pragma once

#include <windows.h>

#include <string>

namespace krx::pictures {

// The visible form of this name in this thread, or the visible control of this name on a form; null
// where there is none.
HWND FormNamed(const std::wstring& name);
HWND ControlNamed(HWND form, const std::wstring& name);

// The rows of all lists of a form that can be seen.
int RowsOn(HWND form);

// The list that hangs open below a combo box of the form; null where none does.
HWND OpenList(HWND form);

// Has the form give up, as its operator would.
void Leave(HWND form);

}  // namespace krx::pictures
