#pragma once

#include "ports/win32/System.h"

namespace krx::win32 {

// The system's controls in the version that the manifest of this module names, whatever the host
// has chosen for its own windows. A module without a manifest takes what the host has.
class CommonControls {
 public:
  CommonControls();
  ~CommonControls();
  CommonControls(const CommonControls&) = delete;
  CommonControls& operator=(const CommonControls&) = delete;

  // While it lives, windows that the thread creates are made of these controls.
  class Scope {
   public:
    explicit Scope(const CommonControls& controls);
    ~Scope();
    Scope(const Scope&) = delete;
    Scope& operator=(const Scope&) = delete;

   private:
    ULONG_PTR cookie_ = 0;
    const bool active_;
  };

 private:
  HANDLE context_;
};

}  // namespace krx::win32
