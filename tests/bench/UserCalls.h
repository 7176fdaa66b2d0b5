#pragma once

#include <KorvelRuntime.h>
#include <windows.h>

#include <array>

namespace krx::bench {

// While it lives, the dialogs of this thread get objects of the user management whose calls are
// timed. They come from the runtime that this process has loaded.
class UserCalls {
 public:
  UserCalls();
  ~UserCalls();
  UserCalls(const UserCalls&) = delete;
  UserCalls& operator=(const UserCalls&) = delete;

  // What the calls have taken since this object was made, in milliseconds.
  double Milliseconds() const;

 private:
  std::array<DWORD, 3> registered_{};
};

}  // namespace krx::bench
