#pragma once

#include "ports/win32/FormPeer.h"
#include "ui/Timer.h"

namespace krx::win32 {

// Ticks on the window of the timer's form.
class TimerPeer final : public ui::Peer {
 public:
  TimerPeer(FormPeer& form, ui::Timer& timer);
  ~TimerPeer() override;

  void Update(ui::Aspect aspect) override;
  UINT_PTR Id() const { return reinterpret_cast<UINT_PTR>(this); }
  void Tick() { timer_.Tick(); }

 private:
  FormPeer& form_;
  ui::Timer& timer_;
  bool running_ = false;
};

}  // namespace krx::win32
