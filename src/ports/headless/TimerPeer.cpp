#include "ports/headless/TimerPeer.h"

#include "ui/Form.h"

namespace krx::headless {

TimerPeer::TimerPeer(HeadlessPlatform& platform, ui::Timer& timer)
    : platform_(platform), timer_(timer) {
  TimerPeer::Update(ui::Aspect::Timing);
}

TimerPeer::~TimerPeer() {
  std::erase(platform_.timers_, this);
}

void TimerPeer::Fire() {
  due_ += HeadlessPlatform::Milliseconds(timer_.Interval());
  // The peers of a form outlive its closing by the rest of the operator's script.
  if (timer_.Parent().Visible()) timer_.Tick();
}

void TimerPeer::Update(ui::Aspect) {
  std::erase(platform_.timers_, this);
  if (!timer_.Enabled() || timer_.Interval() <= 0) return;
  due_ = platform_.Now() + HeadlessPlatform::Milliseconds(timer_.Interval());
  platform_.timers_.push_back(this);
}

}  // namespace krx::headless
