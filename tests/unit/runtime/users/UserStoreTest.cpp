#include <chrono>

#include "runtime/users/administration/Recovery.h"
#include "runtime/users/store/AuditExport.h"
#include "support/UserManagementTest.h"

namespace krx::test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

class UserStoreTest : public UserManagementTest {
 protected:
  void Prepare() {
    ProvisionAndLogOn();
    AddUser(u"anna", u"anna's secret");
  }

  // Every operation reports the store, and none changes it.
  void ExpectReported() {
    const std::string damaged = StoreContent();
    EXPECT_THROW(LogOn(u"anna", u"anna's secret"), Error);
    EXPECT_THROW(directory.GetUserNames(u""), Error);
    EXPECT_THROW(directory.GetUserInfo(u"anna"), Error);
    EXPECT_THROW(directory.GetUserClass(u"anna"), Error);
    EXPECT_THROW(directory.GetCurrentUser(), Error);
    EXPECT_EQ(directory.ChangeUserPassword(u"anna", Secret(u"new secret"), Secret(u"x")),
              host::ChangePasswordCallFailed);
    EXPECT_EQ(directory.CreateUser(Record(u"berta")), host::CreateUserCallFailed);
    EXPECT_EQ(directory.ModifyUser(Record(u"anna")), host::ModifyUserCallFailed);
    EXPECT_EQ(directory.SetUserActive(u"anna", 0), host::ModifyUserCallFailed);
    EXPECT_EQ(directory.RemoveUser(u"anna"), host::ModifyUserCallFailed);
    EXPECT_THROW(
        runtime::ProvisionFirstAdministrator(management, u"x", Secret(u"provisioned secret")),
        Error);
    // The user is logged off all the same.
    EXPECT_THROW(session.LogOffUser(), Error);
    EXPECT_FALSE(logged_on.Current().has_value());
    EXPECT_EQ(StoreContent(), damaged);
  }
};

TEST_F(UserStoreTest, ADamagedStoreIsReportedByEveryOperationAndStaysAsItIs) {
  Prepare();
  CloseStore();
  for (char& byte : StoreContent())
    byte = static_cast<char>(byte ^ 0x55);
  ExpectReported();
}

TEST_F(UserStoreTest, AnotherProgramsDatabaseIsReportedAndStaysAsItIs) {
  Prepare();
  CloseStore();
  runtime::Database(folder / "users.db", {disk.Name()}, false).Run("PRAGMA application_id = 7");
  ExpectReported();
}

// An empty key was the same as what an empty derivation gives: everybody had the password.
TEST_F(UserStoreTest, ADamagedHashIsReportedAndIsNobodysPassword) {
  Prepare();
  session.LogOffUser();
  for (const char* const damage :
       {"SET key = x''", "SET key = zeroblob(33)", "SET salt = x'00'", "SET key_id = x'00'",
        "SET iterations = 0", "SET iterations = 9223372036854775807", "SET age = age + 1"}) {
    SCOPED_TRACE(damage);
    CloseStore();
    const SimulatedDisk::Files whole = disk.Copy();
    runtime::Database(folder / "users.db", {disk.Name()}, false)
        .Run((std::string("PRAGMA ignore_check_constraints = ON; UPDATE passwords ") + damage +
              " WHERE user = 2")
                 .c_str());
    EXPECT_THROW(LogOn(u"anna", u"whatever it is"), Error);
    EXPECT_EQ(directory.ChangeUserPassword(u"anna", Secret(u"new secret"), Secret(u"x")),
              host::ChangePasswordCallFailed);
    CloseStore();
    disk.Put(whole);
  }
}

TEST_F(UserStoreTest, AStoreOfALaterVersionIsReportedAndStaysAsItIs) {
  Prepare();
  CloseStore();
  runtime::Database(folder / "users.db", {disk.Name()}, false).Run("PRAGMA user_version = 1000");
  ExpectReported();
}

