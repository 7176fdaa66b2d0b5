#pragma once

#include "runtime/users/rules/UserRules.h"
#include "runtime/users/store/UserStore.h"

namespace krx::runtime {

// Counts wrong passwords and locks users out. An attempt is counted, and stored, before the
// password is looked at: however many panels guess at once, no more passwords are tried than the
// rules allow.
class LogOnGuard {
 public:
  // `now`: seconds since 1970.
  LogOnGuard(const UserRules& rules, const UserStore& store, std::int64_t now)
      : rules_(rules), store_(store), now_(now) {}

  bool IsLockedOut(const StoredUser& user) const;

  // Counts one attempt of the user; false, and nothing counted, when he is locked out.
  bool Admit(StoredUser& user) const;

  // The password was right, or an administrator ends the lock-out.
  static void Forgive(StoredUser& user);

 private:
  // When a lock-out of the user that has begun ends; nothing when only an administrator ends it.
  std::int64_t LockOutSeconds(const StoredUser& user) const;

  const UserRules& rules_;
  const UserStore& store_;
  std::int64_t now_;
};

// Whether there is an administrator other than `except` who can log on: active, and not locked out
// beyond what time heals.
bool HasOtherAdministrator(const UserRules& rules, const UserStore& store, std::uint32_t except);

}  // namespace krx::runtime
