#include "ports/headless/ControlPeer.h"

#include "ui/Form.h"

namespace krx::headless {

namespace {

bool Reachable(const ui::Control& control) {
  return control.Visible() && control.Enabled();
}

}  // namespace

void ControlPeer::Update(ui::Aspect aspect) {
  if (aspect != ui::Aspect::Visible && aspect != ui::Aspect::Enabled) return;
  ui::Form& form = control_.Parent();
  if (form.ActiveControl() != &control_ || Reachable(control_)) return;
  form.FocusMovedTo(nullptr);
  // The handler of the loss may have led the focus elsewhere itself.
  const ui::Control* const chosen = form.ActiveControl();
  if (!chosen || !Reachable(*chosen)) form.FocusMovedTo(form.FirstFocus());
}

void ControlPeer::SetFocus() {
  control_.Parent().FocusMovedTo(&control_);
}

}  // namespace krx::headless
