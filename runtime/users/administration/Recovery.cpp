#include "runtime/users/administration/Recovery.h"

#include <algorithm>
#include <utility>

#include "runtime/core/KorvelError.h"
#include "runtime/users/administration/Provisioning.h"
#include "runtime/users/logon/LogOnGuard.h"
#include "runtime/users/passwords/PasswordRules.h"
#include "runtime/users/store/AuditArchive.h"
#include "runtime/users/store/Schema.h"

namespace krx::runtime {
namespace {

[[noreturn]] void RefuseRecovery(const String& reason) {
  throw KorvelError(kUnableToRecover, reason);
}

// Changes a user and records it.
template <class Alter>
void ChangeUser(UserManagement& management, const String& name, const AuditEntry& entry,
                Alter&& alter) {
  UserStore::Writing writing(management.Store);
  if (!writing.HasStore()) RefuseRecovery(u"there are no users");
  std::optional<StoredUser> user = writing.Users().Find(name);
  if (!user) RefuseRecovery(u"there is no such user");
  alter(*user);
  user->Deactivated = false;
  LogOnGuard::Forgive(*user);
  writing.Users().Update(*user, true);
  writing.Record(entry);
  writing.Commit();
}

std::vector<String> CheckDatabase(Database& database, Cryptography& cryptography) {
  std::vector<String> problems;
  Query integrity(database, "PRAGMA integrity_check(20)");
  while (integrity.Next()) {
    if (integrity.Text(0) != u"ok") problems.push_back(integrity.Text(0));
  }
  Query keys(database, "PRAGMA foreign_key_check");
  while (keys.Next())
    problems.push_back(u"a row of " + keys.Text(0) + u" belongs to nothing");
  if (!problems.empty()) return problems;
  const AuditVerdict audit = AuditTrail(database, cryptography).Verify();
  if (audit.FirstBroken != 0) {
    problems.push_back(u"audit record " + ToString(static_cast<std::int32_t>(audit.FirstBroken)) +
                       u": " + audit.Reason);
  }
  return problems;
}

// What cannot even be read counts as damaged.
bool IsWhole(UserManagement& management) {
  try {
    return CheckStore(management).empty();
  } catch (const Error&) {
    return false;
  }
}

// The backup as it will be in place: of the current tables, and with the record of its return.
std::filesystem::path Prepared(UserManagement& management, const std::filesystem::path& file) {
  const SystemServices& system = management.System;
  std::filesystem::path draft = management.Store.File();
  draft += ".restoring";
  std::error_code ignored;
  std::filesystem::remove(draft, ignored);
  Database source(file, system.Access, false);
  if (StoredSchema(source) == 0) RefuseRecovery(u"there are no users in " + file.u16string());
  Database copy(draft, system.Access, true);
  source.CopyTo(copy);
  Transaction transaction(copy, Transaction::Kind::Writes);
  Migrate(copy);
  const std::vector<String> problems = CheckDatabase(copy, system.Crypto);
  if (!problems.empty()) RefuseRecovery(file.u16string() + u": " + problems.front());
  AuditTrail(copy, system.Crypto)
      .Add(system.Time.Now(), system.Origin,
           {u"", u"restore", u"", u"from " + file.filename().u16string()});
  transaction.Commit();
  return draft;
}

}  // namespace

void UnlockUser(UserManagement& management, const String& name) {
  ChangeUser(management, name, {u"", u"unlock", name, u"unlocked"}, [](StoredUser&) {});
}

Password ResetPassword(UserManagement& management, const String& name) {
  const UserRules rules = management.Rules();
  Password generated = GeneratePassword(management.System.Crypto, rules);
  PasswordHash hash = management.Hasher(rules).Hash(generated);
  ChangeUser(
      management, name, {u"", u"reset password", name, u"to be renewed"}, [&](StoredUser& user) {
        // What cannot be recognised any more would keep him from renewing this one.
        std::erase_if(user.Passwords,
                      [&](const PasswordHash& old) { return !management.Keys.Has(old.KeyId); });
        user.Passwords = WithNewPassword(rules, user.Passwords, std::move(hash));
        user.MustRenew = true;
        user.PasswordChangedOn = management.System.Time.Now();
        user.RemainingLogOns = kUnlimitedLogOns;
      });
  return generated;
}

std::vector<String> CheckStore(UserManagement& management) {
  try {
    UserStore::Reading reading(management.Store);
    if (reading.Data() == nullptr) return {u"there are no users"};
    std::vector<String> problems = CheckDatabase(*reading.Data(), management.System.Crypto);
    if (!problems.empty()) return problems;
    return CheckArchives(*reading.Data(), management.Store, management.System);
  } catch (const Error& failure) {
    if (failure.Status() != kUnreadableUsers) throw;
    return {management.Store.File().u16string() + u": " + failure.Description()};
  }
}

void BackUpStore(UserManagement& management, const std::filesystem::path& file) {
  const DatabaseAccess& access = management.System.Access;
  if (Database::Exists(file, access)) RefuseRecovery(file.u16string() + u" is there already");
  {
    UserStore::Writing writing(management.Store);
    if (!writing.HasStore()) RefuseRecovery(u"there are no users");
    writing.Record({u"", u"back up", u"", u"to " + file.filename().u16string()});
    writing.Commit();
  }
  UserStore::Reading reading(management.Store);
  Database copy(file, access, true);
  copy.Writing = true;
  reading.Data()->CopyTo(copy);
}

std::filesystem::path RestoreStore(UserManagement& management, const std::filesystem::path& file) {
  const DatabaseAccess& access = management.System.Access;
  const std::filesystem::path draft = Prepared(management, file);
  std::filesystem::path kept;
  if (Database::Exists(management.Store.File(), access)) {
    kept = management.Store.File();
    kept += ".";
    kept += std::to_string(management.System.Time.Now());
    if (IsWhole(management)) {
      UserStore::Reading reading(management.Store);
      Database copy(kept, access, true);
      reading.Data()->CopyTo(copy);
    } else {
      const UserStore::Use closes(management.Store);
    }
    if (!Database::Exists(kept, access))
      management.System.FileSystem.Replace(management.Store.File(), kept);
  }
  {
    Database source(draft, access, false);
    Database target(management.Store.File(), access, true);
    target.Writing = true;
    source.CopyTo(target);
  }
  std::error_code ignored;
  std::filesystem::remove(draft, ignored);
  return kept;
}

}  // namespace krx::runtime
