#include <gtest/gtest.h>

#include <cstdlib>
#include <set>

#include "PlantFolder.h"
#include "driver/Client.h"
#include "runtime/users/administration/Recovery.h"

namespace krx::test {
namespace {

constexpr DWORD kKilled = 9;
constexpr int kFewKills = 15;  // the environment variable KRX_KILLS asks for others

int Kills() {
  const char* const wanted = std::getenv("KRX_KILLS");
  return wanted ? std::atoi(wanted) : kFewKills;
}

class KilledProcessesTest : public testing::Test {
 protected:
  // The users that there have to be after everything that is recorded.
  std::set<String> Recorded() {
    std::set<String> names = {u"boss"};
    runtime::UserStore::Reading reading(management.Store);
    for (const runtime::AuditRecord& record :
         runtime::AuditTrail(*reading.Data(), plant.Crypto).After(0, 1'000'000)) {
      if (record.Entry.Action == u"create user") names.insert(record.Entry.Subject);
      if (record.Entry.Action == u"remove user") names.erase(record.Entry.Subject);
    }
    return names;
  }

  std::set<String> Stored() {
    const auto names = plant.Directory.GetUserNames(u"");
    return {names.begin(), names.end()};
  }

  PlantFolder plant{"killed"};
  runtime::UserManagement& management = plant.Management;
};

TEST_F(KilledProcessesTest, LeaveEveryChangeWithItsRecordOrNeither) {
  const int kills = Kills();
  for (int i = 0; i < kills; ++i) {
    drive::Client worker(L"\"" + (drive::ProgramFolder() / "users_worker.exe").wstring() +
                         L"\" \"" + plant.Folder.wstring() + L"\" " + std::to_wstring(i));
    ASSERT_EQ(worker.Finish(), kKilled) << i;
    ASSERT_EQ(runtime::CheckStore(management), std::vector<String>()) << i;
    ASSERT_EQ(Stored(), Recorded()) << i;
  }
  RecordProperty("kills", kills);
  // The workers had something to do.
  EXPECT_GT(Stored().size(), 1u);
}

}  // namespace
}  // namespace krx::test
