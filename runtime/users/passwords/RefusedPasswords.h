#pragma once

#include <string_view>
#include <vector>

#include "base/Password.h"
#include "base/String.h"

namespace krx::runtime {

// The passwords that a plant refuses besides the common ones, from a text file: one per line, "#"
// at the start of a line for comments. Case makes no difference.
class RefusedPasswords {
 public:
  RefusedPasswords() = default;
  // Adds the lines of a file; bytes that are no text raise Error with file, line and reason.
  RefusedPasswords(const String& file, std::string_view bytes);

  bool Contains(const Password& password) const;

 private:
  std::vector<String> added_;
};

}  // namespace krx::runtime
