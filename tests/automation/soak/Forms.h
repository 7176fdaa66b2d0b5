#pragma once

#include <windows.h>

namespace krx::soak {

// The form of this thread that is up, or a control of it by its name; null when there is none.
HWND FormOnShow();
HWND ControlOnShow(const wchar_t* name);

// Both are posted: the form acts once it handles its messages.
void Click(HWND control);
void PressEscape(HWND form);

// Handles what is in the thread's queue.
void HandlePending();

// Lets `answer` act every so many milliseconds, as long as this lives.
class Answering {
 public:
  Answering(TIMERPROC answer, UINT interval) : timer_(SetTimer(nullptr, 0, interval, answer)) {}
  ~Answering() {
    KillTimer(nullptr, timer_);
    HandlePending();
  }
  Answering(const Answering&) = delete;
  Answering& operator=(const Answering&) = delete;

 private:
  const UINT_PTR timer_;
};

}  // namespace krx::soak
