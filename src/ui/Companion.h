#pragma once

namespace krx::ui {

class Control;

// What stands beside a form while it is shown and goes where the operator goes in it: the keyboard
// on the screen.
class Companion {
 public:
  virtual ~Companion() = default;
  // A control is pressed, by a finger or a pen, or else by a mouse; the focus may follow.
  virtual void Pressed(const Control& control, bool by_finger) = 0;
  // The focus is where it is going to stay, and no button is held. False: to be asked again soon.
  virtual bool Settle() = 0;
  // The form is no longer in use, or goes; it may come back.
  virtual void Leave() = 0;
  // The form's windows are about to be destroyed.
  virtual void Drop() = 0;
};

}  // namespace krx::ui
