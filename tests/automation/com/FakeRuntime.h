#pragma once

#include <ole2.h>

#include <functional>

#include "KorvelRuntime.h"

namespace krx::tests {

// Text and font services of the test's own, found by their class identifiers on this thread as
// long as this lives. Every operation asks Fail first.
class FakeRuntime {
 public:
  // Answers the status with which an operation ("GetText") fails; may leave an error object.
  using Failing = std::function<HRESULT(const char* operation)>;

  explicit FakeRuntime(Failing fail);
  ~FakeRuntime();
  FakeRuntime(const FakeRuntime&) = delete;
  FakeRuntime& operator=(const FakeRuntime&) = delete;

 private:
  DWORD texts_ = 0;
  DWORD fonts_ = 0;
};

}  // namespace krx::tests
