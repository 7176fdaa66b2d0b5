#include "runtime/users/logon/LogOnService.h"

#include <utility>

#include "runtime/users/logon/FullDisk.h"
#include "runtime/users/logon/LogOnGuard.h"
#include "runtime/users/logon/PasswordAge.h"
#include "runtime/users/store/AuditArchive.h"

namespace krx::runtime {
namespace {

std::int32_t ResultOf(CredentialOutcome outcome) {
  switch (outcome) {
    case CredentialOutcome::UnknownUser:
      return host::LogOnUnknownUser;
    case CredentialOutcome::Deactivated:
      return host::LogOnUserDeactivated;
    case CredentialOutcome::LockedOut:
      return host::LogOnTooManyFailedLogons;
    default:
      return host::LogOnInvalidPassword;
  }
}

String OutcomeText(const CheckedUser& checked, std::int32_t result) {
  if (checked.Outcome != CredentialOutcome::Right) return u"refused: " + Describe(checked);
  switch (result) {
    case host::LogOnSucceeded:
      return u"logged on";
    case host::LogOnPasswordExpired:
      return u"refused: password has expired";
    case host::LogOnRenewPassword:
      return u"refused: password must be renewed";
    default:
      return u"refused: user was changed meanwhile";
  }
}

// A hash of the same password that is as slow, and has the key, as the rules want it now.
std::optional<PasswordHash> Strengthened(UserManagement& management, const UserRules& rules,
                                         const CheckedUser& checked, const Password& password) {
  PasswordHasher hasher = management.Hasher(rules);
  if (checked.Outcome != CredentialOutcome::Right ||
      !hasher.IsOutdated(checked.User.CurrentPassword())) {
    return std::nullopt;
  }
  return hasher.Hash(management.System.Crypto.Normalized(password));
}

}  // namespace

std::int32_t LogOnService::LogOnUser(const String& user, const Password& password) {
  RecordLate(management_);
  std::optional<CheckedUser> checked;
  try {
    const UserRules rules = management_.Rules();
    try {
      checked = CheckCredentials(management_, rules, user, password);
      const std::int32_t result = JudgeAndRecord(rules, *checked, password);
      KeepAuditInBounds(management_.Store, management_.System, rules);
      return result;
    } catch (const DiskFull&) {
      if (!rules.LogOnWithFullDisk) throw;
      FullDiskLogOn late(management_, rules);
      return checked ? late.Complete(*checked) : late.LogOnUser(user, password);
    }
  } catch (const Error& failure) {
    management_.RecordFailure({checked ? checked->KnownName() : String(), u"log-on", u"",
                               u"failed: " + failure.Description()});
    throw;
  }
}

std::int32_t LogOnService::JudgeAndRecord(const UserRules& rules, const CheckedUser& checked,
                                          const Password& password) {
  std::optional<PasswordHash> rehashed = Strengthened(management_, rules, checked, password);

  UserStore::Writing writing(management_.Store);
  if (!writing.HasStore()) return host::LogOnUnknownUser;
  const std::int32_t result = checked.Outcome == CredentialOutcome::Right
                                  ? Settle(writing, rules, checked, std::move(rehashed))
                                  : ResultOf(checked.Outcome);
  if (result == host::LogOnSucceeded) RecordReplaced(writing, checked.User.Name);
  writing.Record({checked.KnownName(), u"log-on", u"", OutcomeText(checked, result)});
  writing.Commit();
  if (result == host::LogOnSucceeded) management_.BeginSession(checked.User);
  return result;
}

void LogOnService::RecordReplaced(UserStore::Writing& writing, const String& name) {
  if (const std::optional<LoggedOnUser> before = management_.Session.Current())
    writing.Record({before->Name, u"log-off", u"", u"replaced by the log-on of " + name});
}

std::int32_t LogOnService::Settle(UserStore::Writing& writing, const UserRules& rules,
                                  const CheckedUser& checked,
                                  std::optional<PasswordHash> rehashed) {
  std::optional<StoredUser> user = FindUnchanged(writing.Users(), checked);
  if (!user) return host::LogOnInvalidPassword;
  LogOnGuard::Forgive(*user);
  const bool strengthens = rehashed.has_value();
  if (strengthens) {
    user->Passwords.front() = std::move(*rehashed);
    management_.Hasher(rules).ApplyKey(user->Passwords);
  }

  const PasswordAge age(rules, *user, management_.System.Time.Now());
  std::int32_t result = host::LogOnSucceeded;
  if (user->MustRenew) {
    result = host::LogOnRenewPassword;
  } else if (age.IsExpired()) {
    result = host::LogOnPasswordExpired;
  } else if (age.LogOnsLeft() != kUnlimitedLogOns) {
    user->RemainingLogOns = age.LogOnsLeft() - 1;
  }
  writing.Users().Update(*user, strengthens);
  return result;
}

std::int32_t LogOnService::LogOffUser() {
  const std::optional<LoggedOnUser> user = management_.Session.End();
  if (!user) return 1;
  UserStore::Writing writing(management_.Store);
  if (!writing.HasStore()) return 0;
  writing.Record({user->Name, u"log-off", u"", u"logged off"});
  writing.Commit();
  return 0;
}

}  // namespace krx::runtime
