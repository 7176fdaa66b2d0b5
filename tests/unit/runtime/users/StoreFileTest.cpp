#include <functional>

#include "support/UserManagementTest.h"

namespace krx::test {
namespace {

class StoreFileTest : public UserManagementTest {
 protected:
  struct Change {
    const char* Name;
    std::function<void(StoreFileTest&)> Run;
  };

  static const Change kChanges[];

  StoreFileTest() { crypto.IsQuick = true; }

  void Prepare() {
    crypto.Restart(1);
    ProvisionAndLogOn();
    AddUser(u"anna", u"anna's secret");
  }

  static constexpr std::optional<Tear> kRestarts[] = {std::nullopt,    Tear::Nothing,
                                                      Tear::FirstHalf, Tear::AllButLastByte,
                                                      Tear::Zeros,     Tear::Everything};

  // Whether the machine stops at this step of the change.
  bool StopsAt(int step, const Change& change) {
    logged_on.Begin({1, u"boss"});
    crypto.Restart(2);
    files.StopAt(step);
    try {
      change.Run(*this);
    } catch (const MachineStopped&) {
      return true;
    }
    return false;
  }

  // The store as it is after each save of the change, the one before it included.
  std::vector<std::string> StatesOf(const Change& change) {
    const SimulatedFiles before = files;
    crypto.Restart(2);
    files.Replacements.clear();
    const std::string old = files.Content(StorePath());
    logged_on.Begin({1, u"boss"});
    change.Run(*this);
    std::vector<std::string> states = files.Replacements;
    states.insert(states.begin(), old);
    files = before;
    return states;
  }
};

const StoreFileTest::Change StoreFileTest::kChanges[] = {
    {"log-on", [](StoreFileTest& test) { test.LogOn(u"anna", u"anna's secret"); }},
    {"wrong password", [](StoreFileTest& test) { test.LogOn(u"anna", u"wrong"); }},
    {"change password",
     [](StoreFileTest& test) {
       test.directory.ChangeUserPassword(u"anna", Secret(u"new secret"), Secret(u"anna's secret"));
     }},
    {"create", [](StoreFileTest& test) { test.directory.CreateUser(Record(u"berta")); }},
    {"modify",
     [](StoreFileTest& test) { test.directory.ModifyUser(Record(u"anna", u"new secret")); }},
    {"deactivate", [](StoreFileTest& test) { test.directory.SetUserActive(u"anna", 0); }},
    {"remove", [](StoreFileTest& test) { test.directory.RemoveUser(u"anna"); }},
};

TEST_F(StoreFileTest, AMachineThatStopsAtAnyStepLeavesTheOldOrTheNewStore) {
  Prepare();
  const SimulatedFiles prepared = files;
  int stops = 0;
  for (const Change& change : kChanges) {
    files = prepared;
    const std::vector<std::string> states = StatesOf(change);
    for (const std::optional<Tear> power_failure : kRestarts) {
      bool stopped = true;
      for (int step = 1; stopped; ++step) {
        files = prepared;
        stopped = StopsAt(step, change);
        stops += stopped;
        files.Restart(power_failure.has_value(), power_failure.value_or(Tear::Everything));
        ASSERT_EQ(files.Held, 0);
        const std::string& found = files.Content(StorePath());
        ASSERT_TRUE(std::count(states.begin(), states.end(), found) > 0)
            << change.Name << " step " << step << "\n"
            << found;
        // The next change works whatever the last one left behind.
        logged_on.Begin({1, u"boss"});
        ASSERT_EQ(directory.CreateUser(Record(u"next")), host::CreateUserSucceeded)
            << change.Name << " step " << step << "\n"
            << LastAuditLine();
      }
    }
  }
  RecordProperty("stops", stops);
  EXPECT_GT(stops, 300);
}

TEST_F(StoreFileTest, ProvisioningThatStopsLeavesNoStoreOrAWholeOne) {
  bool stopped = true;
  int without = 0;
  for (int step = 1; stopped; ++step) {
    for (const Tear tear : {Tear::Nothing, Tear::FirstHalf, Tear::Zeros, Tear::Everything}) {
      files = SimulatedFiles();
      Configure("");
      files.StopAt(step);
      try {
        runtime::ProvisionFirstAdministrator(management, u"boss", Secret(u"provisioned secret"));
        stopped = false;
      } catch (const MachineStopped&) {
      }
      files.Restart(true, tear);
      if (!directory.GetUserNames(u"").empty()) continue;
      ++without;
      // Nothing stands in the way of a second try.
      runtime::ProvisionFirstAdministrator(management, u"boss", Secret(u"provisioned secret"));
      ASSERT_EQ(directory.GetUserNames(u""), std::vector<String>{u"boss"});
    }
  }
  EXPECT_GT(without, 0);
}

TEST_F(StoreFileTest, EveryFailingFileOperationLeavesTheOldOrTheNewStore) {
  for (const bool for_good : {false, true}) {
    for (const Change& change : kChanges) {
      bool failed = true;
      for (int n = 1; failed; ++n) {
        files = SimulatedFiles();
        logged_on.End();
        Configure("");
        Prepare();
        const std::vector<std::string> states = StatesOf(change);
        logged_on.Begin({1, u"boss"});
        crypto.Restart(2);
        files.FailAt(n, for_good);
        try {
          change.Run(*this);
        } catch (const Error&) {
        }
        failed = files.Operations() >= n;
        files.FailAt(0, false);
        const std::string& found = files.Content(StorePath());
        ASSERT_TRUE(std::count(states.begin(), states.end(), found) > 0) << change.Name << n;
        ASSERT_EQ(files.Held, 0);
      }
    }
  }
}

TEST_F(StoreFileTest, AReplacementThatFailsHalfWayIsCompleted) {
  Prepare();
  files.ReplaceFails = SimulatedFiles::Halfway::OldFileGone;
  EXPECT_EQ(directory.SetUserActive(u"anna", 0), host::ModifyUserSucceeded);
  EXPECT_EQ(directory.GetUserInfo(u"anna").State, host::UserDeactivated);
}

TEST_F(StoreFileTest, AReplacementReportedAsFailedThoughDoneIsDone) {
  Prepare();
  files.ReplaceFails = SimulatedFiles::Halfway::ReportedThoughDone;
  EXPECT_EQ(directory.SetUserActive(u"anna", 0), host::ModifyUserSucceeded);
  EXPECT_EQ(directory.GetUserInfo(u"anna").State, host::UserDeactivated);
}

TEST_F(StoreFileTest, AReplacementThatNeverCompletesLosesNothing) {
  Prepare();
  files.ReplaceFails = SimulatedFiles::Halfway::AlwaysOldFileGone;
  EXPECT_EQ(directory.SetUserActive(u"anna", 0), host::ModifyUserUnableToSave);
  EXPECT_FALSE(files.Exists(StorePath()));
  files.ReplaceFails = SimulatedFiles::Halfway::No;
  EXPECT_THAT(directory.GetUserNames(u""), testing::ElementsAre(u"anna", u"boss"));
  EXPECT_TRUE(files.Exists(StorePath()));
  EXPECT_THROW(
      runtime::ProvisionFirstAdministrator(management, u"x", Secret(u"provisioned secret")), Error);
}

TEST_F(StoreFileTest, AStoreOnAReadOnlyDiskCanBeReadButNotSaved) {
  Prepare();
  const std::string before = files.Content(StorePath());
  files.ReadOnly = true;
  EXPECT_EQ(directory.GetUserNames(u"").size(), 2u);
  EXPECT_EQ(directory.SetUserActive(u"anna", 0), host::ModifyUserUnableToSave);
  EXPECT_EQ(files.Content(StorePath()), before);
}

TEST_F(StoreFileTest, ADamagedStoreIsReportedByEveryOperationAndStaysAsItIs) {
  Prepare();
  std::string& content = files.Content(StorePath());
  content[content.size() / 2] ^= 1;
  const std::string damaged = content;
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
      runtime::ProvisionFirstAdministrator(management, u"x", Secret(u"provisioned secret")), Error);
  EXPECT_EQ(session.LogOffUser(), 0);
  EXPECT_EQ(files.Content(StorePath()), damaged);
}

TEST_F(StoreFileTest, AStoreWithoutTheRightToReadItIsNotTakenForMissing) {
  Prepare();
  files.Unreadable = true;
  EXPECT_THROW(LogOn(u"anna", u"anna's secret"), Error);
  EXPECT_THROW(
      runtime::ProvisionFirstAdministrator(management, u"x", Secret(u"provisioned secret")), Error);
}

TEST_F(StoreFileTest, ATruncatedStoreOfEveryLengthStaysAsItIs) {
  Prepare();
  const std::string whole = files.Content(StorePath());
  for (std::size_t length = 0; length < whole.size(); ++length) {
    files.Content(StorePath()) = whole.substr(0, length);
    ASSERT_EQ(directory.RemoveUser(u"anna"), host::ModifyUserCallFailed) << length;
    ASSERT_EQ(files.Content(StorePath()), whole.substr(0, length));
  }
}

TEST_F(StoreFileTest, AStoreThatWasNotReadIsNeverReplaced) {
  Prepare();
  runtime::StoreFile::Hold hold(management.Store);
  EXPECT_THROW(hold.Save(UserStore()), std::logic_error);
}

}  // namespace
}  // namespace krx::test