TEST_F(UserStoreTest, AStoreWithoutTheRightToReadItIsNotTakenForMissing) {
  Prepare();
  CloseStore();
  disk.Unreadable = true;
  EXPECT_THROW(LogOn(u"anna", u"anna's secret"), Error);
  EXPECT_THROW(
      runtime::ProvisionFirstAdministrator(management, u"x", Secret(u"provisioned secret")), Error);
}

TEST_F(UserStoreTest, AStoreOnAReadOnlyDiskCanBeReadButNotSaved) {
  Prepare();
  const std::string before = StoreContent();
  disk.ReadOnly = true;
  EXPECT_EQ(directory.GetUserNames(u"").size(), 2u);
  EXPECT_EQ(directory.SetUserActive(u"anna", 0), host::ModifyUserUnableToSave);
  EXPECT_EQ(StoreContent(), before);
}

TEST_F(UserStoreTest, IdsAreNeverGivenAgain) {
  Prepare();
  const std::uint32_t id = StoredRecord(u"anna").Id;
  ASSERT_EQ(directory.RemoveUser(u"anna"), host::ModifyUserSucceeded);
  CloseStore();
  AddUser(u"berta", u"berta's secret");
  EXPECT_GT(StoredRecord(u"berta").Id, id);
}

TEST_F(UserStoreTest, PasswordsGoWithTheirUser) {
  Prepare();
  ASSERT_EQ(directory.RemoveUser(u"anna"), host::ModifyUserSucceeded);
  UserStore::Reading reading(management.Store);
  runtime::Query count(*reading.Data(), "SELECT count(*) FROM passwords");
  ASSERT_TRUE(count.Next());
  EXPECT_EQ(count.Number(0), 2);  // the boss's own and the provisioned one
}

// What was changed by another process is seen at once, although the users are kept from a listing
// on.
TEST_F(UserStoreTest, WhatOthersChangeIsSeenByTheNextReading) {
  Prepare();
  runtime::Session other_session;
  runtime::UserManagement other{System(), folder, other_session};
  runtime::UserDirectory others(other);
  ASSERT_EQ(others.GetUserNames(u"").size(), 2u);
  ASSERT_EQ(others.GetUserInfo(u"anna").State, host::UserActive);
  ASSERT_EQ(directory.SetUserActive(u"anna", 0), host::ModifyUserSucceeded);
  EXPECT_EQ(others.GetUserInfo(u"anna").State, host::UserDeactivated);
  ASSERT_EQ(others.GetUserNames(u"").size(), 2u);
  ASSERT_EQ(directory.RemoveUser(u"anna"), host::ModifyUserSucceeded);
  EXPECT_FALSE(others.GetUserClass(u"anna").Found);
  EXPECT_EQ(others.GetUserNames(u"").size(), 1u);
}

TEST_F(UserStoreTest, AListingIsReadOnceUntilSomethingChanges) {
  Prepare();
  directory.GetUserNames(u"");
  const auto operations = [this](const std::function<void()>& work) {
    disk.FailAt(0, false);
    work();
    return disk.Operations();
  };
  // One look at what tells of changes, and none at the users.
  EXPECT_EQ(operations([this] { directory.GetUserClass(u"anna"); }), 1);
  EXPECT_EQ(operations([this] { directory.GetUserInfo(u"anna"); }), 1);
  EXPECT_EQ(operations([this] { directory.GetUserNames(u""); }), 1);
  const int reads = files.Reads;
  directory.GetUserInfo(u"anna");
  EXPECT_EQ(files.Reads, reads);
}

TEST_F(UserStoreTest, WhoeverHoldsTheStoreTooLongIsAnError) {
  Prepare();
  runtime::Database holder(folder / "users.db", {disk.Name()}, false);
  const runtime::Transaction transaction(holder, runtime::Transaction::Kind::Writes);
  try {
    LogOn(u"anna", u"anna's secret");
    FAIL();
  } catch (const Error& failure) {
    EXPECT_EQ(failure.Status(), runtime::kStoreBusy);
  }
  EXPECT_EQ(directory.RemoveUser(u"anna"), host::ModifyUserCallFailed);
  EXPECT_EQ(directory.GetUserNames(u"").size(), 2u);  // reading goes on
}

