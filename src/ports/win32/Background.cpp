#include "ports/win32/Background.h"

#include <algorithm>

#include "ports/win32/System.h"

namespace krx::win32 {

void Background::Start(std::shared_ptr<Background> work) {
  TP_CALLBACK_ENVIRON environment;
  InitializeThreadpoolEnvironment(&environment);
  SetThreadpoolCallbackLibrary(&environment, ThisModule());
  SetThreadpoolCallbackRunsLong(&environment);
  auto held = std::make_unique<std::shared_ptr<Background>>(std::move(work));
  const bool started = TrySubmitThreadpoolCallback(&Background::Execute, held.get(), &environment);
  const DWORD failure = GetLastError();
  DestroyThreadpoolEnvironment(&environment);
  if (!started) throw SystemError(u"No thread can be started", failure);
  static_cast<void>(held.release());  // Execute takes it
}

void CALLBACK Background::Execute(PTP_CALLBACK_INSTANCE, void* held) {
  const std::unique_ptr<std::shared_ptr<Background>> owner(
      static_cast<std::shared_ptr<Background>*>(held));
  Background& work = **owner;
  // A drive without a medium must not open a box of the system's.
  DWORD mode = 0;
  SetThreadErrorMode(SEM_FAILCRITICALERRORS, &mode);
  work.Enter();
  try {
    if (!work.GivenUp()) work.Run();
  } catch (...) {
    // What it has so far is not the whole answer; whoever takes it is told.
    work.failure_ = std::current_exception();
  }
  SetThreadErrorMode(mode, nullptr);
  work.Leave();
}

void Background::Enter() {
  const Guard guard(*this);
  thread_ = GetCurrentThreadId();
}

// From here on the thread may do other work, which is not to be cancelled.
void Background::Leave() {
  const Guard guard(*this);
  thread_ = 0;
  answered_ = true;
  ended_ = true;
  WakeAllConditionVariable(&changed_);
}

void Background::GiveUp() {
  given_up_ = true;
  const Guard guard(*this);
  if (thread_ == 0) return;
  const HANDLE thread = OpenThread(THREAD_TERMINATE, FALSE, thread_);
  if (!thread) return;
  CancelSynchronousIo(thread);
  CloseHandle(thread);
}

void Background::Answer() {
  const Guard guard(*this);
  answered_ = true;
  WakeAllConditionVariable(&changed_);
}

bool Background::Wait(const bool& reached, std::chrono::milliseconds patience) {
  using Clock = std::chrono::steady_clock;
  const auto end = Clock::now() + patience;
  const Guard guard(*this);
  while (!reached) {
    const auto rest = std::chrono::ceil<std::chrono::milliseconds>(end - Clock::now());
    if (rest.count() <= 0) break;
    SleepConditionVariableSRW(&changed_, &lock_, static_cast<DWORD>(rest.count()), 0);
  }
  return reached;
}

}  // namespace krx::win32
