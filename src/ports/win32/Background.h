#pragma once

#include <windows.h>

#include <atomic>
#include <chrono>
#include <exception>
#include <memory>

namespace krx::win32 {

// Work on a thread of the system's pool that nobody has to wait for: it may hang in a call to a
// network as long as it likes. It keeps itself and the module with its code until it has ended.
class Background {
 public:
  Background() = default;
  virtual ~Background() = default;
  Background(const Background&) = delete;
  Background& operator=(const Background&) = delete;

  // Raises Error when the system has no thread.
  static void Start(std::shared_ptr<Background> work);

  // Raises what the work has ended with, such as lack of memory; to be asked behind its end.
  void RaiseFailure() const {
    if (failure_) std::rethrow_exception(failure_);
  }

  // Asks the work to end soon, and cancels the call of the system that it waits in; waits for
  // nothing itself.
  void GiveUp();
  // Both wait no longer than `patience` and return whether it is so.
  bool WaitForAnswer(std::chrono::milliseconds patience) { return Wait(answered_, patience); }
  bool WaitForEnd(std::chrono::milliseconds patience) { return Wait(ended_, patience); }

 protected:
  // Holds the lock under which work and waiters share their data.
  class Guard {
   public:
    explicit Guard(Background& work) : lock_(work.lock_) { AcquireSRWLockExclusive(&lock_); }
    ~Guard() { ReleaseSRWLockExclusive(&lock_); }
    Guard(const Guard&) = delete;
    Guard& operator=(const Guard&) = delete;

   private:
    SRWLOCK& lock_;
  };

  virtual void Run() = 0;
  bool GivenUp() const { return given_up_; }
  // The work has reached what the caller waits for first; its end is an answer too.
  void Answer();
  bool Ended() const { return ended_; }

 private:
  static void CALLBACK Execute(PTP_CALLBACK_INSTANCE, void* work);
  bool Wait(const bool& reached, std::chrono::milliseconds patience);
  void Enter();
  void Leave();

  // These two, unlike the standard's, cost no call of the kernel where nobody waits.
  SRWLOCK lock_ = SRWLOCK_INIT;
  CONDITION_VARIABLE changed_ = CONDITION_VARIABLE_INIT;
  std::atomic<bool> given_up_ = false;
  bool answered_ = false;
  bool ended_ = false;
  std::exception_ptr failure_;
  DWORD thread_ = 0;  // that runs the work; 0 before and behind
};

}  // namespace krx::win32
