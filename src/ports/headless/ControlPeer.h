#pragma once

#include "ui/Control.h"

namespace krx::headless {

// A control on the screen: the focus does not stay where no window could have it.
class ControlPeer : public ui::Peer {
 public:
  explicit ControlPeer(ui::Control& control) : control_(control) {}

  void Update(ui::Aspect aspect) override;
  void SetFocus() override;

 private:
  ui::Control& control_;
};

}  // namespace krx::headless
