#include <sqlite3.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <thread>

#include "runtime/core/KorvelError.h"
#include "support/PosixFiles.h"
#include "support/UserManagementTest.h"

namespace krx::test {
namespace {

// A user management on real files, as every process has its own.
class RealManagement {
 public:
  explicit RealManagement(const std::filesystem::path& folder)
      : Management({Files, Crypto, Clock, {}, {nullptr, kPatience}}, folder, Session) {
    Crypto.Restart(static_cast<std::uint32_t>(getpid()));
  }

  static constexpr std::chrono::minutes kPatience{5};

  PosixFiles Files;
  TestCryptography Crypto;
  TestClock Clock;
  runtime::Session Session;
  runtime::UserManagement Management;
  runtime::LogOnService LogOn{Management};
  runtime::UserDirectory Directory{Management};
};

class ConcurrencyTest : public testing::Test {
 protected:
  ConcurrencyTest() {
    std::string name = (std::filesystem::temp_directory_path() / "krx-users-XXXXXX").string();
    folder = mkdtemp(name.data());
    RealManagement real(folder);
    real.Files.WriteFlushed(folder / "users.conf", "hash-iterations = 1000\n");
    runtime::ProvisionFirstAdministrator(real.Management, u"boss", Secret(u"provisioned secret"));
    real.Directory.ChangeUserPassword(u"boss", Secret(u"boss's secret"),
                                      Secret(u"provisioned secret"));
  }
  ~ConcurrencyTest() override { std::filesystem::remove_all(folder); }

  // Runs the body in a process of its own; it ends without returning here.
  template <class Body>
  pid_t Fork(Body&& body) {
    const pid_t child = fork();
    if (child != 0) return child;
    int code = 99;
    try {
      code = body();
    } catch (...) {
    }
    _exit(code);
  }

