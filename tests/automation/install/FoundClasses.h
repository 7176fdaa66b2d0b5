#pragma once

#include <string>
#include <vector>

#include "install/Installer.h"

namespace krx::install {

// While it lives, programs find what a package has registered for its scope. Where the platform's
// root of all classes shows none of the user's, they are shown among those of the machine.
class FoundClasses {
 public:
  explicit FoundClasses(Scope scope);
  ~FoundClasses();
  FoundClasses(const FoundClasses&) = delete;
  FoundClasses& operator=(const FoundClasses&) = delete;

 private:
  void Show(const std::wstring& folder);

  std::vector<std::wstring> shown_;
};

}  // namespace krx::install
