#pragma once

#include "base/Password.h"
#include "runtime/users/UserManagement.h"
#include "runtime/users/logon/CredentialCheck.h"

namespace krx::runtime {

// Log-ons while the disk has no room for their records, where the rules allow them: the users are
// read, wrong passwords count in memory by the same rules, and what happens is kept there until
// there is room. Nothing else is possible meanwhile.
class FullDiskLogOn {
 public:
  FullDiskLogOn(UserManagement& management, const UserRules& rules)
      : management_(management), rules_(rules), late_(management.Late) {}

  // The result code of a log-on whose attempt did not find room.
  std::int32_t LogOnUser(const String& user, const Password& password);
  // The same for one whose attempt has been judged, and whose record did not.
  std::int32_t Complete(CheckedUser checked);

 private:
  Attempt Admit(const String& user);
  std::int32_t Settle(CheckedUser& checked);
  void Remember(const String& actor, const String& outcome);

  UserManagement& management_;
  const UserRules& rules_;
  LateRecords& late_;
};

// Records what could not be recorded in time, oldest first, where the disk takes it again.
void RecordLate(UserManagement& management) noexcept;

// Records what has happened already and cannot be refused; where that fails it waits in memory
// like what happens while the disk is full.
void RecordOrKeep(UserManagement& management, const AuditEntry& entry) noexcept;

}  // namespace krx::runtime
