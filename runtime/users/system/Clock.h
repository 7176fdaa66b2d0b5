#pragma once

#include <cstdint>

namespace krx::runtime {

// Tells the time; tests bring their own.
class Clock {
 public:
  virtual ~Clock() = default;
  // Seconds since 1970-01-01, universal time.
  virtual std::int64_t Now() = 0;
};

}  // namespace krx::runtime
