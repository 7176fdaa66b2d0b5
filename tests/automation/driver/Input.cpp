#include "driver/Input.h"

#include <map>
#include <stdexcept>
#include <vector>

#include "driver/Wait.h"
#include "driver/Window.h"

namespace krx::drive {

namespace {

void Send(INPUT input) {
  if (SendInput(1, &input, sizeof input) != 1) throw std::runtime_error("input is refused");
}

// The system counts absolute positions in 65536ths of the screen; rounding up hits the pixel.
LONG Normalised(LONG pixel, int metric) {
  const LONG size = GetSystemMetrics(metric);
  return (pixel * 65536 + size - 1) / size;
}

constexpr ULONG_PTR kOfATouch = 0xFF515780;  // as the system marks the mouse of a finger

void SendMouse(DWORD flags, POINT at, DWORD time = 0, int data = 0, ULONG_PTR mark = 0) {
  INPUT input{};
  input.mi.dwExtraInfo = mark;
  input.type = INPUT_MOUSE;
  input.mi.dx = Normalised(at.x, SM_CXSCREEN);
  input.mi.dy = Normalised(at.y, SM_CYSCREEN);
  input.mi.mouseData = static_cast<DWORD>(data);
  input.mi.dwFlags = flags | MOUSEEVENTF_MOVE | MOUSEEVENTF_ABSOLUTE;
  input.mi.time = time;
  Send(input);
}

// Whether two clicks are a double click is told by the times that they carry, so these are given
// and not left to the speed of the machine.
DWORD TimeOfNextClick() {
  static DWORD last = 0;
  const DWORD now = GetTickCount();
  const DWORD earliest = last + GetDoubleClickTime() + 1;
  const bool passed = last == 0 || static_cast<LONG>(now - earliest) >= 0;
  return last = passed ? now : earliest;
}

DWORD DownFlag(MouseButton button) {
  return button == MouseButton::Left ? MOUSEEVENTF_LEFTDOWN : MOUSEEVENTF_RIGHTDOWN;
}

DWORD UpFlag(MouseButton button) {
  return button == MouseButton::Left ? MOUSEEVENTF_LEFTUP : MOUSEEVENTF_RIGHTUP;
}

void ClickAtTime(MouseButton button, POINT at, DWORD time) {
  SendMouse(DownFlag(button), at, time);
  SendMouse(UpFlag(button), at, time);
}

// The window system may still report where the pointer was before; it must have come to rest.
void WaitForPointer(POINT at) {
  constexpr int kRest = 4;
  int rested = 0;
  Within(kPatience, [&] {
    POINT now{};
    GetCursorPos(&now);
    rested = now.x == at.x && now.y == at.y ? rested + 1 : 0;
    return rested == kRest;
  });
}

INPUT KeyInput(WORD key, WORD scan, DWORD flags) {
  INPUT input{};
  input.type = INPUT_KEYBOARD;
  input.ki.wVk = key;
  input.ki.wScan = scan;
  input.ki.dwFlags = flags;
  return input;
}

void SendKey(WORD key, WORD scan, DWORD flags) {
  Send(KeyInput(key, scan, flags));
}

const std::map<std::wstring, WORD>& KeysByName() {
  static const std::map<std::wstring, WORD> keys{
      {L"Enter", WORD{VK_RETURN}}, {L"Esc", WORD{VK_ESCAPE}}, {L"Space", WORD{VK_SPACE}},
      {L"Tab", WORD{VK_TAB}},      {L"F1", WORD{VK_F1}},      {L"Left", WORD{VK_LEFT}},
      {L"Right", WORD{VK_RIGHT}},  {L"Up", WORD{VK_UP}},      {L"Down", WORD{VK_DOWN}},
      {L"Home", WORD{VK_HOME}},    {L"End", WORD{VK_END}},    {L"Delete", WORD{VK_DELETE}},
      {L"Shift", WORD{VK_SHIFT}},  {L"Alt", WORD{VK_MENU}},   {L"Ctrl", WORD{VK_CONTROL}},
      {L"F4", WORD{VK_F4}},
  };
  return keys;
}

WORD KeyOf(const std::wstring& name) {
  if (name.size() == 1) return static_cast<WORD>(LOBYTE(VkKeyScanW(name[0])));
  const auto it = KeysByName().find(name);
  if (it == KeysByName().end()) throw std::runtime_error("unknown key " + Narrow(name));
  return it->second;
}

}  // namespace

void MoveMouse(POINT to) {
  SendMouse(0, to);
}

void PressMouse(MouseButton button, POINT at) {
  SendMouse(DownFlag(button), at);
}

void ReleaseMouse(MouseButton button, POINT at) {
  SendMouse(UpFlag(button), at);
}

void ClickMouse(MouseButton button, POINT at) {
  MoveMouse(at);
  ClickAtTime(button, at, TimeOfNextClick());
}

void PressFinger(POINT at) {
  MoveMouse(at);
  SendMouse(MOUSEEVENTF_LEFTDOWN, at, 0, 0, kOfATouch);
}

void LiftFinger(POINT at) {
  SendMouse(MOUSEEVENTF_LEFTUP, at, 0, 0, kOfATouch);
}

void DoubleClickMouse(MouseButton button, POINT at) {
  ClickMouseTwice(button, at, at);
}

void ClickMouseTwice(MouseButton button, POINT first, POINT second) {
  MoveMouse(first);
  const DWORD time = TimeOfNextClick();
  ClickAtTime(button, first, time);
  ClickAtTime(button, second, time);
}

void DragMouse(MouseButton button, POINT from, POINT to) {
  constexpr int kSteps = 4;
  MoveMouse(from);
  PressMouse(button, from);
  for (int step = 1; step <= kSteps; ++step) {
    const POINT at{from.x + (to.x - from.x) * step / kSteps,
                   from.y + (to.y - from.y) * step / kSteps};
    MoveMouse(at);
    WaitForPointer(at);
  }
  ReleaseMouse(button, to);
}

void TurnWheel(int notches, POINT at) {
  SendMouse(MOUSEEVENTF_WHEEL, at, 0, notches * WHEEL_DELTA);
}

void HoldKey(WORD key) {
  SendKey(key, 0, 0);
}

void ReleaseKey(WORD key) {
  SendKey(key, 0, KEYEVENTF_KEYUP);
}

void PressKey(WORD key, WORD modifier) {
  if (modifier) HoldKey(modifier);
  HoldKey(key);
  ReleaseKey(key);
  if (modifier) ReleaseKey(modifier);
}

void PressKey(const std::wstring& name) {
  const auto plus = name.find(L'+');
  if (plus == std::wstring::npos || plus + 1 == name.size()) return PressKey(KeyOf(name));
  PressKey(KeyOf(name.substr(plus + 1)), KeyOf(name.substr(0, plus)));
}

void TypeText(const std::wstring& text) {
  std::vector<INPUT> strokes;
  for (const wchar_t unit : text) {
    strokes.push_back(KeyInput(0, static_cast<WORD>(unit), KEYEVENTF_UNICODE));
    strokes.push_back(KeyInput(0, static_cast<WORD>(unit), KEYEVENTF_UNICODE | KEYEVENTF_KEYUP));
  }
  const auto count = static_cast<UINT>(strokes.size());
  if (SendInput(count, strokes.data(), sizeof(INPUT)) != count)
    throw std::runtime_error("input is refused");
}

}  // namespace krx::drive
