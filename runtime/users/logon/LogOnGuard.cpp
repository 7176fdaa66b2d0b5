#include "runtime/users/logon/LogOnGuard.h"

#include <algorithm>

#include "runtime/users/rules/GuessingDelay.h"

namespace krx::runtime {
namespace {

constexpr std::int64_t kDelayOfLastAdministrator = std::int64_t{15} * 60;  // seconds

}  // namespace

bool LogOnGuard::IsLockedOut(const StoredUser& user) const {
  const std::int64_t delay = DelayAfter(rules_, user.Failures, user.FailuresInARow);
  if (delay <= kDelayOfLastAdministrator) return Waits(user, delay);
  const bool is_last = rules_.IsAdministratorClass(user.ClassName) &&
                       !users_.HasOtherAdministrator(rules_, user.Id, now_);
  return Waits(user, is_last ? kDelayOfLastAdministrator : delay);
}

bool LogOnGuard::Waits(const StoredUser& user, std::int64_t delay) const {
  // A time ahead of the clock begins now.
  return delay == kForever || now_ - std::min(user.LastFailure, now_) < delay;
}

bool LogOnGuard::Admit(StoredUser& user) const {
  // A clock that was set back must not prolong a lock-out: it starts again from now at the most.
  user.LastFailure = std::min(user.LastFailure, now_);
  // Looked up in any case, so that the work does not tell who is locked out.
  const bool has_other = users_.HasOtherAdministrator(rules_, user.Id, now_);
  const bool is_last = rules_.IsAdministratorClass(user.ClassName) && !has_other;
  const std::int64_t delay = DelayAfter(rules_, user.Failures, user.FailuresInARow);
  if (Waits(user, is_last ? std::min(delay, kDelayOfLastAdministrator) : delay)) return false;
  if (user.Failures >= rules_.LockOutFailures) user.Failures = 0;
  ++user.Failures;
  // Beyond the end it only matters that it is reached.
  user.FailuresInARow = std::min(user.FailuresInARow, kEndOfGuessing - 1) + 1;
  user.LastFailure = now_;
  return true;
}

void LogOnGuard::Forgive(StoredUser& user) {
  user.Failures = 0;
  user.FailuresInARow = 0;
  user.LastFailure = 0;
}

}  // namespace krx::runtime
