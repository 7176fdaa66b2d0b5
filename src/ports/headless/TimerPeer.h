#pragma once

#include "ports/headless/HeadlessPlatform.h"

namespace krx::headless {

// Runs a timer on the simulated clock.
class TimerPeer : public ui::Peer {
 public:
  TimerPeer(HeadlessPlatform& platform, ui::Timer& timer);
  ~TimerPeer() override;

  HeadlessPlatform::Milliseconds Due() const { return due_; }
  void Fire();
  void Update(ui::Aspect aspect) override;

 private:
  HeadlessPlatform& platform_;
  ui::Timer& timer_;
  HeadlessPlatform::Milliseconds due_{0};
};

}  // namespace krx::headless
