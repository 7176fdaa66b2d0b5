#include "driver/Input.h"

#include <map>
#include <stdexcept>

#include "driver/Wait.h"
#include "driver/Window.h"

namespace krx::drive {

namespace {

void Send(INPUT input) {
  if (SendInput(1, &input, sizeof input) != 1) throw std::runtime_error("input is refused");
}

void SendMouse(DWORD flags, LONG x = 0, LONG y = 0) {
  INPUT input{};
  input.type = INPUT_MOUSE;
  input.mi.dx = x;
  input.mi.dy = y;
  input.mi.dwFlags = flags;
  Send(input);
}

void SendKey(WORD key, WORD scan, DWORD flags) {
  INPUT input{};
  input.type = INPUT_KEYBOARD;
  input.ki.wVk = key;
  input.ki.wScan = scan;
  input.ki.dwFlags = flags;
  Send(input);
}

// The system counts absolute positions in 65536ths of the screen; rounding up hits the pixel.
LONG Normalised(LONG pixel, int metric) {
  const LONG size = GetSystemMetrics(metric);
  return (pixel * 65536 + size - 1) / size;
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
  SendMouse(MOUSEEVENTF_MOVE | MOUSEEVENTF_ABSOLUTE, Normalised(to.x, SM_CXSCREEN),
            Normalised(to.y, SM_CYSCREEN));
}

void PressMouse(MouseButton button) {
  SendMouse(button == MouseButton::Left ? MOUSEEVENTF_LEFTDOWN : MOUSEEVENTF_RIGHTDOWN);
}

void ReleaseMouse(MouseButton button) {
  SendMouse(button == MouseButton::Left ? MOUSEEVENTF_LEFTUP : MOUSEEVENTF_RIGHTUP);
}

void ClickMouse(MouseButton button) {
  PressMouse(button);
  ReleaseMouse(button);
}

void ClickMouseAt(POINT to) {
  static constexpr Milliseconds kRest{20};
  const auto rests = [to] {
    MoveMouse(to);
    std::this_thread::sleep_for(kRest);
    POINT now{};
    return GetCursorPos(&now) && now.x == to.x && now.y == to.y;
  };
  if (!Within(kPatience, rests)) throw std::runtime_error("the pointer does not stay");
  ClickMouse(MouseButton::Left);
}

void DragMouse(MouseButton button, POINT from, POINT to) {
  constexpr int kSteps = 4;
  MoveMouse(from);
  PressMouse(button);
  for (int step = 1; step <= kSteps; ++step) {
    MoveMouse({from.x + (to.x - from.x) * step / kSteps, from.y + (to.y - from.y) * step / kSteps});
    // A hand is slower than the window that follows it.
    std::this_thread::sleep_for(Milliseconds(30));
  }
  ReleaseMouse(button);
}

void PressKey(WORD key, WORD modifier) {
  if (modifier) SendKey(modifier, 0, 0);
  SendKey(key, 0, 0);
  SendKey(key, 0, KEYEVENTF_KEYUP);
  if (modifier) SendKey(modifier, 0, KEYEVENTF_KEYUP);
}

void PressKey(const std::wstring& name) {
  const auto plus = name.find(L'+');
  if (plus == std::wstring::npos || plus + 1 == name.size()) return PressKey(KeyOf(name));
  PressKey(KeyOf(name.substr(plus + 1)), KeyOf(name.substr(0, plus)));
}

void TypeText(const std::wstring& text) {
  for (const wchar_t unit : text) {
    SendKey(0, static_cast<WORD>(unit), KEYEVENTF_UNICODE);
    SendKey(0, static_cast<WORD>(unit), KEYEVENTF_UNICODE | KEYEVENTF_KEYUP);
  }
}

}  // namespace krx::drive
