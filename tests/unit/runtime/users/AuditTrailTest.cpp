#include <cstring>

#include "support/UserManagementTest.h"

namespace krx::test {
namespace {

using testing::HasSubstr;
using testing::Not;

class AuditTrailTest : public UserManagementTest {
 protected:
  // The events since TakeLog.
  std::string Log() {
    std::string lines;
    for (const runtime::AuditRecord& record : Records()) {
      if (record.Number > taken_) lines += LineOf(record);
    }
    return lines;
  }
  void TakeLog() { taken_ = Records().back().Number; }

  // Adds an event past all operations.
  void Add(const runtime::AuditEntry& entry) {
    UserStore::Writing writing(management.Store);
    writing.Record(entry);
    writing.Commit();
  }
  // Changes the database past the program.
  void Tamper(const char* statements) {
    runtime::Database data(folder / "users.db", {disk.Name()}, false);
    data.Run(statements);
  }
  // The number of the first record that does not hold, after the statements.
  std::int64_t FirstBrokenAfter(const char* statements) {
    CloseStore();
    const SimulatedDisk::Files before = disk.Copy();
    Tamper(statements);
    const std::int64_t broken = VerifyAudit().FirstBroken;
    CloseStore();
    disk.Put(before);
    return broken;
  }

 private:
  std::int64_t taken_ = 0;
};

TEST_F(AuditTrailTest, EveryEventIsOneLineOfTimeActorActionSubjectAndOutcome) {
  Provision();
  TakeLog();
  LogOn(u"boss", kBossSecret);
  clock.Seconds += 3661;
  AddUser(u"anna", u"anna's secret");
  directory.SetUserActive(u"anna", 0);
  LogOn(u"anna", u"anna's secret");
  directory.SetUserActive(u"anna", 1);
  directory.ModifyUser(Record(u"anna", u"short"));
  directory.ModifyUser(Record(u"anna", u"new secret", u"Engineer"));
  directory.RemoveUser(u"anna");
  session.LogOffUser();
  directory.RemoveUser(u"boss");
  EXPECT_EQ(Log(),
            "2026-01-01T00:00:00Z\tboss\tlog-on\t-\tlogged on\n"
            "2026-01-01T01:01:01Z\tboss\tcreate user\tanna\tcreated in class Operator\n"
            "2026-01-01T01:01:01Z\tboss\tdeactivate user\tanna\tdeactivated\n"
            "2026-01-01T01:01:01Z\tanna\tlog-on\t-\trefused: user is deactivated\n"
            "2026-01-01T01:01:01Z\tboss\tactivate user\tanna\tactivated\n"
            "2026-01-01T01:01:01Z\tboss\tmodify user\tanna\trefused: length of the password\n"
            "2026-01-01T01:01:01Z\tboss\tmodify user\tanna\tmodified, class Engineer\n"
            "2026-01-01T01:01:01Z\tboss\tremove user\tanna\tremoved\n"
            "2026-01-01T01:01:01Z\tboss\tlog-off\t-\tlogged off\n"
            "2026-01-01T01:01:01Z\t-\tremove user\tboss\trefused: nobody is logged on\n");
}

TEST_F(AuditTrailTest, RefusedPasswordsAndLockOutsAreRecorded) {
  Configure("lock-out-failures = 2\n");
  Provision();
  TakeLog();
  LogOn(u"boss", u"wrong");
  LogOn(u"boss", u"wrong");
  LogOn(u"boss", u"wrong");
  clock.Seconds += 3600;
  directory.ChangeUserPassword(u"boss", Secret(u"new secret"), Secret(u"wrong"));
  directory.ChangeUserPassword(u"boss", Secret(u"new secret"), Secret(kBossSecret));
  EXPECT_EQ(Log(),
            "2026-01-01T00:00:00Z\tboss\tlog-on\t-\trefused: wrong password\n"
            "2026-01-01T00:00:00Z\tboss\tlog-on\t-\trefused: wrong password, user is now locked "
            "out\n"
            "2026-01-01T00:00:00Z\tboss\tlog-on\t-\trefused: user is locked out\n"
            "2026-01-01T01:00:00Z\tboss\tchange password\t-\trefused: wrong password\n"
            "2026-01-01T01:00:00Z\tboss\tchange password\t-\tchanged\n");
}

TEST_F(AuditTrailTest, ANameThatIsNoUsersMayBeAPasswordAndIsNotRecorded) {
  Provision();
  TakeLog();
  LogOn(u"tell-tale secret", u"boss");
  directory.ChangeUserPassword(u"tell-tale secret", Secret(u"x"), Secret(u"y"));
  EXPECT_EQ(Log(),
            "2026-01-01T00:00:00Z\t-\tlog-on\t-\trefused: unknown user\n"
            "2026-01-01T00:00:00Z\t-\tchange password\t-\trefused: unknown user\n");
}

TEST_F(AuditTrailTest, NoPasswordAppearsInAnyFile) {
  ProvisionAndLogOn();
  AddUser(u"anna", u"tell-tale one");
  directory.ModifyUser(Record(u"anna", u"tell-tale two"));
  directory.CreateUser(Record(u"berta", u"telltal"));
  LogOn(u"anna", u"tell-tale three");
  directory.ChangeUserPassword(u"anna", Secret(u"tell-tale four"), Secret(u"tell-tale two"));
  for (const char* trace : {"telltal", "tell-tale"}) {
    EXPECT_THAT(StoreContent(), Not(HasSubstr(trace)));
    EXPECT_THAT(Log(), Not(HasSubstr(trace)));
  }
}

TEST_F(AuditTrailTest, AnAbsurdNameIsNotRecorded) {
  ProvisionAndLogOn();
  TakeLog();
  directory.RemoveUser(String(100'000, u'x'));
  EXPECT_EQ(Log(), "2026-01-01T00:00:00Z\tboss\tremove user\t-\trefused: unknown user\n");
}

TEST_F(AuditTrailTest, EventsTellWhereTheyComeFrom) {
  Provision();
  const runtime::AuditRecord record = Records().back();
  EXPECT_EQ(record.Number, 2);
  EXPECT_EQ(record.Origin.Station, u"panel 1");
  EXPECT_EQ(record.Origin.Process, u"test");
  EXPECT_EQ(record.Origin.Account, u"operator");
}

TEST_F(AuditTrailTest, AnyTextIsRecordedAsItIs) {
  Provision();
  const runtime::AuditEntry entry{u"a\nb", u"c\td", String(u"e\0f", 3), u"\u2028\U0001F600"};
  Add(entry);
  const runtime::AuditEntry found = Records().back().Entry;
  EXPECT_EQ(found.Actor, entry.Actor);
  EXPECT_EQ(found.Action, entry.Action);
  EXPECT_EQ(found.Subject, entry.Subject);
  EXPECT_EQ(found.Outcome, entry.Outcome);
  EXPECT_EQ(VerifyAudit().FirstBroken, 0);
}

TEST_F(AuditTrailTest, TheChainHoldsThroughEverythingThatHappens) {
  ProvisionAndLogOn();
  AddUser(u"anna", u"anna's secret");
  LogOn(u"anna", u"wrong");
  directory.RemoveUser(u"anna");
  const runtime::AuditVerdict verdict = VerifyAudit();
  EXPECT_EQ(verdict.FirstBroken, 0);
  EXPECT_EQ(verdict.Records, 6);
}

// The digest of a record can be worked out with any tool: SHA-256 of the digest before, number and
// time in eight bytes each and seven texts in UTF-8, each behind its length in four bytes.
TEST_F(AuditTrailTest, TheDigestIsTheDescribedOne) {
  Provision();
  const runtime::AuditRecord first = Records().front();
  std::vector<std::uint8_t> bytes(32, 0);
  const auto number = [&](std::uint64_t value, int size) {
    for (int i = size - 1; i >= 0; --i)
      bytes.push_back(static_cast<std::uint8_t>(value >> (8 * i)));
  };
  number(1, 8);
  number(1'767'225'600, 8);
  for (const char* text :
       {"", "panel 1", "test", "operator", "provision", "boss", "first administrator created"}) {
    number(std::strlen(text), 4);
    bytes.insert(bytes.end(), text, text + std::strlen(text));
  }
  EXPECT_EQ(first.Hash, crypto.Hash(bytes));
}

TEST_F(AuditTrailTest, TheFirstRecordThatDoesNotHoldIsFound) {
  ProvisionAndLogOn();
  AddUser(u"anna", u"anna's secret");
  LogOn(u"anna", u"wrong");
  ASSERT_EQ(Records().size(), 5u);
  EXPECT_EQ(FirstBrokenAfter("SELECT 1"), 0);
  EXPECT_EQ(FirstBrokenAfter("UPDATE audit SET outcome = 'logged on' WHERE number = 5"), 5);
  EXPECT_EQ(FirstBrokenAfter("UPDATE audit SET at = at + 1 WHERE number = 3"), 3);
  EXPECT_EQ(
      FirstBrokenAfter("UPDATE audit SET actor = 'bos', station = 'spanel 1' WHERE number = 3"), 3);
  EXPECT_EQ(FirstBrokenAfter("UPDATE audit SET hash = zeroblob(32) WHERE number = 2"), 2);
  EXPECT_EQ(FirstBrokenAfter("DELETE FROM audit WHERE number = 1"), 1);
  EXPECT_EQ(FirstBrokenAfter("DELETE FROM audit WHERE number = 4"), 4);
  EXPECT_EQ(FirstBrokenAfter("DELETE FROM audit WHERE number = 5"), 5);
  EXPECT_EQ(FirstBrokenAfter("DELETE FROM audit"), 1);
  EXPECT_EQ(FirstBrokenAfter("INSERT INTO audit SELECT 6, at, actor, station, process, account, "
                             "action, subject, outcome, hash FROM audit WHERE number = 5"),
            6);
  EXPECT_EQ(FirstBrokenAfter("UPDATE audit SET number = 7 WHERE number = 5;"
                             "UPDATE audit SET number = 5 WHERE number = 4;"
                             "UPDATE audit SET number = 4 WHERE number = 7"),
            4);
}

TEST(TimeStampTest, TimesBefore1970AndFarAheadAreWritten) {
  EXPECT_EQ(runtime::TimeStamp(-1), "1969-12-31T23:59:59Z");
  EXPECT_EQ(runtime::TimeStamp(253'402'300'799), "9999-12-31T23:59:59Z");
}

}  // namespace
}  // namespace krx::test
