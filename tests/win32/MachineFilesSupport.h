#pragma once

#include <windows.h>

#include <algorithm>
#include <array>
#include <chrono>

#include "contract/Asked.h"

namespace krx::test {

// How long something took, for tests that nothing waits.
class Stopwatch {
 public:
  std::chrono::milliseconds Passed() const {
    return std::chrono::duration_cast<std::chrono::milliseconds>(Clock::now() - begin_);
  }

 private:
  using Clock = std::chrono::steady_clock;
  const Clock::time_point begin_ = Clock::now();
};

}  // namespace krx::test
