#include <gtest/gtest.h>
#include <windows.h>

#include <atomic>
#include <chrono>
#include <filesystem>
#include <thread>
#include <vector>

#include "runtime/core/KorvelError.h"
#include "runtime/users/administration/Provisioning.h"
#include "runtime/users/administration/UserDirectory.h"
#include "runtime/users/logon/LogOnService.h"
#include "runtime/users/win32/Win32Clock.h"
#include "runtime/users/win32/Win32Cryptography.h"
#include "runtime/users/win32/Win32Files.h"

namespace krx::test {
namespace {

class Win32ServicesTest : public testing::Test {
 protected:
  Win32ServicesTest() {
    folder = std::filesystem::temp_directory_path() /
             ("krx-users-" + std::to_string(GetCurrentProcessId()));
    std::filesystem::create_directories(folder);
  }
  ~Win32ServicesTest() override { std::filesystem::remove_all(folder); }

  std::filesystem::path folder;
  runtime::Win32Files files;
};

TEST_F(Win32ServicesTest, TheDerivationGivesThePublishedResults) {
  runtime::Win32Cryptography crypto;
  const std::uint8_t password[] = {'p', 'a', 's', 's', 'w', 'd'};
  const std::uint8_t salt[] = {'s', 'a', 'l', 't'};
  std::vector<std::uint8_t> key(8);
  crypto.DeriveKey(password, salt, 1, key);  // RFC 7914, section 11
  EXPECT_EQ(key, (std::vector<std::uint8_t>{0x55, 0xAC, 0x04, 0x6E, 0x56, 0xE3, 0x08, 0x9F}));
  const std::uint8_t other[] = {'P', 'a', 's', 's', 'w', 'o', 'r', 'd'};
  const std::uint8_t other_salt[] = {'N', 'a', 'C', 'l'};
  crypto.DeriveKey(other, other_salt, 80'000, key);
  EXPECT_EQ(key, (std::vector<std::uint8_t>{0x4D, 0xDC, 0xD8, 0xF6, 0x0B, 0x98, 0xBE, 0x21}));
}

TEST_F(Win32ServicesTest, AnEmptyPasswordIsDerivedToo) {
  runtime::Win32Cryptography crypto;
  const std::vector<std::uint8_t> salt(16);
  std::vector<std::uint8_t> key(32);
  crypto.DeriveKey({}, salt, 1000, key);
  EXPECT_NE(key, std::vector<std::uint8_t>(32));
}

TEST_F(Win32ServicesTest, RandomBytesDiffer) {
  runtime::Win32Cryptography crypto;
  std::vector<std::uint8_t> first(32);
  std::vector<std::uint8_t> second(32);
  crypto.FillRandom(first);
  crypto.FillRandom(second);
  EXPECT_NE(first, second);
}

TEST_F(Win32ServicesTest, TheClockIsThatOfTheLibrary) {
  const auto now = std::chrono::duration_cast<std::chrono::seconds>(
                       std::chrono::system_clock::now().time_since_epoch())
                       .count();
  EXPECT_NEAR(static_cast<double>(runtime::Win32Clock().Now()), static_cast<double>(now), 600.0);
}

TEST_F(Win32ServicesTest, FilesAreWrittenReplacedAndAppended) {
  EXPECT_FALSE(files.Read(folder / "a").has_value());
  EXPECT_FALSE(files.LastByte(folder / "a").has_value());
  files.WriteFlushed(folder / "a", "");
  EXPECT_FALSE(files.LastByte(folder / "a").has_value());
  files.WriteFlushed(folder / "a", std::string(100'000, 'x'));
  EXPECT_EQ(files.Read(folder / "a"), std::string(100'000, 'x'));
  files.WriteFlushed(folder / "a", "short");
  files.WriteFlushed(folder / "b", "old");
  files.Replace(folder / "a", folder / "b");
  EXPECT_EQ(files.Read(folder / "b"), "short");
  EXPECT_FALSE(files.Read(folder / "a").has_value());
  files.Append(folder / "b", "er");
  files.Append(folder / "c", "new");
  EXPECT_EQ(files.Read(folder / "b"), "shorter");
  EXPECT_EQ(files.Read(folder / "c"), "new");
  EXPECT_EQ(files.LastByte(folder / "b"), 'r');
}

TEST_F(Win32ServicesTest, FailuresNameTheFile) {
  try {
    files.Replace(folder / "missing", folder / "b");
    FAIL();
  } catch (const Error& failure) {
    EXPECT_NE(failure.Description().find(u"b: "), String::npos) << failure.what();
  }
  EXPECT_THROW(files.WriteFlushed(folder / "no folder" / "x", "x"), Error);
  EXPECT_THROW(files.Read(folder), Error);
}

TEST_F(Win32ServicesTest, AFileThatAnotherProgramReadsIsReplacedOnceItIsDone) {
  files.WriteFlushed(folder / "a", "old");
  files.WriteFlushed(folder / "b", "new");
  const HANDLE reader = CreateFileW((folder / "a").c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr,
                                    OPEN_EXISTING, 0, nullptr);
  ASSERT_NE(reader, INVALID_HANDLE_VALUE);
  std::thread done([reader] {
    Sleep(50);
    CloseHandle(reader);
  });
  files.Replace(folder / "b", folder / "a");
  done.join();
  EXPECT_EQ(files.Read(folder / "a"), "new");
}

TEST_F(Win32ServicesTest, ALockIsHeldByOneThreadAtATime) {
  int inside = 0;
  std::atomic<int> most = 0;
  std::vector<std::thread> threads;
  for (int i = 0; i < 8; ++i) {
    threads.emplace_back([&] {
      for (int n = 0; n < 20; ++n) {
        const auto lock = files.Lock(folder / "lock");
        most = std::max(most.load(), ++inside);
        --inside;
      }
    });
  }
  for (std::thread& thread : threads)
    thread.join();
  EXPECT_EQ(most, 1);
}

TEST_F(Win32ServicesTest, AFirstAdministratorLogsOnWithTheDefaultWork) {
  runtime::Win32Cryptography crypto;
  runtime::Win32Clock clock;
  runtime::Session session;
  runtime::UserManagement management({files, crypto, clock}, folder, session);
  const Password first = runtime::GeneratePassword(crypto, management.Rules());
  runtime::ProvisionFirstAdministrator(management, u"boss", first);
  runtime::UserDirectory directory(management);
  runtime::LogOnService log_on(management);
  EXPECT_EQ(log_on.LogOnUser(u"boss", first), host::LogOnRenewPassword);
  EXPECT_EQ(directory.ChangeUserPassword(u"boss", Password(u"boss's secret"), first),
            host::ChangePasswordSucceeded);
  const ULONGLONG start = GetTickCount64();
  EXPECT_EQ(log_on.LogOnUser(u"boss", Password(u"boss's secret")), host::LogOnSucceeded);
  RecordProperty("log_on_milliseconds", static_cast<int>(GetTickCount64() - start));
  EXPECT_EQ(directory.GetCurrentUser().Name, u"boss");
}

}  // namespace
}  // namespace krx::test
