#pragma once

#include <string_view>

#include "base/Password.h"

namespace krx::runtime {

// The passwords that head the lists of leaked ones: ASCII with small letters, sorted by their
// bytes, each with a line end. Taken from a package when the runtime is built.
std::string_view CommonPasswords();

// Whether the password is one that anybody guesses first; case makes no difference.
bool IsCommonPassword(const Password& password);

}  // namespace krx::runtime
