#pragma once

#include "ui/KRXKey.h"

namespace krx::ui {

// What is drawn on a key of a keyboard instead of its caption.
enum class KeySign {
  None,
  Shift,
  CapsLock,
  Backspace,
  Delete,
  Enter,
  Tab,
  Left,
  Right,
  Up,
  Down,
  Home,
  End,
  Hide,
};

// A key of a keyboard on the screen: it is pressed and let go without ever having the focus. Its
// caption is its name also where a sign is drawn.
class BoardKey : public KRXKey {
 public:
  BoardKey(Form& parent, String name) : KRXKey(parent, std::move(name), Kind::BoardKey) {
    TabStop = false;
  }

  Property<KeySign> Sign{*this, Aspect::Picture, KeySign::None};
  // Shift and Caps Lock stay down until they are pressed again.
  Property<bool> Latched{*this, Aspect::Picture, false};
  // Whether it types what it bears; others stand out from those.
  bool Types = true;
  // Nothing tells that the key is pressed, as beside a password.
  bool Discreet = false;
};

}  // namespace krx::ui
