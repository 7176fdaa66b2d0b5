#include <gtest/gtest.h>
#include <windows.h>

#include <chrono>
#include <filesystem>
#include <thread>
#include <vector>

#include "contract/KeyProtectionContract.h"
#include "runtime/core/KorvelError.h"
#include "runtime/users/administration/Provisioning.h"
#include "runtime/users/administration/UserDirectory.h"
#include "runtime/users/logon/LogOnService.h"
#include "runtime/users/win32/Win32Clock.h"
#include "runtime/users/win32/Win32Cryptography.h"
#include "runtime/users/win32/Win32Files.h"
#include "runtime/users/win32/Win32KeyProtection.h"
#include "runtime/users/win32/Win32Origin.h"

namespace krx::test {
namespace {

class Win32ServicesTest : public testing::Test {
 protected:
  Win32ServicesTest() { std::filesystem::create_directories(folder); }
  ~Win32ServicesTest() override { std::filesystem::remove_all(folder); }

  std::filesystem::path folder = std::filesystem::temp_directory_path() /
                                 ("krx-users-" + std::to_string(GetCurrentProcessId()));
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

TEST_F(Win32ServicesTest, TheDigestGivesThePublishedResult) {
  runtime::Win32Cryptography crypto;
  const std::uint8_t text[] = {'a', 'b', 'c'};
  const runtime::Digest digest = crypto.Hash(text);  // FIPS 180-4
  EXPECT_EQ(std::vector<std::uint8_t>(digest.begin(), digest.begin() + 8),
            (std::vector<std::uint8_t>{0xBA, 0x78, 0x16, 0xBF, 0x8F, 0x01, 0xCF, 0xEA}));
  EXPECT_EQ(crypto.Hash({})[0], 0xE3);
}

TEST_F(Win32ServicesTest, AuthenticationGivesThePublishedResult) {
  runtime::Win32Cryptography crypto;  // RFC 4231, test case 2
  const std::uint8_t key[] = {'J', 'e', 'f', 'e'};
  const std::string text = "what do ya want for nothing?";
  const runtime::Digest digest =
      crypto.Authenticate(key, std::vector<std::uint8_t>(text.begin(), text.end()));
  EXPECT_EQ(std::vector<std::uint8_t>(digest.begin(), digest.begin() + 8),
            (std::vector<std::uint8_t>{0x5B, 0xDC, 0xC1, 0x46, 0xBF, 0x60, 0x75, 0x4E}));
}

TEST_F(Win32ServicesTest, TheProtectionOfKeysKeepsItsContract) {
  runtime::Win32KeyProtection protection;
  KeepsItsContract(protection);
}

TEST_F(Win32ServicesTest, PasswordsAreNormalised) {
  runtime::Win32Cryptography crypto;
  const auto normal = [&crypto](StringView text) {
    return String(crypto.Normalized(Password(text)).View());
  };
  EXPECT_EQ(normal(u""), u"");
  EXPECT_EQ(normal(u"plain 1"), u"plain 1");
  EXPECT_EQ(normal(u"Ka\u0308se \u212B"), u"K\u00E4se \u00C5");
  // One that the form takes apart, into the most parts that there are.
  EXPECT_EQ(normal(u"\uFB2C"), u"\u05E9\u05BC\u05C1");
  EXPECT_EQ(normal(u"a\u0308 \xD800 b"), u"a\u0308 \xD800 b");
}

TEST_F(Win32ServicesTest, FilesAreWrittenAndReplaced) {
  EXPECT_FALSE(files.Read(folder / "a").has_value());
  files.WriteFlushed(folder / "a", std::string(100'000, 'x'));
  EXPECT_EQ(files.Read(folder / "a"), std::string(100'000, 'x'));
  files.WriteFlushed(folder / "a", "short");
  files.WriteFlushed(folder / "b", "old");
  files.Replace(folder / "a", folder / "b");
  EXPECT_EQ(files.Read(folder / "b"), "short");
  EXPECT_FALSE(files.Read(folder / "a").has_value());
}

TEST_F(Win32ServicesTest, AFileIsSettledWhenItHasNotBeenWrittenForSomeTime) {
  EXPECT_FALSE(files.Stamp(folder / "a").Exists);
  files.WriteFlushed(folder / "a", "12345");
  const runtime::FileStamp young = files.Stamp(folder / "a");
  EXPECT_TRUE(young.Exists);
  EXPECT_FALSE(young.IsSettled);
  EXPECT_EQ(young.Size, 5u);
  using namespace std::chrono_literals;
  std::filesystem::last_write_time(folder / "a",
                                   std::filesystem::last_write_time(folder / "a") - 10s);
  const runtime::FileStamp old = files.Stamp(folder / "a");
  EXPECT_TRUE(old.IsSettled);
  EXPECT_LT(old.Time, young.Time);
}

TEST_F(Win32ServicesTest, EventsNameStationProcessAndAccount) {
  const runtime::AuditOrigin origin = runtime::OriginOfProcess();
  EXPECT_FALSE(origin.Station.empty());
  EXPECT_FALSE(origin.Account.empty());
  EXPECT_EQ(origin.Process, u"runtime_tests.exe (" +
                                ToString(static_cast<std::int32_t>(GetCurrentProcessId())) + u")");
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
