#pragma once

#include <optional>

#include "base/Password.h"
#include "runtime/users/UserManagement.h"

namespace krx::runtime {

enum class CredentialOutcome { UnknownUser, Deactivated, LockedOut, WrongPassword, Right };

struct CheckedUser {
  CredentialOutcome Outcome = CredentialOutcome::UnknownUser;
  // As he was when the attempt was counted, with his current password alone. Any user when this one
  // is unknown, since making him up would take another time.
  StoredUser User;
  bool LastAttempt = false;  // if the password was wrong, the user is locked out from now on

  // For the records: a name that nobody has may be a password typed into the wrong field.
  String KnownName() const {
    return Outcome == CredentialOutcome::UnknownUser ? String() : User.Name;
  }
};

// Checks a name and a password, for log-on and for a change of password alike. The attempt counts
// as failed from the start; who finds the password right has to forgive it. The password is hashed
// without holding the store. Whether the user is unknown, deactivated or locked out or his password
// wrong: the same is read, hashed and written, so that the time tells nothing. Raises Error when
// the attempt cannot be counted: guessing must not be free because a disk is full.
CheckedUser CheckCredentials(UserManagement& management, const UserRules& rules, StringView name,
                             const Password& password);

// One attempt between its count and the look at its password.
struct Attempt {
  CheckedUser Checked;
  bool Counts = false;                   // Checked.User is to be stored
  std::optional<PasswordHash> Expected;  // of any user where there is no such one
};

// The two halves of a check for who stores attempts himself. `stored` is what UserTable::FindOrAny
// has for the name.
Attempt BeginAttempt(UserManagement& management, const UserRules& rules, UserSource& users,
                     const StoredUser& stored, StringView name);
CheckedUser FinishAttempt(UserManagement& management, const UserRules& rules, Attempt attempt,
                          const Password& password);

// The record to complete an operation on after the password was found right; nothing when the user
// or his password has changed since.
std::optional<StoredUser> FindUnchanged(UserTable& users, const CheckedUser& checked);

// Why an attempt was refused, for the audit records.
String Describe(const CheckedUser& checked);

}  // namespace krx::runtime
