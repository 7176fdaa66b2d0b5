#include "runtime/users/administration/Recovery.h"
#include "runtime/users/store/AuditArchive.h"
#include "support/UserManagementTest.h"

namespace krx::test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

constexpr std::int64_t kDay = 24 * 60 * 60;

struct CollectedEvents : runtime::EventLog {
  void Report(const runtime::AuditRecord& record) noexcept override {
    Lines.push_back(LineOf(record));
  }
  std::vector<std::string> Lines;
};

class AuditBoundsTest : public UserManagementTest {
 protected:
  void LogOnTimes(int count) {
    for (int i = 0; i < count; ++i)
      LogOn(u"boss", kBossSecret);
  }
  std::vector<runtime::AuditArchive> Archives() {
    UserStore::Reading reading(management.Store);
    return runtime::ListArchives(*reading.Data(), management.Store, management.System);
  }
  int Count(StringView outcome) {
    int count = 0;
    for (const runtime::AuditRecord& record : Records())
      count += record.Entry.Outcome.find(outcome) != String::npos;
    return count;
  }
  void Tamper(const std::filesystem::path& file, const char* statements) {
    CloseStore();
    runtime::Database data(file, {disk.Name()}, false);
    data.Run(statements);
  }
};

TEST_F(AuditBoundsTest, TheOldestRecordsGoToAFileOnceThereAreAsManyAsAllowed) {
  Configure("audit-records = 20\n");
  Provision();
  LogOnTimes(30);
  const auto archives = Archives();
  ASSERT_GE(archives.size(), 2u);
  EXPECT_EQ(archives[0].First, 1);
  EXPECT_EQ(archives[0].Last, 10);
  EXPECT_EQ(archives[1].First, 11);
  EXPECT_TRUE(archives[0].IsThere);
  EXPECT_LT(Records().size(), 20u);
  EXPECT_EQ(Records().front().Number, archives.back().Last + 1);
  EXPECT_EQ(VerifyAudit().FirstBroken, 0);
  EXPECT_THAT(runtime::CheckStore(management), IsEmpty());
  runtime::Database first(archives[0].File, {disk.Name()}, false);
  const auto records = runtime::AuditTrail(first, crypto).After(0, 100);
  ASSERT_EQ(records.size(), 10u);
  EXPECT_EQ(records[0].Entry.Action, u"provision");
}

TEST_F(AuditBoundsTest, AWarningComesOnceBeforeTheBound) {
  Configure("audit-records = 20\n");
  Provision();
  const auto told = [this] { return Count(u"warning: 18 of 20 records"); };
  LogOnTimes(8);  // a log-on over another is two records
  ASSERT_EQ(Records().size(), 2u + 15);
  EXPECT_EQ(told(), 0);
  session.LogOffUser();
  LogOnTimes(1);
  EXPECT_EQ(Count(u"warning: "), 1);
  EXPECT_THAT(Archives(), IsEmpty());
}

TEST_F(AuditBoundsTest, RecordsThatAreTooOldGoToAFile) {
  Configure("audit-days = 10\n");
  Provision();
  clock.Seconds += 6 * kDay;
  LogOnTimes(1);
  clock.Seconds += 4 * kDay - 1;
  LogOnTimes(1);
  EXPECT_THAT(Archives(), IsEmpty());
  clock.Seconds += 1;
  LogOnTimes(1);
  const auto archives = Archives();
  ASSERT_EQ(archives.size(), 1u);
  EXPECT_EQ(archives[0].Last, 2);  // the log-on of four days ago stays
  EXPECT_THAT(runtime::CheckStore(management), IsEmpty());
}

TEST_F(AuditBoundsTest, WithoutBoundsEverythingStays) {
  Configure("audit-records = 0\n");
  Provision();
  clock.Seconds += 3650 * kDay;
  LogOnTimes(40);
  EXPECT_THAT(Archives(), IsEmpty());
  EXPECT_EQ(Records().front().Number, 1);
}

