#pragma once

#include "base/String.h"

namespace krx::runtime {

// A text shown beside whatever the operator works with, which it leaves alone: it takes neither
// the keyboard nor an answer. It goes when it is touched.
class Notice {
 public:
  virtual ~Notice() = default;
  // Shows this text, in place of the one before.
  virtual void Show(const String& text) = 0;
  virtual void Hide() = 0;
  // Whether the operator has touched the text that was shown last.
  virtual bool IsTouched() const = 0;
};

}  // namespace krx::runtime
