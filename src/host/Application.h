#pragma once

#include "base/String.h"

namespace krx::host {

// The application that the dialogs belong to, by its program name.
class Application {
 public:
  virtual ~Application() = default;
  virtual String EXEName() = 0;
};

}  // namespace krx::host