// The store of the first version, as that wrote it.
constexpr const char* kOldStore =
    "KorvelUsers\t1\t9\n"
    "user\t1\tboss\tThe \\u005cBoss\\u0009\t\tAdministrator\t0\t0\t-1\t1767225600\t0\t0\t"
    "1000:00112233445566778899aabbccddeeff:"
    "0101010101010101010101010101010101010101010101010101010101010101 "
    "2000:ff112233445566778899aabbccddeeff:"
    "0202020202020202020202020202020202020202020202020202020202020202\n"
    "user\t7\tanna\t\t\xC3\x84\tOperator\t1\t1\t3\t-5\t2\t1767225601\t"
    "1000:00112233445566778899aabbccddeeff:"
    "0303030303030303030303030303030303030303030303030303030303030303\n"
    "end\t2\t0123456789abcdef\n";

TEST_F(UserStoreTest, AStoreOfTheFirstVersionIsTakenOver) {
  files.Put(folder / "users.dat", kOldStore);
  EXPECT_THAT(directory.GetUserNames(u""), ElementsAre(u"anna", u"boss"));
  const StoredUser boss = StoredRecord(u"boss");
  EXPECT_EQ(boss.FullName, u"The \\Boss\t");
  EXPECT_EQ(boss.ClassName, u"Administrator");
  EXPECT_FALSE(boss.MustRenew);
  ASSERT_EQ(boss.Passwords.size(), 2u);
  EXPECT_EQ(boss.Passwords[1].Iterations, 2000u);
  EXPECT_EQ(boss.Passwords[1].Key, std::vector<std::uint8_t>(32, 2));
  const StoredUser anna = StoredRecord(u"anna");
  EXPECT_EQ(anna.Comment, u"\u00C4");
  EXPECT_TRUE(anna.Deactivated);
  EXPECT_EQ(anna.RemainingLogOns, 3);
  EXPECT_EQ(anna.PasswordChangedOn, -5);
  EXPECT_EQ(anna.Failures, 2);
  EXPECT_THAT(LastAuditLine(), HasSubstr("take over users"));
  EXPECT_FALSE(files.Exists(folder / "users.dat"));
  EXPECT_TRUE(files.Exists(folder / "users.dat.imported"));
}

TEST_F(UserStoreTest, ADamagedStoreOfTheFirstVersionIsReportedAndStays) {
  const std::string whole = kOldStore;
  for (std::size_t length = 0; length < whole.size(); length += 7) {
    files.Put(folder / "users.dat", whole.substr(0, length));
    ASSERT_THROW(directory.GetUserNames(u""), Error) << length;
    ASSERT_EQ(files.Content(folder / "users.dat"), whole.substr(0, length));
  }
  files.Put(folder / "users.dat", whole);
  EXPECT_EQ(directory.GetUserNames(u"").size(), 2u);
}

TEST_F(UserStoreTest, AnOldStoreBesideADatabaseIsNotRead) {
  Provision();
  files.Put(folder / "users.dat", kOldStore);
  EXPECT_THAT(directory.GetUserNames(u""), ElementsAre(u"boss"));
}

TEST_F(UserStoreTest, WhoeverHasTheFolderUnlocksAndResets) {
  Configure("lock-out-minutes = 0\n");
  Prepare();
  ASSERT_EQ(directory.SetUserActive(u"anna", 0), host::ModifyUserSucceeded);
  runtime::UnlockUser(management, u"anna");
  EXPECT_EQ(LastAuditLine(), "2026-01-01T00:00:00Z\t-\tunlock\tanna\tunlocked\n");
  EXPECT_EQ(LogOn(u"anna", u"anna's secret"), host::LogOnSucceeded);
  for (int i = 0; i < 5; ++i)
    LogOn(u"anna", u"wrong");
  const Password generated = runtime::ResetPassword(management, u"anna");
  EXPECT_EQ(LastAuditLine(), "2026-01-01T00:00:00Z\t-\treset password\tanna\tto be renewed\n");
  EXPECT_EQ(LogOn(u"anna", u"anna's secret"), host::LogOnInvalidPassword);
  EXPECT_EQ(session.LogOnUser(u"anna", generated), host::LogOnRenewPassword);
  EXPECT_THROW(runtime::UnlockUser(management, u"nobody"), Error);
  EXPECT_THROW(runtime::ResetPassword(management, u"nobody"), Error);
}

