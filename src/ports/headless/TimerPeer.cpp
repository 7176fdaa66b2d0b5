#include "ports/headless/TimerPeer.h"

namespace krx::headless {

TimerPeer::TimerPeer(HeadlessPlatform& platform, ui::Timer& timer)
    : platform_(platform), timer_(timer) {
  Update(ui::Aspect::Timing);
}

TimerPeer::~TimerPeer() {
  platform_.timers_.erase(this);
}

void TimerPeer::Fire() {
  due_ += HeadlessPlatform::Milliseconds(timer_.Interval());
  timer_.Tick();
}

void TimerPeer::Update(ui::Aspect) {
  platform_.timers_.erase(this);
  if (!timer_.Enabled() || timer_.Interval() <= 0) return;
  due_ = platform_.Now() + HeadlessPlatform::Milliseconds(timer_.Interval());
  platform_.timers_.insert(this);
}

}  // namespace krx::headless
