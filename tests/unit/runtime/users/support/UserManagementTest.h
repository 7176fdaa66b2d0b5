#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include "runtime/core/KorvelError.h"
#include "runtime/users/administration/ClassDirectory.h"
#include "runtime/users/administration/Provisioning.h"
#include "runtime/users/administration/UserDirectory.h"
#include "runtime/users/logon/LogOnService.h"
#include "support/SimulatedDisk.h"
#include "support/SimulatedFiles.h"
#include "support/TestCryptography.h"
#include "support/TestProtection.h"

namespace krx::test {

using runtime::StoredUser;
using runtime::UserStore;

// An event with its place in front of it: time, actor, action, subject and outcome.
inline std::string LineOf(const runtime::AuditRecord& record) {
  std::string line = runtime::TimeStamp(record.At);
  const runtime::AuditEntry& entry = record.Entry;
  for (const String* const text : {&entry.Actor, &entry.Action, &entry.Subject, &entry.Outcome})
    line += "\t" + (text->empty() ? "-" : ToUtf8(*text));
  return line + "\n";
}

inline Password Secret(StringView text) {
  return Password(text);
}

inline host::UserRecord Record(String name, StringView password = u"first secret",
                               String class_name = u"Operator") {
  host::UserRecord record;
  record.Name = std::move(name);
  record.FullName = u"Full " + record.Name;
  record.Comment = u"Comment on " + record.Name;
  record.Secret = Password(password);
  record.ClassName = std::move(class_name);
  return record;
}

// A user management on simulated files, with quick hashes; "boss" is its first administrator.
class UserManagementTest : public testing::Test {
 protected:
  static constexpr const char* kQuick = "hash-iterations = 1000\n";
  static constexpr StringView kBossSecret = u"boss's own secret";

  UserManagementTest() { Configure(""); }

  void Configure(const std::string& lines) { files.Put(folder / "users.conf", kQuick + lines); }

  // Creates the store; the administrator has renewed his password but is not logged on.
  void Provision() {
    runtime::ProvisionFirstAdministrator(management, u"boss", Secret(u"provisioned secret"));
    ASSERT_EQ(
        directory.ChangeUserPassword(u"boss", Secret(kBossSecret), Secret(u"provisioned secret")),
        host::ChangePasswordSucceeded);
  }

  void ProvisionAndLogOn() {
    Provision();
    ASSERT_EQ(LogOn(u"boss", kBossSecret), host::LogOnSucceeded);
  }

  std::int32_t LogOn(const String& user, StringView password) {
    return session.LogOnUser(user, Secret(password));
  }

  // Adds a user whose password is lasting.
  void AddUser(const String& name, StringView password, const String& class_name = u"Operator") {
    host::UserRecord record = Record(name, password, class_name);
    record.State = host::UserActive;
    ASSERT_EQ(directory.CreateUser(record), host::CreateUserSucceeded);
  }

  // A further user management on the same folder, as other processes have it.
  runtime::SystemServices System() {
    return {
        files,   crypto,     clock, {u"panel 1", u"test", u"operator"}, {disk.Name(), kPatience},
        nullptr, &protection};
  }

  StoredUser StoredRecord(StringView name) {
    UserStore::Writing writing(management.Store);
    return *writing.Users().Find(name);
  }
  // Changes a stored user past all rules.
  void Store(const StoredUser& user) {
    UserStore::Writing writing(management.Store);
    writing.Users().Update(user, true);
    writing.Commit();
  }
  const std::string database = (std::filesystem::path("users") / "users.db").string();
  bool HasStore() const { return disk.Exists(database); }
  std::string& StoreContent() { return disk.Content(database); }
  // Gives the file back; the next operation opens it again.
  void CloseStore() { const UserStore::Use use(management.Store); }

  std::vector<runtime::AuditRecord> Records() {
    UserStore::Reading reading(management.Store);
    if (reading.Data() == nullptr) return {};
    return runtime::AuditTrail(*reading.Data(), crypto).After(0, 1'000'000);
  }
  runtime::AuditVerdict VerifyAudit() {
    UserStore::Reading reading(management.Store);
    return runtime::AuditTrail(*reading.Data(), crypto).Verify();
  }
  std::string LastAuditLine() { return LineOf(Records().back()); }

  static constexpr std::chrono::milliseconds kPatience{0};
  const std::filesystem::path folder = "users";
  SimulatedDisk disk;
  SimulatedFiles files;
  TestCryptography crypto;
  TestClock clock;
  TestProtection protection;
  runtime::Session logged_on;
  runtime::UserManagement management{System(), folder, logged_on};
  runtime::LogOnService session{management};
  runtime::UserDirectory directory{management};
  runtime::ClassDirectory classes{management};
};

}  // namespace krx::test
