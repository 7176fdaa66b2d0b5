#include "runtime/users/RulesInForce.h"

#include "support/UserManagementTest.h"

namespace krx::test {
namespace {

using testing::HasSubstr;

class RulesInForceTest : public UserManagementTest {
 protected:
  // The outcomes of all events of this action.
  std::vector<std::string> OutcomesOf(StringView action) {
    std::vector<std::string> outcomes;
    for (const runtime::AuditRecord& record : Records()) {
      if (record.Entry.Action == action) outcomes.push_back(ToUtf8(record.Entry.Outcome));
    }
    return outcomes;
  }
  std::vector<std::string> Changes() { return OutcomesOf(u"change rules"); }
  std::vector<std::string> Refusals() { return OutcomesOf(u"read rules"); }

  // The users as a process has them that has just begun.
  struct Later {
    explicit Later(RulesInForceTest& test) : Management(test.System(), test.folder, Session) {}
    runtime::Session Session;
    runtime::UserManagement Management;
  };
};

TEST_F(RulesInForceTest, WhileTheFileIsMalformedTheLastGoodRulesHold) {
  ProvisionAndLogOn();
  Configure("minimum-length = 20\n");
  EXPECT_EQ(management.Rules().MinimumLength, 20);
  Configure("minimum-length = 4\nnonsense\n");
  EXPECT_EQ(management.Rules().MinimumLength, 20);
  EXPECT_EQ(LogOn(u"boss", kBossSecret), host::LogOnSucceeded);
  EXPECT_EQ(directory.CreateUser(Record(u"anna")), host::CreateUserInvalidLength);
  EXPECT_EQ(directory.CreateUser(Record(u"anna", u"twenty letters at least")),
            host::CreateUserSucceeded);
  EXPECT_EQ(classes.GetUserClasses().Names.size(), 3u);
}

TEST_F(RulesInForceTest, WhoAsksAgainAndAgainLooksAtTheFileOnceInAWhile) {
  Provision();
  runtime::SystemServices lagging = System();
  lagging.RulesLag = std::chrono::hours(24);
  runtime::UserManagement patient(lagging, folder, logged_on);
  for (int i = 0; i < 2; ++i)  // what has just been read is compared once more
    EXPECT_EQ(patient.Rules().MinimumLength, 8);
  Configure("minimum-length = 20\n");
  EXPECT_EQ(patient.Rules().MinimumLength, 8);
  EXPECT_EQ(management.Rules().MinimumLength, 20);
}

TEST_F(RulesInForceTest, TheLastGoodRulesHoldForProcessesThatStartLater) {
  Provision();
  Configure("minimum-length = 20\n");
  management.Rules();
  Configure("minimum-length = zwanzig\n");
  Later later(*this);
  EXPECT_EQ(later.Management.Rules().MinimumLength, 20);
  EXPECT_EQ(Refusals().size(), 1u);
}

TEST_F(RulesInForceTest, AMalformedFileIsRecordedOnceWithFileLineAndReason) {
  Provision();
  Configure("nonsense\n");
  const String fault = (folder / "users.conf").u16string() + u", line 2: \"=\" is missing";
  EXPECT_EQ(management.FaultOfRules(), fault);
  for (int i = 0; i < 3; ++i)
    LogOn(u"boss", kBossSecret);
  Later later(*this);
  later.Management.Rules();
  const std::string recorded = "refused, the rules before stay in force: " + ToUtf8(fault);
  EXPECT_EQ(Refusals(), std::vector<std::string>{recorded});
  Configure("other nonsense\n");
  later.Management.Rules();
  management.Rules();
  EXPECT_EQ(Refusals().size(), 2u);
}

TEST_F(RulesInForceTest, AFileThatIsGoodAgainHoldsAndIsRecorded) {
  Provision();
  Configure("nonsense\n");
  management.Rules();
  Configure("");
  management.Rules();
  EXPECT_EQ(management.FaultOfRules(), std::nullopt);
  EXPECT_EQ(Changes(), std::vector<std::string>{"in force: the same as before"});
  Configure("nonsense\n");  // the same once more is another event
  management.Rules();
  EXPECT_EQ(Refusals().size(), 2u);
}

TEST_F(RulesInForceTest, ChangedRulesAreRecordedWithWhatHasChanged) {
  Provision();
  Configure("minimum-length = 10\nlock-out-minutes = 0\n");
  management.Rules();
  Later later(*this);
  later.Management.Rules();
  EXPECT_EQ(Changes(), std::vector<std::string>{"in force: minimum-length 10 instead of 8, "
                                                "lock-out-minutes 0 instead of 15"});
  Configure("class = Chief | 100 | Chief\n");
  later.Management.Rules();
  EXPECT_EQ(Changes().back(),
            "in force: minimum-length 8 instead of 10, lock-out-minutes 15 instead of 0, "
            "other classes");
}

TEST_F(RulesInForceTest, ANewCommentChangesNothing) {
  Provision();
  const std::size_t events = Records().size();
  Configure("# a comment\n");
  management.Rules();
  EXPECT_EQ(Records().size(), events);
}

TEST_F(RulesInForceTest, WhatCannotBeRecordedDoesNotHoldYet) {
  Provision();
  Configure("minimum-length = 10\n");
  disk.ReadOnly = true;
  EXPECT_EQ(management.Rules().MinimumLength, 8);
  disk.ReadOnly = false;
  EXPECT_EQ(management.Rules().MinimumLength, 10);
  EXPECT_EQ(Changes().size(), 1u);
}

TEST_F(RulesInForceTest, AMalformedFileThatCannotBeRecordedLeavesTheRules) {
  Provision();
  Configure("nonsense\n");
  disk.ReadOnly = true;
  EXPECT_EQ(management.Rules().MinimumLength, 8);
  disk.ReadOnly = false;
  management.Rules();
  EXPECT_EQ(Refusals().size(), 1u);
}

TEST_F(RulesInForceTest, WithoutGoodRulesBeforeEveryOperationReportsTheFile) {
  Configure("nonsense\n");
  try {
    LogOn(u"boss", kBossSecret);
    FAIL();
  } catch (const Error& failure) {
    EXPECT_EQ(failure.Status(), runtime::kMalformedRules);
    EXPECT_THAT(ToUtf8(failure.Description()), HasSubstr("users.conf, line 2: \"=\" is missing"));
  }
  EXPECT_THROW(directory.GetAdministrationMode(), Error);
  EXPECT_THROW(classes.GetUserClasses(), Error);
  EXPECT_EQ(directory.CreateUser(Record(u"anna")), host::CreateUserCallFailed);
}

// A store of before this was kept has no rules yet: the first good ones are taken without an event.
TEST_F(RulesInForceTest, AnOlderStoreTakesTheFirstGoodRules) {
  Provision();
  CloseStore();
  runtime::Database(folder / "users.db", {disk.Name()}, false).Run("DELETE FROM rules_in_force");
  Later later(*this);
  later.Management.Rules();
  Configure("nonsense\n");
  Later last(*this);
  EXPECT_EQ(last.Management.Rules().MinimumLength, 8);
  EXPECT_EQ(Changes().size(), 0u);
}

}  // namespace
}  // namespace krx::test
