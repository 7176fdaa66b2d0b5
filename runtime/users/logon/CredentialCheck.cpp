#include "runtime/users/logon/CredentialCheck.h"

#include "runtime/users/logon/LogOnGuard.h"

namespace krx::runtime {
namespace {

// Counts the attempt. The store is written in any case, so that known and unknown users cost the
// same.
CheckedUser Admit(UserManagement& management, const UserRules& rules, StringView name) {
  CheckedUser checked;
  StoreFile::Hold hold(management.Store);
  const std::shared_ptr<const UserStore> users = hold.Read();
  if (users == nullptr) return checked;
  UserStore changed = *users;
  if (const StoredUser* const found = users->Find(name)) {
    StoredUser& user = *changed.FindId(found->Id);
    checked.Outcome = CredentialOutcome::WrongPassword;
    if (user.Deactivated) {
      checked.Outcome = CredentialOutcome::Deactivated;
    } else if (!LogOnGuard(rules, *users, management.System.Time.Now()).Admit(user)) {
      checked.Outcome = CredentialOutcome::LockedOut;
    }
    checked.LastAttempt = user.Failures >= rules.LockOutFailures;
    checked.User = user;
  }
  hold.Save(changed);
  return checked;
}

}  // namespace

CheckedUser CheckCredentials(UserManagement& management, const UserRules& rules, StringView name,
                             const Password& password) {
  CheckedUser checked = Admit(management, rules, name);
  // No work for who is locked out: his attempts are over, and a flood of them stays cheap.
  if (checked.Outcome == CredentialOutcome::LockedOut) return checked;
  const PasswordHash expected = checked.User.Passwords.empty()
                                    ? DecoyHash(static_cast<std::uint32_t>(rules.HashIterations))
                                    : checked.User.CurrentPassword();
  const bool matches = Matches(management.System.Crypto, password, expected);
  if (matches && checked.Outcome == CredentialOutcome::WrongPassword)
    checked.Outcome = CredentialOutcome::Right;
  return checked;
}

StoredUser* FindUnchanged(UserStore& users, const CheckedUser& checked) {
  StoredUser* const user = users.FindId(checked.User.Id);
  if (user == nullptr || user->Deactivated) return nullptr;
  return user->CurrentPassword() == checked.User.CurrentPassword() ? user : nullptr;
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
