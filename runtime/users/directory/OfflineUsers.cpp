#include "runtime/users/directory/OfflineUsers.h"

#include <algorithm>
#include <utility>

namespace krx::runtime {
namespace {

constexpr std::int64_t kDay = 86'400;  // seconds
constexpr std::int64_t kMinute = 60;   // seconds

}  // namespace

void OfflineUsers::Remember(const UserRules& rules, const DirectoryUser& user,
                            const Password& password) {
  OfflineRecord record;
  record.User = user;
  record.Hash =
      HashPassword(cryptography_, password, static_cast<std::uint32_t>(rules.HashIterations));
  record.ConfirmedAt = clock_.Now();
  const std::unique_ptr<OfflineStore::Hold> hold = store_.Open();
  hold->Put(record);
  hold->Commit();
}

void OfflineUsers::Forget(StringView name) {
  const std::unique_ptr<OfflineStore::Hold> hold = store_.Open();
  if (!hold->Find(name)) return;
  hold->Remove(name);
  hold->Commit();
}

bool OfflineUsers::IsValid(const UserRules& rules, const OfflineRecord& record) {
  const std::int64_t age = clock_.Now() - record.ConfirmedAt;
  return age < kDay * rules.Directory.OfflineDays &&
         rules.FindClass(record.User.ClassName) != nullptr;
}

bool OfflineUsers::Admit(const UserRules& rules, OfflineRecord& record) {
  const std::int64_t now = clock_.Now();
  record.LastFailure = std::min(record.LastFailure, now);  // a clock that was set back
  if (record.Failures >= rules.LockOutFailures) {
    const std::int64_t length = kMinute * rules.LockOutMinutes;
    // Without an end of its own a lock-out ends when a server answers again.
    if (length == 0 || now - record.LastFailure < length) return false;
    record.Failures = 0;
  }
  ++record.Failures;
  record.LastFailure = now;
  return true;
}

OfflineUsers::Answer OfflineUsers::Check(const UserRules& rules, StringView name,
                                         const Password& password) {
  std::optional<OfflineRecord> record;
  {
    const std::unique_ptr<OfflineStore::Hold> hold = store_.Open();
    record = hold->Find(name);
    if (!record || !IsValid(rules, *record)) return {};
    if (!Admit(rules, *record)) return {Verdict::LockedOut, record->User};
    hold->Put(*record);
    hold->Commit();
  }
  // The store is not held while a password is hashed.
  if (password.Empty() || !Matches(cryptography_, password, record->Hash))
    return {Verdict::WrongPassword, record->User};
  const std::unique_ptr<OfflineStore::Hold> hold = store_.Open();
  const std::optional<OfflineRecord> now = hold->Find(name);
  if (!now || now->Hash != record->Hash) return {Verdict::WrongPassword, record->User};
  record->Failures = 0;
  record->LastFailure = 0;
  hold->Put(*record);
  hold->Commit();
  return {Verdict::Right, record->User};
}

std::optional<DirectoryUser> OfflineUsers::Find(const UserRules& rules, StringView name) {
  const std::optional<OfflineRecord> record = store_.Open()->Find(name);
  if (!record || !IsValid(rules, *record)) return std::nullopt;
  return record->User;
}

}  // namespace krx::runtime
