#pragma once

#include "runtime/users/system/Errands.h"

namespace krx::runtime {

// Errands on threads of the system's pool. Whoever waits still paints: his windows are not seen to
// hang, and nothing else happens to them. Work that goes on alone keeps the module loaded.
class Win32Errands : public Errands {
 public:
  bool Run(std::function<void()> work, std::chrono::milliseconds patience) override;
};

}  // namespace krx::runtime
