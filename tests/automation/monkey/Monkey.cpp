#include "monkey/Monkey.h"

#include <array>

namespace krx::drive {

namespace {

constexpr std::array kKeys{
    WORD{VK_UP},    WORD{VK_DOWN}, WORD{VK_LEFT},   WORD{VK_RIGHT},  WORD{VK_HOME},  WORD{VK_END},
    WORD{VK_PRIOR}, WORD{VK_NEXT}, WORD{VK_RETURN}, WORD{VK_ESCAPE}, WORD{VK_SPACE}, WORD{VK_TAB},
    WORD{VK_BACK},  WORD{VK_F4},   WORD{VK_DELETE}, WORD{VK_F1},     WORD{VK_APPS},  WORD{VK_ADD}};
constexpr std::array kModifiers{WORD{VK_MENU}, WORD{VK_SHIFT}, WORD{VK_CONTROL}};

}  // namespace

// Mostly a control, because most of a form is nothing but its ground.
POINT Monkey::Somewhere(const std::vector<Window>& windows) {
  if (windows.empty() || Below(30) == 0)
    return {Below(GetSystemMetrics(SM_CXSCREEN)), Below(GetSystemMetrics(SM_CYSCREEN))};
  Window target = windows[static_cast<std::size_t>(Below(static_cast<int>(windows.size())))];
  const auto controls = target.Descendants();
  if (!controls.empty() && Below(8) != 0)
    target = controls[static_cast<std::size_t>(Below(static_cast<int>(controls.size())))];
  const RECT place = target.Bounds();
  if (place.right <= place.left || place.bottom <= place.top) return at_;
  return {place.left + Below(place.right - place.left),
          place.top + Below(place.bottom - place.top)};
}

void Monkey::Act(DWORD process) {
  if (Below(10) < 6) {
    Mouse(Somewhere(WindowsOf(process)));
  } else {
    Keys();
  }
}

void Monkey::Mouse(POINT at) {
  const POINT from = at_;
  const MouseButton button = Below(8) == 0 ? MouseButton::Right : MouseButton::Left;
  at_ = at;
  switch (Below(10)) {
    case 0:
    case 1:
    case 2:
    case 3:
      return ClickMouse(button, at);
    case 4:
      return DoubleClickMouse(button, at);
    case 5:
      return MoveMouse(at);
    case 6:
      Press(button, from);
      MoveMouse({(from.x + at.x) / 2, (from.y + at.y) / 2});
      MoveMouse(at);
      return Release(button, at);
    case 7:
      return Press(button, at);
    case 8:
      return Release(button, at);
    default:
      MoveMouse(at);
      return TurnWheel(Below(2) == 0 ? 1 + Below(3) : -1 - Below(3), at);
  }
}

void Monkey::Keys() {
  const WORD letter = static_cast<WORD>(L'A' + Below(26));
  const WORD key = kKeys[static_cast<std::size_t>(Below(kKeys.size()))];
  const WORD modifier = kModifiers[static_cast<std::size_t>(Below(kModifiers.size()))];
  switch (Below(10)) {
    case 0:
      return PressKey(letter);
    case 1:
    case 2:
      return PressKey(letter, VK_MENU);
    case 3:
      // Where no dialog is up the desktop would hear this, and end the session with all programs.
      if (key == VK_F4 && modifier == VK_MENU) return;
      return PressKey(key, modifier);
    case 4:
      return Hold(key);
    case 5:
      return Free(keys_.empty() ? key : *keys_.begin());
    default:
      return PressKey(key);
  }
}

void Monkey::Press(MouseButton button, POINT at) {
  PressMouse(button, at);
  buttons_.insert(button);
}

void Monkey::Release(MouseButton button, POINT at) {
  ReleaseMouse(button, at);
  buttons_.erase(button);
}

void Monkey::Hold(WORD key) {
  HoldKey(key);
  keys_.insert(key);
}

void Monkey::Free(WORD key) {
  ReleaseKey(key);
  keys_.erase(key);
}

void Monkey::LetGo() {
  while (!buttons_.empty())
    Release(*buttons_.begin(), at_);
  while (!keys_.empty())
    Free(*keys_.begin());
}

}  // namespace krx::drive
