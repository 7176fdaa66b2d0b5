#pragma once

#include <vector>

#include "runtime/users/passwords/PasswordHasher.h"
#include "runtime/users/passwords/RefusedPasswords.h"
#include "runtime/users/rules/UserRules.h"

namespace krx::runtime {

enum class PasswordVerdict { Accepted, InvalidLength, NotAccepted };

// Judges a new password: length first, then whether it is the user name, a common one or one that
// the user had lately.
PasswordVerdict JudgePassword(const UserRules& rules, const RefusedPasswords& refused,
                              StringView user_name, const Password& password);

// Whether the password is one of the last ones that the rules forbid; `passwords` has the current
// one first. Costs one derivation for each.
bool IsReused(PasswordHasher& hasher, const UserRules& rules,
              const std::vector<PasswordHash>& passwords, const Password& password);

// The stored passwords after a change: the new one first, and as many old ones as the rules ask to
// remember.
std::vector<PasswordHash> WithNewPassword(const UserRules& rules,
                                          const std::vector<PasswordHash>& passwords,
                                          PasswordHash added);

}  // namespace krx::runtime
