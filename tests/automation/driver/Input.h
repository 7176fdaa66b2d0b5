#pragma once

#include <windows.h>

#include <string>

namespace krx::drive {

// Real input, as if it came from the mouse and the keyboard: it goes where the system sends it.

enum class MouseButton { Left, Right };

// Moves the pointer to a pixel of the screen.
void MoveMouse(POINT to);
// Press and release name their place themselves: the pointer of the desktop may report a place of
// its own in between, as it does when a window opens under it.
void PressMouse(MouseButton button, POINT at);
void ReleaseMouse(MouseButton button, POINT at);
// A click never makes a double click with the one before, however soon it comes, and the two of a
// double click always do.
void ClickMouse(MouseButton button, POINT at);
void DoubleClickMouse(MouseButton button, POINT at);
// Two clicks as soon after each other as those of a double click.
void ClickMouseTwice(MouseButton button, POINT first, POINT second);
// A finger as a panel's driver sends it, which the system has made mouse messages of.
void PressFinger(POINT at);
void LiftFinger(POINT at);
// Presses at `from`, moves to `to` in steps, releases there.
void DragMouse(MouseButton button, POINT from, POINT to);
// Turns the wheel by notches, away from the hand when positive.
void TurnWheel(int notches, POINT at);

// The halves of a stroke: a key that is held stays down until it is released.
void HoldKey(WORD key);
void ReleaseKey(WORD key);

// Presses and releases a key by its virtual code while the modifier is held (0: none).
void PressKey(WORD key, WORD modifier = 0);
// Types a text, whatever the keyboard layout, at one stroke: lists take letters for one beginning
// only while they come quickly.
void TypeText(const std::wstring& text);
// A key by its name: Enter, Esc, Space, Tab, F1, Left ... or one letter or digit, alone or after
// one of Shift+, Alt+, Ctrl+. Throws for a name that it does not know.
void PressKey(const std::wstring& name);

}  // namespace krx::drive
