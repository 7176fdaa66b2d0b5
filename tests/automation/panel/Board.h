#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "driver/Window.h"

namespace krx::drive {

// What presses the keys.
enum class Hand { Mouse, Finger };

// The keyboard on the screen, pressed with real input: first of all it must come by itself.
class Board {
 public:
  // Throws when no keyboard comes in time.
  explicit Board(Hand hand = Hand::Mouse);

  const Window& TheWindow() const { return window_; }
  // The key that bears this caption; throws when none comes into sight in time.
  Window Key(const std::wstring& caption) const;
  void Press(const std::wstring& caption) const { Press(Key(caption)); }
  void Press(const Window& key) const;
  // Holds a key until this one is in sight, and slides there to let go.
  void HoldFor(const std::wstring& caption, const std::wstring& choice) const;
  // Holds a key for as long as it takes until this is so; throws when it does not come about.
  void HoldUntil(const std::wstring& caption, const std::function<bool()>& condition) const;
  // Looks for each character on all pages, with Shift and without, and goes back to the first page.
  void Type(const std::wstring& text) const;
  void WaitUntilHidden() const;
  std::optional<Window> Find(const std::wstring& caption) const;

 private:
  void Down(POINT at) const;
  void Up(POINT at) const;
  std::wstring Captions() const;
  // Presses a key that changes what the others bear.
  void Change(const Window& key) const;
  void TypeOne(const std::wstring& character) const;
  Window PageKey() const;
  // The first key in sight that bears one of these: what a key is called depends on the layout.
  std::optional<Window> FindOne(const std::vector<std::wstring>& captions) const;
  std::optional<Window> ShiftKey() const;

  const Hand hand_;
  Window window_;
};

// Whether a keyboard is in sight.
bool BoardInSight();

// A short touch with a finger.
void TouchAt(POINT at);

}  // namespace krx::drive
