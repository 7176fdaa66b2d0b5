#pragma once

#include <chrono>
#include <thread>

namespace krx::drive {

using Milliseconds = std::chrono::milliseconds;

// How long a test waits for what must happen before it fails: far longer than it takes on the
// slowest and busiest machine. No test waits so long for what must not happen.
inline constexpr Milliseconds kPatience{180000};

// Polls until the condition holds; false when the limit passes first.
template <class Condition>
bool Within(Milliseconds limit, Condition condition) {
  const auto end = std::chrono::steady_clock::now() + limit;
  while (!condition()) {
    if (std::chrono::steady_clock::now() >= end) return false;
    std::this_thread::sleep_for(Milliseconds(5));
  }
  return true;
}

}  // namespace krx::drive
