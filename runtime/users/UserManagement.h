#pragma once

#include <mutex>
#include <optional>

#include "runtime/users/Session.h"
#include "runtime/users/passwords/RefusedPasswords.h"
#include "runtime/users/rules/UserRules.h"
#include "runtime/users/store/UserStore.h"

namespace krx::runtime {

// The user management of one folder: users and audit records (users.db), rules (users.conf) and
// refused passwords (refused-passwords.txt), and who is logged on to this process.
class UserManagement {
 public:
  UserManagement(const SystemServices& system, std::filesystem::path folder,
                 runtime::Session& session)
      : System(system), Session(session), Store(system, std::move(folder)) {}

  // A change of either file holds from the next operation on; without a file the defaults hold.
  // Raises Error for a malformed file.
  UserRules Rules();
  RefusedPasswords Refused();

  // The user logged on to this process; nothing when nobody is, or when he has been removed or
  // deactivated in the meantime. One of the directory service has no id here.
  std::optional<StoredUser> Actor(UserSource& users) const;

  // Adds an event on its own. Raises Error when that cannot be done.
  void Record(const AuditEntry& entry);
  // The same; a failure to do so is swallowed, because what is recorded here is a
  // failure already, and nobody is waited for long.
  void RecordFailure(const AuditEntry& entry) noexcept;

  const SystemServices System;
  runtime::Session& Session;
  UserStore Store;

 private:
  // The rules as they were read last: lists of users ask for them with each user.
  std::mutex rules_guard_;
  std::optional<UserRules> rules_;
  FileStamp rules_stamp_;
};

}  // namespace krx::runtime
