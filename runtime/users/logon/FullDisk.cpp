#include "runtime/users/logon/FullDisk.h"

#include <utility>

#include "base/Utf8.h"
#include "host/UserManager.h"
#include "runtime/users/logon/LogOnGuard.h"
#include "runtime/users/logon/PasswordAge.h"

namespace krx::runtime {
namespace {

constexpr std::size_t kMostLate = 1'000;
constexpr std::chrono::milliseconds kPatienceForLate{50};

String Late(UserManagement& management, const String& outcome, StringView reason) {
  const std::string at = TimeStamp(management.System.Time.Now());
  return outcome + u" at " + FromUtf8(at).value_or(String()) + u", recorded late: " +
         String(reason);
}

void TakeAttempts(StoredUser& user, const StoredUser& attempted) {
  if (user.LastFailure > attempted.LastFailure) return;
  user.Failures = attempted.Failures;
  user.FailuresInARow = attempted.FailuresInARow;
  user.LastFailure = attempted.LastFailure;
}

std::int32_t CodeOfRefusal(CredentialOutcome outcome) {
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

}  // namespace

// The attempts of before count on, those in the store and those in memory.
Attempt FullDiskLogOn::Admit(const String& user) {
  UserStore::Reading reading(management_.Store);
  if (reading.Data() == nullptr) return {};
  std::optional<StoredUser> stored = UserTable(*reading.Data()).FindOrAny(user);
  if (!stored) return {};
  const auto known = late_.Attempts.find(stored->Id);
  if (known != late_.Attempts.end()) TakeAttempts(*stored, known->second);
  Attempt attempt = BeginAttempt(management_, rules_, reading, *stored, user);
  if (attempt.Counts) late_.Attempts[stored->Id] = attempt.Checked.User;
  return attempt;
}

std::int32_t FullDiskLogOn::LogOnUser(const String& user, const Password& password) {
  const std::lock_guard lock(late_.Guard);
  CheckedUser checked = FinishAttempt(management_, rules_, Admit(user), password);
  return Settle(checked);
}

std::int32_t FullDiskLogOn::Complete(CheckedUser checked) {
  const std::lock_guard lock(late_.Guard);
  return Settle(checked);
}

std::int32_t FullDiskLogOn::Settle(CheckedUser& checked) {
  StoredUser& user = checked.User;
  if (checked.Outcome != CredentialOutcome::Right) {
    Remember(checked.KnownName(), u"refused: " + Describe(checked));
    return CodeOfRefusal(checked.Outcome);
  }
  LogOnGuard::Forgive(user);
  user.LastFailure = management_.System.Time.Now();  // later than what is stored
  late_.Attempts[user.Id] = user;
  // Who has to renew his password cannot now, as it could not be stored.
  if (user.MustRenew) return host::LogOnRenewPassword;
  if (PasswordAge(rules_, user, management_.System.Time.Now()).IsExpired())
    return host::LogOnPasswordExpired;
  Remember(user.Name, u"logged on");
  management_.BeginSession(user);
  return host::LogOnSucceeded;
}

// Beyond the bound only who gets in is worth the memory.
void FullDiskLogOn::Remember(const String& actor, const String& outcome) {
  if (late_.Entries.size() >= kMostLate && outcome.starts_with(u"refused")) return;
  late_.Entries.push_back(
      {actor, u"log-on", u"", Late(management_, outcome, u"the disk was full")});
}

void RecordLate(UserManagement& management) noexcept {
  LateRecords& late = management.Late;
  const std::lock_guard lock(late.Guard);
  if (late.Entries.empty()) return;
  try {
    UserStore::Writing writing(management.Store, kPatienceForLate);
    if (!writing.HasStore()) return;
    for (const auto& [id, attempted] : late.Attempts) {
      std::optional<StoredUser> user = writing.Users().FindId(id);
      if (!user) continue;
      TakeAttempts(*user, attempted);
      writing.Users().UpdateAttempts(*user);
    }
    for (const AuditEntry& entry : late.Entries)
      writing.Record(entry);
    writing.Commit();
    late.Entries.clear();
    late.Attempts.clear();
  } catch (const std::exception&) {
  }
}

void RecordOrKeep(UserManagement& management, const AuditEntry& entry) noexcept {
  try {
    management.Record(entry);
  } catch (const Error& failure) {
    const std::lock_guard lock(management.Late.Guard);
    management.Late.Entries.push_back({entry.Actor, entry.Action, entry.Subject,
                                       Late(management, entry.Outcome, failure.Description())});
  }
}

}  // namespace krx::runtime
