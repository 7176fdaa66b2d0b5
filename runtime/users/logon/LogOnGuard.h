#pragma once

#include "runtime/users/rules/UserRules.h"
#include "runtime/users/store/StoredUser.h"

namespace krx::runtime {

// Counts wrong passwords and delays or locks users out. An attempt is counted, and stored, before
// the password is looked at: however many panels guess at once, no more passwords are tried than
// the rules allow. After a hundred attempts in a row only an administrator ends the lock-out. An
// administrator is only ever delayed, by a quarter of an hour at most, while no other one can log
// on.
class LogOnGuard {
 public:
  // `now`: seconds since 1970.
  LogOnGuard(const UserRules& rules, UserSource& users, std::int64_t now)
      : rules_(rules), users_(users), now_(now) {}

  bool IsLockedOut(const StoredUser& user) const;

  // Counts one attempt of the user; false, and nothing counted, when he is locked out.
  bool Admit(StoredUser& user) const;

  // The password was right, or an administrator ends the lock-out.
  static void Forgive(StoredUser& user);

 private:
  // Whether so many seconds since the user's last attempt are not over yet.
  bool Waits(const StoredUser& user, std::int64_t delay) const;

  const UserRules& rules_;
  UserSource& users_;
  std::int64_t now_;
};

}  // namespace krx::runtime
