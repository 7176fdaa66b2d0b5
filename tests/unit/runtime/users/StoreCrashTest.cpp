#include <functional>

#include "support/UserManagementTest.h"

namespace krx::test {
namespace {

// What happens to the store while something goes wrong at every single step of every change.
class StoreCrashTest : public UserManagementTest {
 protected:
  struct Change {
    const char* Name;
    std::function<void(StoreCrashTest&)> Run;
  };

  static const Change kChanges[];

  StoreCrashTest() { crypto.IsQuick = true; }

  void Prepare() {
    crypto.Restart(1);
    ProvisionAndLogOn();
    AddUser(u"anna", u"anna's secret");
    boss = logged_on.Current();
    CloseStore();
  }

  // Everything that is stored, in words; the audit chain is part of it.
  std::string State() {
    UserStore::Reading reading(management.Store);
    if (reading.Data() == nullptr) return "no store";
    EXPECT_EQ(Integrity(*reading.Data()), u"ok");
    std::string state;
    runtime::UserTable table(*reading.Data());
    for (const StoredUser& listed : table.List()) {
      const StoredUser user = *table.FindId(listed.Id);
      state += ToUtf8(user.Name) + " " + ToUtf8(user.ClassName) + " " +
               std::to_string(user.Deactivated) + std::to_string(user.MustRenew) + " " +
               std::to_string(user.Failures) + " " + std::to_string(user.Passwords.size());
      for (const runtime::PasswordHash& hash : user.Passwords)
        state += " " + std::to_string(hash.Key[0]) + "-" + std::to_string(hash.Key[31]);
      state += "\n";
    }
    runtime::AuditTrail trail(*reading.Data(), crypto);
    EXPECT_EQ(trail.Verify().FirstBroken, 0);
    for (const runtime::AuditRecord& record : trail.After(0, 1000))
      state += LineOf(record);
    return state;
  }

  static String Integrity(runtime::Database& database) {
    runtime::Query query(database, "PRAGMA integrity_check");
    return query.Next() ? query.Text(0) : String();
  }

  void Begin() {
    logged_on.Begin(*boss);
    crypto.Restart(2);
  }

  // Runs the change with the machine stopping at this step; false when it was over before.
  bool StopsAt(int step, const Change& change) {
    Begin();
    disk.StopAt(step);
    try {
      change.Run(*this);
    } catch (const Error&) {
    }
    CloseStore();
    return disk.HasStopped();
  }

  // The states from before the change to behind it, as each of its transactions leaves them: what
  // is found whenever the machine stops without losing anything.
  std::vector<std::string> StatesOf(const Change& change, const SimulatedDisk::Files& before) {
    CloseStore();
    disk.Put(before);
    std::vector<std::string> states = {State()};
    bool stopped = true;
    for (int step = 1; stopped; ++step) {
      CloseStore();
      disk.Put(before);
      stopped = StopsAt(step, change);
      disk.Restart(std::nullopt);
      const std::string state = State();
      if (state != states.back()) states.push_back(state);
    }
    CloseStore();
    return states;
  }

