#pragma once

#include "ports/win32/EditPeers.h"

namespace krx::win32 {

// The characters are shown as "*", and the window holds nothing else: whoever reads it, from this
// process or another one, gets asterisks, and the system keeps no copy that we could not wipe. What
// the operator types or pastes goes straight to the model, and asterisks to the window.
class PasswordBoxPeer final : public EditBoxPeer {
 public:
  PasswordBoxPeer(Toolkit& toolkit, FormPeer& form, ui::PasswordBox& box);

 protected:
  LRESULT Handle(UINT message, WPARAM w, LPARAM l) override;
  void ShowText() override;
  void AdoptText() override;

 private:
  LRESULT HandleSecretly(UINT message, WPARAM w, LPARAM l);
  LRESULT Character(WPARAM unit, LPARAM l);
  LRESULT Paste();
  // Puts a text in the place of the selection.
  LRESULT Insert(Password text);
  // A text set by another program, as a password store does.
  LRESULT Replace(Password text);
  // Asterisks for everything in the window, with the caret behind `caret` of them.
  void Mask(std::size_t length, std::size_t caret);

  ui::PasswordBox& box_;
  Password typed_;  // what the asterisks that are on their way to the window stand for
};

}  // namespace krx::win32
