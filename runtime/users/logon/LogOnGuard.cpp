#include "runtime/users/logon/LogOnGuard.h"

#include <algorithm>

#include "runtime/users/rules/GuessingDelay.h"

namespace krx::runtime {
namespace {

constexpr std::int64_t kDelayOfLastAdministrator = std::int64_t{15} * 60;  // seconds

}  // namespace

bool LogOnGuard::IsLockedOut(const StoredUser& user) const {
  const std::int64_t delay = Delay(user);
  // A time ahead of the clock begins now.
  return delay == kForever || now_ - std::min(user.LastFailure, now_) < delay;
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

std::int64_t LogOnGuard::Delay(const StoredUser& user) const {
  const std::int64_t delay = DelayAfter(rules_, user.Failures, user.FailuresInARow);
  if (delay <= kDelayOfLastAdministrator) return delay;
  const bool is_last = rules_.IsAdministratorClass(user.ClassName) &&
                       !users_.HasOtherAdministrator(rules_, user.Id, now_);
  return is_last ? kDelayOfLastAdministrator : delay;
}

}  // namespace krx::runtime
