#pragma once

#include "runtime/users/AuditLog.h"
#include "runtime/users/Session.h"
#include "runtime/users/passwords/RefusedPasswords.h"
#include "runtime/users/rules/UserRules.h"
#include "runtime/users/store/StoreFile.h"
#include "runtime/users/system/Clock.h"
#include "runtime/users/system/Cryptography.h"
#include "runtime/users/system/Files.h"

namespace krx::runtime {

// What the user management needs of the machine.
struct SystemServices {
  Files& FileSystem;
  Cryptography& Crypto;
  Clock& Time;
};

// The user management of one folder: store (users.dat), rules (users.conf), refused passwords
// (refused-passwords.txt) and audit file (audit.log), and who is logged on to this process.
class UserManagement {
 public:
  UserManagement(const SystemServices& system, std::filesystem::path folder,
                 runtime::Session& session)
      : System(system),
        Session(session),
        Store(system.FileSystem, std::move(folder)),
        Audit(system.FileSystem, system.Time, Store.Folder()) {}

  // Both files are read anew each time, so a change holds from the next operation on; without a
  // file the defaults hold. Raises Error for a malformed file.
  UserRules Rules();
  RefusedPasswords Refused();

  // The record of the user logged on to this process; null when nobody is, or when he has been
  // removed or deactivated in the meantime. `users` may be null: no store.
  const StoredUser* Actor(const UserStore* users) const;

  // Adds an event on its own, with the store held; a failure to do so is swallowed, because what
  // is recorded here is a failure already.
  void RecordFailure(const AuditEntry& entry) noexcept;

  const SystemServices System;
  runtime::Session& Session;
  StoreFile Store;
  AuditLog Audit;
};

}  // namespace krx::runtime
