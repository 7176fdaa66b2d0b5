#include "runtime/users/logon/PasswordChange.h"

#include <utility>

#include "host/UserManager.h"
#include "runtime/users/Refusal.h"
#include "runtime/users/logon/LogOnGuard.h"
#include "runtime/users/logon/PasswordAge.h"
#include "runtime/users/passwords/PasswordRules.h"

namespace krx::runtime {
namespace {

std::int32_t CodeOf(CredentialOutcome outcome) {
  switch (outcome) {
    case CredentialOutcome::UnknownUser:
      return host::ChangePasswordUnknownUser;
    case CredentialOutcome::WrongPassword:
      return host::ChangePasswordInvalidPassword;
    default:
      return host::ChangePasswordNotAccepted;
  }
}

// One change, from the current password to the stored new one.
class Change {
 public:
  Change(UserManagement& management, const Password& new_password)
      : management_(management),
        rules_(management.Rules()),
        new_password_(management.System.Crypto.Normalized(new_password)) {}

  std::int32_t Run(CheckedUser checked) {
    checked_ = std::move(checked);
    if (checked_.Outcome != CredentialOutcome::Right)
      throw Refusal{CodeOf(checked_.Outcome), Describe(checked_)};
    Judge(LatePasswords());
    Store(management_.Hasher(rules_).Hash(new_password_));
    return host::ChangePasswordSucceeded;
  }

  const UserRules& Rules() const { return rules_; }

 private:
  // A check of credentials knows the current one alone.
  std::vector<PasswordHash> LatePasswords() {
    UserStore::Writing writing(management_.Store);
    return FindStill(writing).Passwords;
  }

  void Judge(const std::vector<PasswordHash>& late) {
    if (PasswordAge(rules_, checked_.User, management_.System.Time.Now()).IsTooYoung())
      Refuse(host::ChangePasswordNotAccepted, u"password was changed too lately");
    const PasswordVerdict verdict =
        JudgePassword(rules_, management_.Refused(), checked_.User.Name, new_password_);
    if (verdict == PasswordVerdict::InvalidLength)
      Refuse(host::ChangePasswordInvalidLength, u"length of the new password");
    if (verdict == PasswordVerdict::NotAccepted)
      Refuse(host::ChangePasswordNotAccepted, u"new password is too easily guessed");
    PasswordHasher hasher = management_.Hasher(rules_);
    if (IsReused(hasher, rules_, late, new_password_))
      Refuse(host::ChangePasswordNotAccepted, u"new password was used lately");
  }

  // The current password was right: this was no failed attempt, whatever the new one is like.
  [[noreturn]] void Refuse(std::int32_t code, const String& reason) {
    ForgiveAttempt();
    throw Refusal{code, reason};
  }

  void ForgiveAttempt() {
    UserStore::Writing writing(management_.Store);
    StoredUser user = FindStill(writing);
    LogOnGuard::Forgive(user);
    writing.Users().Update(user, false);
    writing.Commit();
  }

  void Store(PasswordHash hash) {
    UserStore::Writing writing(management_.Store);
    StoredUser user = FindStill(writing);
    LogOnGuard::Forgive(user);
    user.Passwords = WithNewPassword(rules_, user.Passwords, std::move(hash));
    management_.Hasher(rules_).ApplyKey(user.Passwords);
    user.MustRenew = false;
    user.PasswordChangedOn = management_.System.Time.Now();
    user.RemainingLogOns = kUnlimitedLogOns;
    writing.Users().Update(user, true);
    writing.Record({user.Name, u"change password", u"", u"changed"});
    writing.Commit();
    management_.Session.Renew(user.Id, user.PasswordChangedOn, false);
    management_.Session.Prove(user.Id, user.PasswordChangedOn);
  }

  StoredUser FindStill(UserStore::Writing& writing) {
    std::optional<StoredUser> user;
    if (writing.HasStore()) user = FindUnchanged(writing.Users(), checked_);
    if (!user) throw Refusal{host::ChangePasswordInvalidPassword, u"user was changed meanwhile"};
    return std::move(*user);
  }

  UserManagement& management_;
  UserRules rules_;
  const Password new_password_;
  CheckedUser checked_;
};

}  // namespace

std::int32_t ChangePassword(UserManagement& management, const String& user,
                            const Password& new_password, const Password& current_password) {
  AuditEntry entry{u"", u"change password", u"", u""};
  return Recorded(
      management, {host::ChangePasswordUnableToSave, host::ChangePasswordCallFailed}, entry, [&] {
        Change change(management, new_password);
        CheckedUser checked = CheckCredentials(management, change.Rules(), user, current_password);
        entry.Actor = checked.KnownName();
        return change.Run(std::move(checked));
      });
}

}  // namespace krx::runtime
