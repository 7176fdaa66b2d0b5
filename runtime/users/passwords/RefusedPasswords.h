#pragma once

#include <string_view>
#include <vector>

#include "base/Password.h"
#include "base/String.h"
#include "runtime/users/system/Cryptography.h"

namespace krx::runtime {

// The passwords that a plant refuses besides the common ones, from a text file: one per line, "#"
// at the start of a line for comments. Case makes no difference.
class RefusedPasswords {
 public:
  RefusedPasswords() = default;
  // Adds the lines of a file, with cryptography in the normal form of passwords; bytes that are no
  // text raise Error with file, line and reason.
  RefusedPasswords(const String& file, std::string_view bytes,
                   Cryptography* cryptography = nullptr);

  bool Contains(const Password& password) const;

 private:
  std::vector<String> added_;
};

}  // namespace krx::runtime
