#include <tuple>

#include "directory/DirectoryTest.h"
#include "runtime/users/directory/OfflineTable.h"
#include "support/StatementLog.h"
#include "support/UserManagementTest.h"

namespace krx::test {
namespace {

using runtime::OfflineUsers;
using Offline = OfflineUsers::Verdict;

// What a refused log-on without a server takes, and so how long.
class OfflineWorkTest : public UserManagementTest {
 protected:
  using Work = std::tuple<int, std::uint64_t, int, int, int, std::vector<std::string>>;

  void Prepare() {
    Provision();
    rules.HashIterations = 1000;
    rules.Directory.OfflineDays = 7;
    for (const char16_t* const name : {u"adam", u"eva", u"late", u"locked"}) {
      runtime::DirectoryUser user;
      user.Name = name;
      user.ClassName = u"Operator";
      if (user.Name == u"late") clock.Seconds -= 8 * 86'400;
      offline.Remember(rules, user, Password(u"right"));
      if (user.Name == u"late") clock.Seconds += 8 * 86'400;
    }
    for (int i = 0; i < rules.LockOutFailures; ++i)
      ASSERT_EQ(offline.Check(rules, u"locked", Password(u"wrong")).Outcome,
                Offline::WrongPassword);
    CloseStore();
    start = disk.Copy();
  }

  // From the same disk, freshly opened.
  Work WorkOf(const String& name, StringView password, Offline verdict) {
    CloseStore();
    disk.Put(start);
    crypto.Derivations = 0;
    crypto.Iterations = 0;
    disk.Writes = disk.Flushes = 0;
    disk.FailAt(0, false);
    const StatementLog statements;
    EXPECT_EQ(offline.Check(rules, name, Password(password)).Outcome, verdict);
    return {crypto.Derivations.load(), crypto.Iterations.load(), disk.Writes, disk.Flushes,
            disk.Operations(),         statements.Texts()};
  }

  runtime::UserRules rules;
  runtime::OfflineTable kept{management.Store};
  OfflineUsers offline{kept, crypto, clock};
  SimulatedDisk::Files start;
};

TEST_F(OfflineWorkTest, NoRefusalTakesOtherWorkThanAnother) {
  Prepare();
  const Work expected = WorkOf(u"eva", u"wrong", Offline::WrongPassword);
  EXPECT_EQ(std::get<0>(expected), 1);
  EXPECT_GT(std::get<2>(expected), 2);
  EXPECT_EQ(WorkOf(u"eva", u"", Offline::WrongPassword), expected);
  EXPECT_EQ(WorkOf(u"locked", u"right", Offline::LockedOut), expected);
  for (const char16_t* const name : {u"late", u"nobody"})
    EXPECT_EQ(WorkOf(name, u"right", Offline::Unknown), expected) << ToUtf8(name);
}

}  // namespace
}  // namespace krx::test
