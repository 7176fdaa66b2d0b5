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
      : Management({Files, Crypto, Clock}, folder, Session) {
    Crypto.Restart(static_cast<std::uint32_t>(getpid()));
  }

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
  const std::string log = real.Files.Read(folder / "audit.log").value();
  EXPECT_EQ(std::count(log.begin(), log.end(), '\n'), 204);
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
  EXPECT_EQ(real.Crypto.Derivations, 5);
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

TEST_F(ConcurrencyTest, AProcessKilledAtAnyStepLeavesAStoreThatOthersGoOnWith) {
  int killed = 0;
  for (int last = 1;; ++last) {
    const pid_t child = Fork([&] {
      RealManagement real(folder);
      int step = 0;
      real.Files.BeforeStep = [&] {
        if (++step == last) kill(getpid(), SIGKILL);
      };
      real.Directory.ChangeUserPassword(u"boss", Secret(u"short"), Secret(u"boss's secret"));
      return 0;
    });
    if (ExitCode(child) == 0) break;
    ++killed;
    RealManagement real(folder);
    ASSERT_EQ(real.LogOn.LogOnUser(u"boss", Secret(u"boss's secret")), host::LogOnSucceeded)
        << last;
  }
  // Two saves of four writing and two replacing steps, and two steps of the audit line.
  EXPECT_EQ(killed, 14);
}

// Runs as a user without rights, because rights do not bind the superuser.
TEST_F(ConcurrencyTest, WithoutTheRightToWriteAChangeIsUnableToSave) {
  RealManagement real(folder);
  ASSERT_EQ(real.LogOn.LogOnUser(u"boss", Secret(u"boss's secret")), host::LogOnSucceeded);
  using std::filesystem::perms;
  const perms readable = perms::owner_read | perms::group_read | perms::others_read;
  const perms open_lock = readable | perms::owner_write | perms::group_write | perms::others_write;
  for (const auto& entry : std::filesystem::directory_iterator(folder))
    std::filesystem::permissions(entry, readable);
  std::filesystem::permissions(folder / "users.lock", open_lock);
  std::filesystem::permissions(
      folder, readable | perms::owner_exec | perms::group_exec | perms::others_exec);
  const pid_t child = Fork([&] {
    if (geteuid() == 0 && setuid(65'534) != 0) return 98;
    return static_cast<int>(real.Directory.CreateUser(Record(u"anna")));
  });
  EXPECT_EQ(ExitCode(child), host::CreateUserUnableToSave);
  std::filesystem::permissions(folder / "users.dat", perms::none);
  const pid_t blind = Fork([&] {
    if (geteuid() == 0 && setuid(65'534) != 0) return 98;
    try {
      real.Directory.GetUserNames(u"");
      return 97;
    } catch (const Error&) {
      return static_cast<int>(real.Directory.CreateUser(Record(u"anna")));
    }
  });
  EXPECT_EQ(ExitCode(blind), host::CreateUserCallFailed);
  std::filesystem::permissions(folder, perms::owner_all);
  std::filesystem::permissions(folder / "users.dat", perms::owner_read);
  EXPECT_EQ(real.Directory.GetUserNames(u"").size(), 1u);
}

}  // namespace
}  // namespace krx::test
