#pragma once

#include <optional>
#include <string>

#include "driver/Window.h"

namespace krx::drive {

// The keyboard on the screen, pressed with the real mouse: first of all it must come by itself.
class Board {
 public:
  // Throws when no keyboard comes in time.
  Board();

  const Window& TheWindow() const { return window_; }
  // The key that bears this caption; throws when none comes into sight in time.
  Window Key(const std::wstring& caption) const;
  void Press(const std::wstring& caption) const { Key(caption).Click(); }
  // Looks for each character on all pages, with Shift and without, and goes back to the first page.
  void Type(const std::wstring& text) const;
  void WaitUntilHidden() const;
  std::optional<Window> Find(const std::wstring& caption) const;

 private:
  std::wstring Captions() const;
  // Presses a key that changes what the others bear.
  void Change(const Window& key) const;
  void TypeOne(const std::wstring& character) const;
  Window PageKey() const;
  std::optional<Window> ShiftKey() const;

  Window window_;
};

// Whether a keyboard is in sight.
bool BoardInSight();

// A touch with a finger as a panel's driver sends it, which the system has made mouse messages of.
void TouchAt(POINT at);

}  // namespace krx::drive
