#pragma once

#include <windows.h>

#include <string>

namespace krx::drive {

// Real input, as if it came from the mouse and the keyboard: it goes where the system sends it.

enum class MouseButton { Left, Right };

// Moves the pointer to a pixel of the screen.
void MoveMouse(POINT to);
// Moves it there and clicks once it stays: a window that opens under the pointer may have the
// system report the place where the pointer was before. Throws when it does not stay.
void ClickMouseAt(POINT to);
void PressMouse(MouseButton button);
void ReleaseMouse(MouseButton button);
void ClickMouse(MouseButton button);
// Presses at `from`, moves to `to` in steps, releases there.
void DragMouse(MouseButton button, POINT from, POINT to);

// Presses and releases a key by its virtual code while the modifier is held (0: none).
void PressKey(WORD key, WORD modifier = 0);
// Types a text, whatever the keyboard layout.
void TypeText(const std::wstring& text);
// A key by its name: Enter, Esc, Space, Tab, F1, Left ... or one letter or digit, alone or after
// one of Shift+, Alt+, Ctrl+. Throws for a name that it does not know.
void PressKey(const std::wstring& name);

}  // namespace krx::drive