TEST_F(UserStoreTest, ABackupComesBackAsAWhole) {
  Prepare();
  runtime::BackUpStore(management, folder / "backup.db");
  EXPECT_THROW(runtime::BackUpStore(management, folder / "backup.db"),
               Error);  // never over another
  AddUser(u"berta", u"berta's secret");
  const auto kept = runtime::RestoreStore(management, folder / "backup.db");
  EXPECT_THAT(directory.GetUserNames(u""), ElementsAre(u"anna", u"boss"));
  EXPECT_THAT(LastAuditLine(), HasSubstr("restore\t-\tfrom backup.db"));
  EXPECT_THAT(runtime::CheckStore(management), ElementsAre());
  // What was there is in the file that is kept.
  runtime::Database before(kept, {disk.Name()}, false);
  EXPECT_TRUE(runtime::UserTable(before).Find(u"berta").has_value());
}

TEST_F(UserStoreTest, ABackupThatIsNotWholeIsRefused) {
  Prepare();
  runtime::BackUpStore(management, folder / "backup.db");
  runtime::Database(folder / "backup.db", {disk.Name()}, false)
      .Run("UPDATE audit SET outcome = 'logged on' WHERE number = 2");
  EXPECT_THROW(runtime::RestoreStore(management, folder / "backup.db"), Error);
  EXPECT_THROW(runtime::RestoreStore(management, folder / "missing.db"), Error);
  EXPECT_THAT(directory.GetUserNames(u""), ElementsAre(u"anna", u"boss"));
}

TEST_F(UserStoreTest, DamageIsNamed) {
  Prepare();
  EXPECT_THAT(runtime::CheckStore(management), ElementsAre());
  runtime::Database(folder / "users.db", {disk.Name()}, false)
      .Run("UPDATE audit SET outcome = 'logged on' WHERE number = 2");
  EXPECT_THAT(runtime::CheckStore(management),
              ElementsAre(u"audit record 2: it does not follow the one before"));
}

TEST(AuditExportTest, NoTextEndsItsLineOrField) {
  runtime::AuditRecord record;
  record.Number = 12;
  record.Entry = {u"a,\"b\n", u"=SUM(1)", u"", u"\u00C4\U0001F600\\"};
  record.Origin = {u"panel", u"a.exe (1)", u"PLANT\\anna"};
  const std::string hash(64, '0');
  EXPECT_EQ(runtime::ExportLine(runtime::ExportFormat::Csv, record),
            "12,1970-01-01T00:00:00Z,\"a,\"\"b\\u000a\",'=SUM(1),,\xC3\x84\xF0\x9F\x98\x80\\,"
            "panel,a.exe (1),PLANT\\anna," +
                hash + "\n");
  EXPECT_EQ(
      runtime::ExportLine(runtime::ExportFormat::JsonLines, record),
      "{\"number\":12,\"time\":\"1970-01-01T00:00:00Z\",\"actor\":\"a,\\\"b\\u000a\","
      "\"action\":\"=SUM(1)\",\"subject\":\"\",\"outcome\":\"\xC3\x84\\ud83d\\ude00\\\\\","
      "\"station\":\"panel\",\"process\":\"a.exe (1)\",\"account\":\"PLANT\\\\anna\",\"hash\":\"" +
          hash + "\"}\n");
}

}  // namespace
}  // namespace krx::test
