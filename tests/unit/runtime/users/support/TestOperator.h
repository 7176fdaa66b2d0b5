#pragma once

#include <string>
#include <utility>
#include <vector>

#include "base/Utf8.h"
#include "runtime/users/system/Notice.h"
#include "runtime/users/system/OperatorInput.h"

namespace krx::test {

// An operator whose time passes when the test says so.
class TestOperator : public runtime::OperatorInput {
 public:
  std::chrono::milliseconds Now() override { return now_; }
  std::chrono::milliseconds Last() override { return last_; }

  void Wait(std::chrono::milliseconds time) { now_ += time; }
  void Press() { last_ = now_; }

 private:
  std::chrono::milliseconds now_{5'000};
  std::chrono::milliseconds last_{0};
};

// What is shown, or nothing, and all that has been shown.
class TestNotice : public runtime::Notice {
 public:
  void Show(const String& text) override {
    if (Shown != ToUtf8(text)) IsTouchedNow = false;
    Shown = ToUtf8(text);
    ++Times;
  }
  void Hide() override { Shown.clear(); }
  bool IsTouched() const override { return IsTouchedNow; }

  std::string Shown;
  int Times = 0;
  bool IsTouchedNow = false;
};

}  // namespace krx::test
