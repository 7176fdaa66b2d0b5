#pragma once

#include "ports/win32/Toolkit.h"
#include "ports/win32/WindowPeer.h"

namespace krx::win32 {

class ControlPeer;
class FormPeer;

// Tells beside a form that Caps Lock is on, as long as a password is being entered. It takes no
// part in the form: a window of its own, never active, that covers no control; it exists once there
// was something to tell.
class CapsLockHint final : public WindowPeer {
 public:
  CapsLockHint(Toolkit& toolkit, FormPeer& form);

  // Shows the words beside the field's row; none: hides.
  void Show(const String& words, const ControlPeer& field);
  void Hide();
  void Update(ui::Aspect) override {}

  const String& Words() const { return words_; }

 protected:
  LRESULT Handle(UINT message, WPARAM w, LPARAM l) override;
  std::unique_ptr<Spoken> Speak() override;
  void Fail(std::exception_ptr error) noexcept override;

 private:
  RECT PlaceBeside(const RECT& field, SIZE size) const;
  void Paint() const;

  Toolkit& toolkit_;
  FormPeer& form_;
  SharedFont font_;
  String words_;
};

}  // namespace krx::win32
