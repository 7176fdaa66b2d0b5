#pragma once

#include "base/Password.h"
#include "runtime/users/UserManagement.h"

namespace krx::runtime {

enum class CredentialOutcome { UnknownUser, Deactivated, LockedOut, WrongPassword, Right };

struct CheckedUser {
  CredentialOutcome Outcome = CredentialOutcome::UnknownUser;
  StoredUser User;           // as he was when the attempt was counted; empty when unknown
  bool LastAttempt = false;  // if the password was wrong, the user is locked out from now on
};

// Checks a name and a password, for log-on and for a change of password alike. The attempt counts
// as failed from the start; who finds the password right has to forgive it. The password is hashed
// without holding the store, and just as long when there is no such user. Raises Error when the
// attempt cannot be counted: guessing must not be free because a disk is full.
CheckedUser CheckCredentials(UserManagement& management, const UserRules& rules, StringView name,
                             const Password& password);

// The record to complete an operation on after the password was found right; nothing when the user
// or his password has changed since.
std::optional<StoredUser> FindUnchanged(UserTable& users, const CheckedUser& checked);

// Why an attempt was refused, for the audit records.
String Describe(const CheckedUser& checked);

}  // namespace krx::runtime
