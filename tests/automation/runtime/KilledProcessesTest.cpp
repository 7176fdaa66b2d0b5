#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <set>

#include "driver/Client.h"
#include "runtime/users/administration/Provisioning.h"
#include "runtime/users/administration/Recovery.h"
#include "runtime/users/administration/UserDirectory.h"
#include "runtime/users/logon/LogOnService.h"
#include "runtime/users/win32/Win32Clock.h"
#include "runtime/users/win32/Win32Cryptography.h"
#include "runtime/users/win32/Win32Files.h"

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
  KilledProcessesTest() {
    std::filesystem::create_directories(folder);
    std::ofstream(folder / "users.conf", std::ios::binary) << "hash-iterations = 1000\n";
    const Password first(u"provisioned secret");
    runtime::ProvisionFirstAdministrator(management, u"boss", first);
    runtime::UserDirectory(management)
        .ChangeUserPassword(u"boss", Password(u"boss's own secret"), first);
  }
  ~KilledProcessesTest() override {
    { const runtime::UserStore::Use closes(management.Store); }
    std::filesystem::remove_all(folder);
  }

  // The users that there have to be after everything that is recorded.
  std::set<String> Recorded() {
    std::set<String> names = {u"boss"};
    runtime::UserStore::Reading reading(management.Store);
    for (const runtime::AuditRecord& record :
         runtime::AuditTrail(*reading.Data(), crypto).After(0, 1'000'000)) {
      if (record.Entry.Action == u"create user") names.insert(record.Entry.Subject);
      if (record.Entry.Action == u"remove user") names.erase(record.Entry.Subject);
    }
    return names;
  }

  std::set<String> Stored() {
    const auto names = runtime::UserDirectory(management).GetUserNames(u"");
    return {names.begin(), names.end()};
  }

  const std::filesystem::path folder = std::filesystem::temp_directory_path() /
                                       ("krx-killed-" + std::to_string(GetCurrentProcessId()));
  runtime::Win32Files files;
  runtime::Win32Cryptography crypto;
  runtime::Win32Clock clock;
  runtime::Session session;
  runtime::UserManagement management{{files, crypto, clock}, folder, session};
};

TEST_F(KilledProcessesTest, LeaveEveryChangeWithItsRecordOrNeither) {
  const int kills = Kills();
  for (int i = 0; i < kills; ++i) {
    drive::Client worker(L"\"" + (drive::ProgramFolder() / "users_worker.exe").wstring() +
                         L"\" \"" + folder.wstring() + L"\" " + std::to_wstring(i));
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