  static int ExitCode(pid_t child) {
    int status = 0;
    waitpid(child, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
  }

  std::filesystem::path folder;
};

TEST_F(ConcurrencyTest, TwoProcessesWith200ChangesTogetherLoseNone) {
  const auto change = [this](const String& prefix) {
    RealManagement real(folder);
    if (real.LogOn.LogOnUser(u"boss", Secret(u"boss's secret")) != host::LogOnSucceeded) return 1;
    for (int i = 0; i < 100; ++i) {
      if (real.Directory.CreateUser(Record(prefix + ToString(i))) != host::CreateUserSucceeded)
        return 2;
    }
    return 0;
  };
  const pid_t first = Fork([&] { return change(u"first "); });
  const pid_t second = Fork([&] { return change(u"second "); });
  EXPECT_EQ(ExitCode(first), 0);
  EXPECT_EQ(ExitCode(second), 0);
  RealManagement real(folder);
  EXPECT_EQ(real.Directory.GetUserNames(u"").size(), 201u);
  // One line for each change, both log-ons, the provisioning and its change of password.
  UserStore::Reading reading(real.Management.Store);
  const runtime::AuditVerdict verdict = runtime::AuditTrail(*reading.Data(), real.Crypto).Verify();
  EXPECT_EQ(verdict.Records, 204);
  EXPECT_EQ(verdict.FirstBroken, 0) << ToUtf8(verdict.Reason);
}

TEST_F(ConcurrencyTest, SixtyFourThreadsGuessingGetExactlyTheAllowedAttempts) {
  RealManagement real(folder);
  real.Crypto.Derivations = 0;
  std::atomic<int> wrong = 0;
  std::atomic<int> refused = 0;
  std::vector<std::thread> threads;
  for (int i = 0; i < 64; ++i) {
    threads.emplace_back([&, i] {
      const std::int32_t result = real.LogOn.LogOnUser(u"boss", Password(u"guess" + ToString(i)));
      if (result == host::LogOnInvalidPassword) ++wrong;
      if (result == host::LogOnTooManyFailedLogons) ++refused;
    });
  }
  for (std::thread& thread : threads)
    thread.join();
  EXPECT_EQ(wrong, 5);
  EXPECT_EQ(refused, 59);
  EXPECT_EQ(real.Crypto.Derivations, 64);  // whoever is refused, the time must not tell why
}

TEST_F(ConcurrencyTest, FourProcessesGuessingShareTheAllowedAttempts) {
  std::vector<pid_t> children;
  for (int i = 0; i < 4; ++i) {
    children.push_back(Fork([&] {
      RealManagement real(folder);
      int wrong = 0;
      for (int n = 0; n < 10; ++n)
        wrong += real.LogOn.LogOnUser(u"boss", Secret(u"guess")) == host::LogOnInvalidPassword;
      return wrong;
    }));
  }
  int wrong = 0;
  for (const pid_t child : children)
    wrong += ExitCode(child);
  EXPECT_EQ(wrong, 5);
}

// Kills this process at the n-th system call that changes a file.
int calls_left = 0;

template <class Result, class... Arguments>
struct Deadly {
  static inline Result (*Call)(Arguments...) = nullptr;
  static Result Instead(Arguments... arguments) {
    if (--calls_left == 0) kill(getpid(), SIGKILL);
    return Call(arguments...);
  }
  static void TakePlaceOf(const char* name) {
    sqlite3_vfs* const system = sqlite3_vfs_find(nullptr);
    Call = reinterpret_cast<Result (*)(Arguments...)>(system->xGetSystemCall(system, name));
    system->xSetSystemCall(system, name, reinterpret_cast<sqlite3_syscall_ptr>(&Instead));
  }
};

void DieAtCall(int last) {
  calls_left = last;
  sqlite3_initialize();
  Deadly<ssize_t, int, const void*, size_t, off64_t>::TakePlaceOf("pwrite64");
  Deadly<int, int, off_t>::TakePlaceOf("ftruncate");
  Deadly<int, const char*>::TakePlaceOf("unlink");
  Deadly<int, const char*, int, int>::TakePlaceOf("open");
}

TEST_F(ConcurrencyTest, AProcessKilledAtAnyStepLeavesAStoreThatOthersGoOnWith) {
  int killed = 0;
  for (int last = 1;; ++last) {
    const pid_t child = Fork([&] {
      DieAtCall(last);
      RealManagement real(folder);
      real.Directory.ChangeUserPassword(u"boss", Secret(u"short"), Secret(u"boss's secret"));
      return 0;
    });
    if (ExitCode(child) == 0) break;
    ++killed;
    RealManagement real(folder);
    ASSERT_EQ(real.LogOn.LogOnUser(u"boss", Secret(u"boss's secret")), host::LogOnSucceeded)
        << last;
    UserStore::Reading reading(real.Management.Store);
    ASSERT_EQ(runtime::AuditTrail(*reading.Data(), real.Crypto).Verify().FirstBroken, 0) << last;
  }
  // Three transactions of a journal that is opened, written and removed, and a file of some pages.
  EXPECT_GT(killed, 30);
}

// Runs as a user without rights, because rights do not bind the superuser.
TEST_F(ConcurrencyTest, WithoutTheRightToWriteAChangeIsUnableToSave) {
  RealManagement real(folder);
  ASSERT_EQ(real.LogOn.LogOnUser(u"boss", Secret(u"boss's secret")), host::LogOnSucceeded);
  const runtime::LoggedOnUser boss = *real.Session.Current();
  using std::filesystem::perms;
  const perms readable = perms::owner_read | perms::group_read | perms::others_read;
  for (const auto& entry : std::filesystem::directory_iterator(folder))
    std::filesystem::permissions(entry, readable);
  std::filesystem::permissions(
      folder, readable | perms::owner_exec | perms::group_exec | perms::others_exec);
  const pid_t child = Fork([&] {
    if (geteuid() == 0 && setuid(65'534) != 0) return 98;
    RealManagement mine(folder);
    mine.Session.Begin(boss);
    return static_cast<int>(mine.Directory.CreateUser(Record(u"anna")));
  });
  EXPECT_EQ(ExitCode(child), host::CreateUserUnableToSave);
  std::filesystem::permissions(folder / "users.db", perms::none);
  const pid_t blind = Fork([&] {
    if (geteuid() == 0 && setuid(65'534) != 0) return 98;
    RealManagement mine(folder);
    mine.Session.Begin(boss);
    try {
      mine.Directory.GetUserNames(u"");
      return 97;
    } catch (const Error&) {
      return static_cast<int>(mine.Directory.CreateUser(Record(u"anna")));
    }
  });
  EXPECT_EQ(ExitCode(blind), host::CreateUserCallFailed);
  std::filesystem::permissions(folder, perms::owner_all);
  std::filesystem::permissions(folder / "users.db", perms::owner_read);
  EXPECT_EQ(real.Directory.GetUserNames(u"").size(), 1u);
}

}  // namespace
}  // namespace krx::test
