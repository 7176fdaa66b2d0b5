#include "support/UserManagementTest.h"

namespace krx::test {
namespace {

using testing::HasSubstr;
using testing::Not;

class AuditLogTest : public UserManagementTest {
 protected:
  std::string& Log() { return files.Content(folder / "audit.log"); }
  std::string TakeLog() { return std::exchange(Log(), ""); }
};

TEST_F(AuditLogTest, EveryEventIsOneLineOfTimeActorActionSubjectAndOutcome) {
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

TEST_F(AuditLogTest, RefusedPasswordsAndLockOutsAreRecorded) {
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

TEST_F(AuditLogTest, ANameThatIsNoUsersMayBeAPasswordAndIsNotRecorded) {
  Provision();
  TakeLog();
  LogOn(u"tell-tale secret", u"boss");
  directory.ChangeUserPassword(u"tell-tale secret", Secret(u"x"), Secret(u"y"));
  EXPECT_EQ(Log(),
            "2026-01-01T00:00:00Z\t-\tlog-on\t-\trefused: unknown user\n"
            "2026-01-01T00:00:00Z\t-\tchange password\t-\trefused: unknown user\n");
}

TEST_F(AuditLogTest, NoPasswordAppearsInAnyFile) {
  ProvisionAndLogOn();
  AddUser(u"anna", u"tell-tale one");
  directory.ModifyUser(Record(u"anna", u"tell-tale two"));
  directory.CreateUser(Record(u"berta", u"telltal"));
  LogOn(u"anna", u"tell-tale three");
  directory.ChangeUserPassword(u"anna", Secret(u"tell-tale four"), Secret(u"tell-tale two"));
  for (const char* file : {"users.dat", "audit.log"})
    EXPECT_THAT(files.Content(folder / file), Not(HasSubstr("telltal"))) << file;
  EXPECT_THAT(files.Content(folder / "users.dat") + Log(), Not(HasSubstr("tell-tale")));
}

TEST_F(AuditLogTest, NoTextBringsItsOwnLineOrField) {
  runtime::AuditLog log(files, clock, folder);
  log.Add({u"a\nb", u"c\td", u"e\r\x0B\x0C\u0085f", u"g\u2028h\\u000a\x1B[2J"});
  EXPECT_EQ(Log(),
            "2026-01-01T00:00:00Z\ta\\u000ab\tc\\u0009d\te\\u000d\\u000b\\u000c\\u0085f\t"
            "g\\u2028h\\u005cu000a\\u001b[2J\n");
}

TEST_F(AuditLogTest, AnAbsurdNameIsNotRecorded) {
  ProvisionAndLogOn();
  TakeLog();
  directory.RemoveUser(String(100'000, u'x'));
  EXPECT_EQ(Log(), "2026-01-01T00:00:00Z\tboss\tremove user\t-\trefused: unknown user\n");
}

TEST_F(AuditLogTest, AnEventAfterAnInterruptedOneHasItsOwnLine) {
  Log() = "2025-12-31T23:59:59Z\tbo";
  runtime::AuditLog log(files, clock, folder);
  log.Add({u"boss", u"log-on", u"", u"logged on"});
  EXPECT_EQ(Log(), "2025-12-31T23:59:59Z\tbo\n2026-01-01T00:00:00Z\tboss\tlog-on\t-\tlogged on\n");
}

TEST_F(AuditLogTest, TimesBefore1970AndFarAheadAreWritten) {
  runtime::AuditLog log(files, clock, folder);
  clock.Seconds = -1;
  log.Add({});
  clock.Seconds = 253'402'300'799;
  log.Add({});
  EXPECT_EQ(Log(), "1969-12-31T23:59:59Z\t-\t-\t-\t-\n9999-12-31T23:59:59Z\t-\t-\t-\t-\n");
}

}  // namespace
}  // namespace krx::test
