#include "runtime/users/directory/OfflineUsers.h"

#include <algorithm>
#include <utility>

#include "runtime/users/passwords/PasswordKeys.h"
#include "runtime/users/rules/GuessingDelay.h"
#include "runtime/users/rules/Names.h"

namespace krx::runtime {
namespace {

constexpr std::int64_t kDay = 86'400;  // seconds

}  // namespace

void OfflineUsers::Remember(const UserRules& rules, const DirectoryUser& user,
                            const Password& password) {
  if (rules.KeyedPasswords && keys_ == nullptr) return;
  OfflineRecord record;
  record.User = user;
  record.Hash =
      HashPassword(cryptography_, password, static_cast<std::uint32_t>(rules.HashIterations));
  if (rules.KeyedPasswords) keys_->Apply(record.Hash);
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
  const std::int64_t delay = DelayAfter(rules, record.Failures, record.FailuresInARow);
  // Without an end of its own a lock-out ends when a server answers again.
  if (delay == kForever || now - record.LastFailure < delay) return false;
  if (record.Failures >= rules.LockOutFailures) record.Failures = 0;
  ++record.Failures;
  record.FailuresInARow = std::min(record.FailuresInARow, kEndOfGuessing - 1) + 1;
  record.LastFailure = now;
  return true;
}

// Something is written in any case, and the store is not held while a password is hashed.
OfflineUsers::Attempt OfflineUsers::Begin(const UserRules& rules, StringView name) {
  const std::unique_ptr<OfflineStore::Hold> hold = store_.Open();
  const std::optional<OfflineRecord> stored = hold->FindOrAny(name);
  if (!stored) return {};
  if (keys_ != nullptr) keys_->Require(stored->Hash.KeyId);
  OfflineRecord record = *stored;
  const bool admitted = Admit(rules, record);
  const bool known = EqualIgnoringCase(stored->User.Name, name) && IsValid(rules, *stored);
  hold->Put(known ? record : *stored);
  hold->Commit();
  if (!known) return {Verdict::Unknown, std::move(record)};
  return {admitted ? Verdict::WrongPassword : Verdict::LockedOut, std::move(record)};
}

OfflineUsers::Answer OfflineUsers::Check(const UserRules& rules, StringView name,
                                         const Password& password) {
  const auto [verdict, record] = Begin(rules, name);
  const PasswordHash expected =
      record ? record->Hash : DecoyHash(static_cast<std::uint32_t>(rules.HashIterations));
  const bool matches = Matches(cryptography_, password, expected, keys_);
  if (verdict == Verdict::Unknown) return {};
  if (verdict == Verdict::LockedOut || password.Empty() || !matches) return {verdict, record->User};
  const std::unique_ptr<OfflineStore::Hold> hold = store_.Open();
  const std::optional<OfflineRecord> now = hold->Find(name);
  if (!now || now->Hash != record->Hash) return {Verdict::WrongPassword, record->User};
  OfflineRecord forgiven = *record;
  forgiven.Failures = 0;
  forgiven.FailuresInARow = 0;
  forgiven.LastFailure = 0;
  hold->Put(forgiven);
  hold->Commit();
  return {Verdict::Right, forgiven.User};
}

std::optional<DirectoryUser> OfflineUsers::Find(const UserRules& rules, StringView name) {
  const std::optional<OfflineRecord> record = store_.Open()->Find(name);
  if (!record || !IsValid(rules, *record)) return std::nullopt;
  return record->User;
}

}  // namespace krx::runtime
