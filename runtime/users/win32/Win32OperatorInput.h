#pragma once

#include "runtime/users/system/OperatorInput.h"

namespace krx::runtime {

// Input as the system has seen it in the session of the desktop. Where it does not tell, there has
// been none.
class Win32OperatorInput : public OperatorInput {
 public:
  std::chrono::milliseconds Now() override;
  std::chrono::milliseconds Last() override;
};

}  // namespace krx::runtime
