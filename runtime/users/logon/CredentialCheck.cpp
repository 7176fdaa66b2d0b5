#include "runtime/users/logon/CredentialCheck.h"

#include <utility>

#include "runtime/users/logon/LogOnGuard.h"

namespace krx::runtime {
namespace {

// Counts the attempt. Something is written in any case, the same of everybody.
Attempt Admit(UserManagement& management, const UserRules& rules, StringView name) {
  Attempt attempt;
  UserStore::Writing writing(management.Store);
  if (!writing.HasStore()) return attempt;
  UserTable& users = writing.Users();
  const std::optional<StoredUser> stored = users.FindOrAny(name);
  if (stored) {
    attempt = BeginAttempt(management, rules, users, *stored, name);
    users.UpdateAttempts(attempt.Counts ? attempt.Checked.User : *stored);
  }
  writing.Commit();
  return attempt;
}

}  // namespace

Attempt BeginAttempt(UserManagement& management, const UserRules& rules, UserSource& users,
                     const StoredUser& stored, StringView name) {
  // No attempt counts that cannot be judged.
  management.Keys.Require(stored.CurrentPassword().KeyId);
  StoredUser user = stored;
  const bool admitted = LogOnGuard(rules, users, management.System.Time.Now()).Admit(user);
  Attempt attempt;
  attempt.Expected = stored.CurrentPassword();
  attempt.Counts = stored.Name == name && !stored.Deactivated;
  CheckedUser& checked = attempt.Checked;
  checked.User = attempt.Counts ? user : stored;
  checked.LastAttempt = checked.User.Failures >= rules.LockOutFailures;
  checked.Outcome = CredentialOutcome::WrongPassword;
  if (stored.Name != name)
    checked.Outcome = CredentialOutcome::UnknownUser;
  else if (stored.Deactivated)
    checked.Outcome = CredentialOutcome::Deactivated;
  else if (!admitted)
    checked.Outcome = CredentialOutcome::LockedOut;
  return attempt;
}

CheckedUser FinishAttempt(UserManagement& management, const UserRules& rules, Attempt attempt,
                          const Password& password) {
  PasswordHasher hasher = management.Hasher(rules);
  const PasswordHash expected = attempt.Expected ? *attempt.Expected : hasher.Decoy();
  const bool matches = hasher.MatchesTyped(password, expected);
  hasher.SpendWhatWasSaved(expected);
  if (matches && attempt.Checked.Outcome == CredentialOutcome::WrongPassword)
    attempt.Checked.Outcome = CredentialOutcome::Right;
  return std::move(attempt.Checked);
}

CheckedUser CheckCredentials(UserManagement& management, const UserRules& rules, StringView name,
                             const Password& password) {
  return FinishAttempt(management, rules, Admit(management, rules, name), password);
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
