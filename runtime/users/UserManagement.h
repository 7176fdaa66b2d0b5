#pragma once

#include <map>
#include <mutex>
#include <optional>
#include <vector>

#include "runtime/users/RulesInForce.h"
#include "runtime/users/Session.h"
#include "runtime/users/passwords/PasswordHasher.h"
#include "runtime/users/passwords/RefusedPasswords.h"
#include "runtime/users/store/UserStore.h"

namespace krx::runtime {

// What waits in memory for a disk with room: log-ons, and what their attempts have come to.
struct LateRecords {
  std::mutex Guard;
  std::map<std::uint32_t, StoredUser> Attempts;
  std::vector<AuditEntry> Entries;
};

// Where the keys of passwords lie: in a folder beside that of the users, so that what is made of
// the one, such as a copy, does not take the other along.
std::filesystem::path KeyFile(const std::filesystem::path& folder);

// The user management of one folder: users and audit records (users.db), rules (users.conf) and
// refused passwords (refused-passwords.txt), and who is logged on to this process.
class UserManagement {
 public:
  UserManagement(const SystemServices& system, std::filesystem::path folder,
                 runtime::Session& session)
      : System(system),
        Session(session),
        Store(system, std::move(folder)),
        Keys(system.FileSystem, system.Crypto, system.Protection, KeyFile(Store.Folder())) {}

  // A change of either file holds from the next operation on, of the rules at the latest after
  // SystemServices::RulesLag; without a file the defaults hold.
  // While the rules are malformed the last good ones hold. Raises Error when there are none, and
  // for a malformed list of passwords.
  UserRules Rules() { return rules_.Get(); }
  // Why the rules are malformed, with file and line.
  std::optional<String> FaultOfRules() { return rules_.Fault(); }
  RefusedPasswords Refused();
  PasswordHasher Hasher(const UserRules& rules) { return {System.Crypto, Keys, rules}; }

  // The user logged on to this process; nothing when nobody is, or when he has been removed or
  // deactivated or his password has been reset in the meantime. One of the directory service has no
  // id here.
  std::optional<StoredUser> Actor(UserSource& users) const;

  // Begins the session of a user as he is stored now.
  void BeginSession(const StoredUser& user) {
    Session.Begin({user.Id, user.Name, {}, user.PasswordChangedOn, false, System.Time.Now()});
  }
  // Ends the session of a user for whom Actor has answered nothing, and records why.
  void EndLostSession();

  // Adds an event on its own. Raises Error when that cannot be done.
  void Record(const AuditEntry& entry);
  // The same; a failure to do so is swallowed, because what is recorded here is a
  // failure already, and nobody is waited for long.
  void RecordFailure(const AuditEntry& entry) noexcept;

  const SystemServices System;
  runtime::Session& Session;
  UserStore Store;
  PasswordKeys Keys;
  LateRecords Late;

 private:
  RulesInForce rules_{System, Store};
};

}  // namespace krx::runtime
