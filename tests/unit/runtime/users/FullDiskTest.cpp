#include "support/UserManagementTest.h"

namespace krx::test {
namespace {

using testing::HasSubstr;

class FullDiskTest : public UserManagementTest {};

TEST_F(FullDiskTest, WhoHasThePasswordLogsOnAndIsRecordedOnceThereIsRoom) {
  Provision();
  const std::size_t events = Records().size();
  disk.Full = true;
  EXPECT_EQ(LogOn(u"boss", kBossSecret), host::LogOnSucceeded);
  EXPECT_TRUE(directory.GetCurrentUser().LoggedOn);
  EXPECT_EQ(Records().size(), events);
  EXPECT_EQ(LogOn(u"boss", u"wrong"), host::LogOnInvalidPassword);
  EXPECT_EQ(LogOn(u"nobody", u"wrong"), host::LogOnUnknownUser);
  disk.Full = false;
  clock.Seconds += 60;
  EXPECT_EQ(LogOn(u"boss", kBossSecret), host::LogOnSucceeded);
  const auto records = Records();
  EXPECT_EQ(LineOf(records[events]),
            "2026-01-01T00:01:00Z\tboss\tlog-on\t-\tlogged on at 2026-01-01T00:00:00Z, recorded "
            "late: the disk was full\n");
  EXPECT_THAT(LineOf(records[events + 1]), HasSubstr("refused: wrong password at"));
  EXPECT_THAT(LineOf(records[events + 2]), HasSubstr("-\tlog-on\t-\trefused: unknown user at"));
  EXPECT_EQ(VerifyAudit().FirstBroken, 0);
}

TEST_F(FullDiskTest, NothingElseIsChangedMeanwhile) {
  ProvisionAndLogOn();
  disk.Full = true;
  EXPECT_EQ(directory.CreateUser(Record(u"anna")), host::CreateUserUnableToSave);
  EXPECT_EQ(directory.ChangeUserPassword(u"boss", Secret(u"a further secret"), Secret(kBossSecret)),
            host::ChangePasswordUnableToSave);
}

TEST_F(FullDiskTest, GuessingIsStoppedAsEver) {
  Configure("lock-out-failures = 3\nlock-out-minutes = 10\n");
  Provision();
  LogOn(u"boss", u"wrong");
  disk.Full = true;
  LogOn(u"boss", u"wrong");
  EXPECT_EQ(LogOn(u"boss", u"wrong"), host::LogOnInvalidPassword);
  EXPECT_EQ(LogOn(u"boss", kBossSecret), host::LogOnTooManyFailedLogons);
  disk.Full = false;
  EXPECT_EQ(LogOn(u"boss", kBossSecret), host::LogOnTooManyFailedLogons);  // stored with the events
  EXPECT_EQ(StoredRecord(u"boss").Failures, 3);
  clock.Seconds += 600;
  EXPECT_EQ(LogOn(u"boss", kBossSecret), host::LogOnSucceeded);
}

TEST_F(FullDiskTest, WhoIsDeactivatedOrHasToRenewStaysOut) {
  ProvisionAndLogOn();
  ASSERT_EQ(directory.CreateUser(Record(u"anna")), host::CreateUserSucceeded);
  AddUser(u"berta", u"berta's secret");
  directory.SetUserActive(u"berta", 0);
  session.LogOffUser();
  disk.Full = true;
  EXPECT_EQ(LogOn(u"anna", u"first secret"), host::LogOnRenewPassword);
  EXPECT_EQ(LogOn(u"berta", u"berta's secret"), host::LogOnUserDeactivated);
  EXPECT_FALSE(directory.GetCurrentUser().LoggedOn);
}

TEST_F(FullDiskTest, ARuleLetsNobodyLogOnUnrecorded) {
  Configure("when-disk-full = refuse\n");
  Provision();
  disk.Full = true;
  EXPECT_THROW(LogOn(u"boss", kBossSecret), runtime::DiskFull);
  EXPECT_FALSE(directory.GetCurrentUser().LoggedOn);
}

}  // namespace
}  // namespace krx::test