TEST_F(AuditBoundsTest, TheFirstRecordOfAnArchiveThatDoesNotHoldIsNamed) {
  Configure("audit-records = 20\n");
  Provision();
  LogOnTimes(30);
  const auto archives = Archives();
  const SimulatedDisk::Files before = disk.Copy();
  const auto problem_after = [&](std::size_t archive, const char* statements) {
    Tamper(archives[archive].File, statements);
    const std::vector<String> problems = runtime::CheckStore(management);
    CloseStore();
    disk.Put(before);
    return problems.empty() ? std::string() : ToUtf8(problems.front());
  };
  EXPECT_EQ(problem_after(0, "SELECT 1"), "");
  EXPECT_THAT(problem_after(0, "UPDATE audit SET outcome = 'x' WHERE number = 4"),
              HasSubstr("audit record 4: it does not follow the one before"));
  EXPECT_THAT(problem_after(1, "DELETE FROM audit WHERE number = 12"),
              HasSubstr("audit record 12: it is missing"));
  EXPECT_THAT(problem_after(1,
                            "DELETE FROM audit; UPDATE audit_chain SET last_number = 10, "
                            "last_hash = hash_before"),
              HasSubstr("the archive is not the one that was written"));
  // One that was carried away is no damage; what is here still begins where it ended.
  CloseStore();
  SimulatedDisk::Files without = before;
  without.erase(archives[0].File.string());
  disk.Put(without);
  EXPECT_THAT(runtime::CheckStore(management), IsEmpty());
  EXPECT_FALSE(Archives()[0].IsThere);
}

TEST_F(AuditBoundsTest, AnArchiveThatCannotBeWrittenLeavesTheRecordsAndIsToldOnce) {
  Configure("audit-records = 20\n");
  Provision();
  LogOnTimes(5);
  disk.RefusesNewFiles = "audit-";
  LogOnTimes(10);
  EXPECT_THAT(Archives(), IsEmpty());
  EXPECT_GT(Records().size(), 20u);
  EXPECT_EQ(Count(u"failed: "), 1);
  disk.RefusesNewFiles.clear();
  LogOnTimes(1);
  EXPECT_EQ(Archives().size(), 1u);
  EXPECT_THAT(runtime::CheckStore(management), IsEmpty());
}

// The machine stops at every step of the log-on that moves the records.
TEST_F(AuditBoundsTest, AMachineThatStopsWhileRecordsMoveLosesNone) {
  Configure("audit-records = 20\n");
  crypto.IsQuick = true;
  Provision();
  LogOnTimes(8);
  session.LogOffUser();
  clock.Seconds += 1;
  CloseStore();
  const SimulatedDisk::Files before = disk.Copy();
  int moved = 0;
  int stayed = 0;
  bool stopped = true;
  for (int step = 1; stopped; ++step) {
    CloseStore();
    disk.Put(before);
    disk.StopAt(step);
    try {
      LogOnTimes(1);
    } catch (const Error&) {
    }
    CloseStore();
    stopped = disk.HasStopped();
    disk.Restart(Loss::ByChance, static_cast<unsigned>(step));
    ASSERT_THAT(runtime::CheckStore(management), IsEmpty()) << step;
    const bool all_here = Records().front().Number == 1;
    (all_here ? stayed : moved) += 1;
    ASSERT_EQ(Archives().size(), all_here ? 0u : 1u);
  }
  EXPECT_GT(stayed, 10);
  EXPECT_GT(moved, 0);
}

TEST_F(AuditBoundsTest, EventsGoToTheMachinesLogOnlyWhereTheRulesSaySo) {
  Provision();
  CollectedEvents events;
  runtime::SystemServices system = System();
  system.Events = &events;
  runtime::Session other_session;
  runtime::UserManagement other(system, folder, other_session);
  runtime::LogOnService logging_on(other);
  logging_on.LogOnUser(u"boss", Secret(u"wrong"));
  EXPECT_THAT(events.Lines, IsEmpty());
  Configure("audit-event-log = on\n");
  logging_on.LogOnUser(u"boss", Secret(kBossSecret));
  ASSERT_FALSE(events.Lines.empty());
  EXPECT_EQ(events.Lines.back(), LastAuditLine());
  // Never what was not stored.
  const std::size_t reported = events.Lines.size();
  disk.ReadOnly = true;
  EXPECT_THROW(logging_on.LogOnUser(u"boss", Secret(kBossSecret)), Error);
  EXPECT_EQ(events.Lines.size(), reported);
}

TEST_F(AuditBoundsTest, ASessionThatIsReplacedIsAnEvent) {
  ProvisionAndLogOn();
  AddUser(u"anna", u"anna's secret");
  LogOn(u"anna", u"anna's secret");
  const auto records = Records();
  EXPECT_EQ(LineOf(records[records.size() - 2]),
            "2026-01-01T00:00:00Z\tboss\tlog-off\t-\treplaced by the log-on of anna\n");
  EXPECT_EQ(LastAuditLine(), "2026-01-01T00:00:00Z\tanna\tlog-on\t-\tlogged on\n");
}

TEST_F(AuditBoundsTest, ALogOnThatEndsByAnErrorIsAnEvent) {
  Provision();
  crypto.Fails = true;
  EXPECT_THROW(LogOn(u"boss", kBossSecret), Error);
  EXPECT_THAT(LastAuditLine(), HasSubstr("log-on\t-\tfailed: "));
}

}  // namespace
}  // namespace krx::test
