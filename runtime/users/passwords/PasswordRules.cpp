#include "runtime/users/passwords/PasswordRules.h"

#include <algorithm>
#include <utility>

#include "runtime/users/passwords/CommonPasswords.h"
#include "runtime/users/rules/Names.h"

namespace krx::runtime {
namespace {

std::size_t Remembered(const UserRules& rules, std::size_t available) {
  return std::min(static_cast<std::size_t>(rules.PasswordHistory), available);
}

}  // namespace

PasswordVerdict JudgePassword(const UserRules& rules, const RefusedPasswords& refused,
                              StringView user_name, const Password& password) {
  const std::size_t length = CountCodePoints(password.View());
  if (length < static_cast<std::size_t>(rules.MinimumLength) ||
      length > static_cast<std::size_t>(rules.MaximumLength)) {
    return PasswordVerdict::InvalidLength;
  }
  const bool is_common = rules.RefuseCommonPasswords != 0 && IsCommonPassword(password);
  if (is_common || EqualIgnoringCase(password.View(), user_name) || refused.Contains(password))
    return PasswordVerdict::NotAccepted;
  return PasswordVerdict::Accepted;
}

bool IsReused(PasswordHasher& hasher, const UserRules& rules,
              const std::vector<PasswordHash>& passwords, const Password& password) {
  const auto end =
      passwords.begin() + static_cast<std::ptrdiff_t>(Remembered(rules, passwords.size()));
  return std::any_of(passwords.begin(), end,
                     [&](const PasswordHash& hash) { return hasher.Matches(password, hash); });
}

std::vector<PasswordHash> WithNewPassword(const UserRules& rules,
                                          const std::vector<PasswordHash>& passwords,
                                          PasswordHash added) {
  std::vector<PasswordHash> changed;
  changed.push_back(std::move(added));
  changed.insert(changed.end(), passwords.begin(), passwords.end());
  changed.resize(std::max<std::size_t>(1, Remembered(rules, changed.size())));
  return changed;
}

}  // namespace krx::runtime
