#pragma once

#include <chrono>

namespace krx::runtime {

// When the operator last pressed a key, moved the mouse or touched the screen, in whatever program;
// on a clock that only ever goes forward and may be asked from every thread.
class OperatorInput {
 public:
  virtual ~OperatorInput() = default;
  virtual std::chrono::milliseconds Now() = 0;
  // Never later than what Now answers next.
  virtual std::chrono::milliseconds Last() = 0;
};

}  // namespace krx::runtime
