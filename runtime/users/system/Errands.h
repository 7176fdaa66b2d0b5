#pragma once

#include <chrono>
#include <functional>

namespace krx::runtime {

// Work that may hang, done on another thread.
class Errands {
 public:
  virtual ~Errands() = default;
  // Starts the work and waits until it has ended, no longer than `patience`; false when it goes on
  // without the caller, so it has to keep what it needs itself. It must not throw. Raises Error
  // when the system has no thread.
  virtual bool Run(std::function<void()> work, std::chrono::milliseconds patience) = 0;
};

}  // namespace krx::runtime
