#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include "runtime/core/KorvelError.h"
#include "runtime/users/administration/ClassDirectory.h"
#include "runtime/users/administration/Provisioning.h"
#include "runtime/users/administration/UserDirectory.h"
#include "runtime/users/logon/LogOnService.h"
#include "runtime/users/store/StoreFormat.h"
#include "support/SimulatedFiles.h"
#include "support/TestCryptography.h"

namespace krx::test {

using runtime::StoredUser;
using runtime::UserStore;

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

  UserStore Stored() { return runtime::ParseStore(u"store", files.Content(StorePath())); }
  StoredUser StoredRecord(StringView name) { return *Stored().Find(name); }
  std::filesystem::path StorePath() const { return folder / "users.dat"; }

  std::string LastAuditLine() {
    const std::string& log = files.Content(folder / "audit.log");
    const std::size_t start = log.rfind('\n', log.size() - 2);
    return log.substr(start == log.npos ? 0 : start + 1);
  }

  const std::filesystem::path folder = "users";
  SimulatedFiles files;
  TestCryptography crypto;
  TestClock clock;
  runtime::Session logged_on;
  runtime::UserManagement management{{files, crypto, clock}, folder, logged_on};
  runtime::LogOnService session{management};
  runtime::UserDirectory directory{management};
  runtime::ClassDirectory classes{management};
};

}  // namespace krx::test
