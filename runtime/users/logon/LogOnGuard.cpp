#include "runtime/users/logon/LogOnGuard.h"

#include <algorithm>
#include <limits>

namespace krx::runtime {
namespace {

constexpr std::int64_t kForever = std::numeric_limits<std::int64_t>::max();
constexpr std::int64_t kDelayOfLastAdministrator = 15 * 60;  // seconds

}  // namespace

bool LogOnGuard::IsLockedOut(const StoredUser& user) const {
  if (user.Failures < rules_.LockOutFailures && user.FailuresInARow < kEndOfGuessing) return false;
  const std::int64_t length = LockOutSeconds(user);
  return length == kForever || now_ - user.LastFailure < length;
}

bool LogOnGuard::Admit(StoredUser& user) const {
  // A clock that was set back must not prolong a lock-out: it starts again from now at the most.
  user.LastFailure = std::min(user.LastFailure, now_);
  if (IsLockedOut(user)) return false;
  if (user.Failures >= rules_.LockOutFailures) user.Failures = 0;
  ++user.Failures;
  // Beyond the end it only matters that it is reached.
  user.FailuresInARow = std::min(user.FailuresInARow + 1, kEndOfGuessing);
  user.LastFailure = now_;
  return true;
}

void LogOnGuard::Forgive(StoredUser& user) {
  user.Failures = 0;
  user.FailuresInARow = 0;
  user.LastFailure = 0;
}

std::int64_t LogOnGuard::LockOutSeconds(const StoredUser& user) const {
  const bool has_end = rules_.LockOutMinutes > 0 && user.FailuresInARow < kEndOfGuessing;
  const std::int64_t length = has_end ? std::int64_t{60} * rules_.LockOutMinutes : kForever;
  if (length <= kDelayOfLastAdministrator) return length;
  const bool is_last =
      rules_.IsAdministratorClass(user.ClassName) && !users_.HasOtherAdministrator(rules_, user.Id);
  return is_last ? kDelayOfLastAdministrator : length;
}

}  // namespace krx::runtime
