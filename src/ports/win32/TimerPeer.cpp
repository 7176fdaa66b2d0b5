#include "ports/win32/TimerPeer.h"

namespace krx::win32 {

TimerPeer::TimerPeer(FormPeer& form, ui::Timer& timer) : form_(form), timer_(timer) {
  Update(ui::Aspect::Timing);
  form_.Add(*this);
}

TimerPeer::~TimerPeer() {
  form_.Leave(*this);
  if (running_ && form_.Window()) KillTimer(form_.Window(), Id());
}

void TimerPeer::Update(ui::Aspect aspect) {
  if (aspect != ui::Aspect::Timing || !form_.Window()) return;
  const bool wanted = timer_.Enabled() && timer_.Interval() > 0;
  if (wanted) {
    if (!SetTimer(form_.Window(), Id(), static_cast<UINT>(timer_.Interval()), nullptr))
      throw SystemError(u"The timer " + timer_.Name() + u" cannot be started");
  } else if (running_) {
    KillTimer(form_.Window(), Id());
  }
  running_ = wanted;
}

}  // namespace krx::win32