  std::optional<runtime::LoggedOnUser> boss;
};

const StoreCrashTest::Change StoreCrashTest::kChanges[] = {
    {"log-on", [](StoreCrashTest& test) { test.LogOn(u"anna", u"anna's secret"); }},
    {"wrong password", [](StoreCrashTest& test) { test.LogOn(u"anna", u"wrong"); }},
    {"change password",
     [](StoreCrashTest& test) {
       test.directory.ChangeUserPassword(u"anna", Secret(u"new secret"), Secret(u"anna's secret"));
     }},
    {"create", [](StoreCrashTest& test) { test.directory.CreateUser(Record(u"berta")); }},
    {"modify",
     [](StoreCrashTest& test) { test.directory.ModifyUser(Record(u"anna", u"new secret")); }},
    {"deactivate", [](StoreCrashTest& test) { test.directory.SetUserActive(u"anna", 0); }},
    {"remove", [](StoreCrashTest& test) { test.directory.RemoveUser(u"anna"); }},
};

// A log-on is two transactions, the attempt and its outcome; an administrator's change is one.
TEST_F(StoreCrashTest, AMachineThatStopsAtAnyStepLeavesTheOldOrTheNewStore) {
  Prepare();
  const SimulatedDisk::Files prepared = disk.Copy();
  int stops = 0;
  for (const Change& change : kChanges) {
    const std::vector<std::string> states = StatesOf(change, prepared);
    const std::string_view name = change.Name;
    const bool checks = name == "log-on" || name == "wrong password" || name == "change password";
    ASSERT_EQ(states.size(), checks ? 3u : 2u) << change.Name;
    bool stopped = true;
    for (int step = 1; stopped; ++step) {
      for (const auto& [loss, seed] :
           {std::pair{Loss::Nothing, 1u}, std::pair{Loss::Everything, 1u},
            std::pair{Loss::ByChance, 1u}, std::pair{Loss::ByChance, 2u},
            std::pair{Loss::ByChance, 3u}}) {
        CloseStore();
        disk.Put(prepared);
        stopped = StopsAt(step, change);
        stops += stopped;
        disk.Restart(loss, static_cast<unsigned>(step) * 10 + seed);
        const std::string found = State();
        ASSERT_TRUE(std::count(states.begin(), states.end(), found) > 0)
            << change.Name << " step " << step << "\n"
            << found;
        // The next change works whatever the last one left behind.
        logged_on.Begin(*boss);
        ASSERT_EQ(directory.CreateUser(Record(u"next")), host::CreateUserSucceeded)
            << change.Name << " step " << step;
      }
    }
  }
  RecordProperty("stops", stops);
  EXPECT_GT(stops, 1500);
}

// What the test above relies on: this disk does lose what was not flushed.
TEST_F(StoreCrashTest, OnADiskThatLiesOfFlushingAStoreIsLost) {
  Prepare();
  const SimulatedDisk::Files prepared = disk.Copy();
  const std::string before = State();
  int lost = 0;
  disk.LiesOfFlushing = true;
  for (unsigned seed = 1; seed < 60; ++seed) {
    CloseStore();
    disk.Put(prepared);
    Begin();
    directory.RemoveUser(u"anna");
    CloseStore();
    disk.Restart(Loss::ByChance, seed);
    try {
      runtime::Database data(folder / "users.db", {disk.Name()}, false);
      runtime::Query query(data, "PRAGMA integrity_check");
      if (!query.Next() || query.Text(0) != u"ok") ++lost;
    } catch (const Error&) {
      ++lost;
    }
  }
  EXPECT_GT(lost, 0);
  EXPECT_NE(before, "no store");
}

TEST_F(StoreCrashTest, ProvisioningThatStopsLeavesNoStoreOrAWholeOne) {
  bool stopped = true;
  int without = 0;
  for (int step = 1; stopped; ++step) {
    for (const Loss loss : {Loss::Nothing, Loss::Everything, Loss::ByChance}) {
      CloseStore();
      disk.Put({});
      disk.StopAt(step);
      try {
        runtime::ProvisionFirstAdministrator(management, u"boss", Secret(u"provisioned secret"));
      } catch (const Error&) {
      }
      CloseStore();
      stopped = disk.HasStopped();
      disk.Restart(loss, static_cast<unsigned>(step));
      if (!directory.GetUserNames(u"").empty()) continue;
      ++without;
      // Nothing stands in the way of a second try.
      runtime::ProvisionFirstAdministrator(management, u"boss", Secret(u"provisioned secret"));
      ASSERT_EQ(directory.GetUserNames(u""), std::vector<String>{u"boss"});
    }
  }
  EXPECT_GT(without, 50);
}

TEST_F(StoreCrashTest, EveryFailingOperationLeavesTheOldOrTheNewStore) {
  Prepare();
  const SimulatedDisk::Files prepared = disk.Copy();
  int failures = 0;
  for (const Change& change : kChanges) {
    const std::vector<std::string> states = StatesOf(change, prepared);
    for (const bool for_good : {false, true}) {
      bool failed = true;
      for (int n = 1; failed; ++n) {
        CloseStore();
        disk.Put(prepared);
        Begin();
        disk.FailAt(n, for_good);
        try {
          change.Run(*this);
        } catch (const Error&) {
        }
        failed = disk.Operations() >= n;
        failures += failed;
        disk.FailAt(0, false);
        // An administrator's change whose record of failure is stored is a further state.
        const std::string found = State();
        const bool is_known = std::any_of(
            states.begin(), states.end(),
            [&](const std::string& one) { return found.starts_with(one) || found == one; });
        ASSERT_TRUE(is_known) << change.Name << n << "\n" << found;
      }
    }
  }
  RecordProperty("failures", failures);
  EXPECT_GT(failures, 500);
}

}  // namespace
}  // namespace krx::test
