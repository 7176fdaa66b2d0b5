#pragma once

#include "runtime/users/system/Clock.h"

namespace krx::runtime {

// The system's clock.
class Win32Clock : public Clock {
 public:
  std::int64_t Now() override;
};

}  // namespace krx::runtime
