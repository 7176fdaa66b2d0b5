#pragma once

#include <windows.h>

#include <random>
#include <set>
#include <vector>

#include "driver/Input.h"
#include "driver/Window.h"

namespace krx::drive {

// Real input without sense or aim: clicks, double clicks, drags, wheel, keys and access keys, also
// halves of them. What it does follows from its seed and from the windows that it meets.
class Monkey {
 public:
  explicit Monkey(unsigned seed) : random_(seed) {}

  // One action at the windows of a process.
  void Act(DWORD process);
  // Lets go of every key and button that it still holds.
  void LetGo();

 private:
  int Below(int limit) { return static_cast<int>(random_() % static_cast<unsigned>(limit)); }
  POINT Somewhere(const std::vector<Window>& windows);

  void Mouse(POINT at);
  void Keys();
  void Press(MouseButton button, POINT at);
  void Release(MouseButton button, POINT at);
  void Hold(WORD key);
  void Free(WORD key);

  std::mt19937 random_;  // the same everywhere
  POINT at_{};
  std::set<MouseButton> buttons_;
  std::set<WORD> keys_;
};

}  // namespace krx::drive
