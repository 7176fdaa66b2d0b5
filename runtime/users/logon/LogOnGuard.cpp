#include "runtime/users/logon/LogOnGuard.h"

#include <algorithm>
#include <limits>

namespace krx::runtime {
namespace {

constexpr std::int64_t kForever = std::numeric_limits<std::int64_t>::max();
constexpr std::int64_t kDelayOfLastAdministrator = 15 * 60;  // seconds

}  // namespace

bool LogOnGuard::IsLockedOut(const StoredUser& user) const {
  if (user.Failures < rules_.LockOutFailures) return false;
  const std::int64_t length = LockOutSeconds(user);
  return length == kForever || now_ - user.LastFailure < length;
}

bool LogOnGuard::Admit(StoredUser& user) const {
  // A clock that was set back must not prolong a lock-out: it starts again from now at the most.
  user.LastFailure = std::min(user.LastFailure, now_);
  if (IsLockedOut(user)) return false;
  if (user.Failures >= rules_.LockOutFailures) user.Failures = 0;
  ++user.Failures;
  user.LastFailure = now_;
  return true;
}

void LogOnGuard::Forgive(StoredUser& user) {
  user.Failures = 0;
  user.LastFailure = 0;
}

std::int64_t LogOnGuard::LockOutSeconds(const StoredUser& user) const {
  if (rules_.LockOutMinutes > 0) return std::int64_t{60} * rules_.LockOutMinutes;
  const bool is_last = rules_.IsAdministratorClass(user.ClassName) &&
                       !HasOtherAdministrator(rules_, store_, user.Id);
  return is_last ? kDelayOfLastAdministrator : kForever;
}

bool HasOtherAdministrator(const UserRules& rules, const UserStore& store, std::uint32_t except) {
  return std::any_of(store.Users().begin(), store.Users().end(), [&](const StoredUser& user) {
    const bool stays_locked = rules.LockOutMinutes == 0 && user.Failures >= rules.LockOutFailures;
    return user.Id != except && rules.IsAdministratorClass(user.ClassName) && !user.Deactivated &&
           !stays_locked;
  });
}

}  // namespace krx::runtime
