#include "runtime/users/logon/CredentialCheck.h"

#include <utility>

#include "runtime/users/logon/LogOnGuard.h"

namespace krx::runtime {
namespace {

// Counts the attempt. Something is written in any case, so that known and unknown users cost the
// same.
CheckedUser Admit(UserManagement& management, const UserRules& rules, StringView name) {
  CheckedUser checked;
  UserStore::Writing writing(management.Store);
  if (!writing.HasStore()) return checked;
  if (std::optional<StoredUser> found = writing.Users().Find(name)) {
    StoredUser& user = *found;
    // No attempt counts that cannot be judged.
    management.Keys.Require(user.CurrentPassword().KeyId);
    checked.Outcome = CredentialOutcome::WrongPassword;
    if (user.Deactivated) {
      checked.Outcome = CredentialOutcome::Deactivated;
    } else if (!LogOnGuard(rules, writing.Users(), management.System.Time.Now()).Admit(user)) {
      checked.Outcome = CredentialOutcome::LockedOut;
    }
    checked.LastAttempt = user.Failures >= rules.LockOutFailures;
    writing.Users().UpdateAttempts(user);
    checked.User = std::move(user);
  } else {
    writing.Users().CountUnknownAttempt();
  }
  writing.Commit();
  return checked;
}

}  // namespace

CheckedUser CheckCredentials(UserManagement& management, const UserRules& rules, StringView name,
                             const Password& password) {
  CheckedUser checked = Admit(management, rules, name);
  // No work for who is locked out: his attempts are over, and a flood of them stays cheap.
  if (checked.Outcome == CredentialOutcome::LockedOut) return checked;
  PasswordHasher hasher = management.Hasher(rules);
  const PasswordHash expected =
      checked.User.Passwords.empty() ? hasher.Decoy() : checked.User.CurrentPassword();
  const bool matches = hasher.MatchesTyped(password, expected);
  if (matches && checked.Outcome == CredentialOutcome::WrongPassword)
    checked.Outcome = CredentialOutcome::Right;
  return checked;
}

std::optional<StoredUser> FindUnchanged(UserTable& users, const CheckedUser& checked) {
  std::optional<StoredUser> user = users.FindId(checked.User.Id);
  if (!user || user->Deactivated || user->CurrentPassword() != checked.User.CurrentPassword())
    return std::nullopt;
  return user;
}

String Describe(const CheckedUser& checked) {
  switch (checked.Outcome) {
    case CredentialOutcome::UnknownUser:
      return u"unknown user";
    case CredentialOutcome::Deactivated:
      return u"user is deactivated";
    case CredentialOutcome::LockedOut:
      return u"user is locked out";
    case CredentialOutcome::WrongPassword:
      return checked.LastAttempt ? u"wrong password, user is now locked out" : u"wrong password";
    case CredentialOutcome::Right:
      break;
  }
  return u"password right";
}

}  // namespace krx::runtime
