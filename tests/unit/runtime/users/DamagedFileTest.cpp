// A database whose bytes on the disk have changed is named, and a backup takes its place.
#include <cstdlib>
#include <fstream>

#include "runtime/users/administration/Recovery.h"
#include "support/PosixFiles.h"
#include "support/UserManagementTest.h"

namespace krx::test {
namespace {

constexpr std::streamoff kPage = 4096;

class DamagedFileTest : public testing::Test {
 protected:
  DamagedFileTest() {
    std::string name = (std::filesystem::temp_directory_path() / "krx-damage-XXXXXX").string();
    folder = mkdtemp(name.data());
    crypto.IsQuick = true;
  }
  ~DamagedFileTest() override { std::filesystem::remove_all(folder); }

  // Every byte of a page becomes another.
  void Damage(std::streamoff page) {
    std::fstream file(folder / "users.db", std::ios::binary | std::ios::in | std::ios::out);
    std::string bytes(kPage, '\0');
    file.seekg(page * kPage);
    file.read(bytes.data(), kPage);
    for (char& byte : bytes)
      byte = static_cast<char>(byte ^ 0x55);
    file.seekp(page * kPage);
    file.write(bytes.data(), kPage);
    ASSERT_TRUE(file.flush());
  }

  std::filesystem::path folder;
  PosixFiles files;
  TestCryptography crypto;
  TestClock clock;
  runtime::Session session;
};

TEST_F(DamagedFileTest, EveryDamagedPageIsNamedAndABackupBringsTheUsersBack) {
  runtime::UserManagement management({files, crypto, clock}, folder, session);
  const Password generated = runtime::GeneratePassword(crypto, management.Rules());
  runtime::ProvisionFirstAdministrator(management, u"boss", generated);
  runtime::BackUpStore(management, folder / "backup.db");
  const auto close = [&] { const UserStore::Use use(management.Store); };
  close();
  const auto size = static_cast<std::streamoff>(std::filesystem::file_size(folder / "users.db"));
  const std::streamoff pages = size / kPage;
  ASSERT_GT(pages, 8);
  for (std::streamoff page = 0; page < pages; ++page) {
    close();
    Damage(page);
    ASSERT_FALSE(runtime::CheckStore(management).empty()) << "page " << page;
    ++clock.Seconds;  // what is kept has its time in its name
    const std::filesystem::path kept = runtime::RestoreStore(management, folder / "backup.db");
    ASSERT_EQ(std::filesystem::file_size(kept), static_cast<std::uintmax_t>(size)) << page;
    ASSERT_THAT(runtime::CheckStore(management), testing::IsEmpty()) << "page " << page;
    ASSERT_EQ(runtime::LogOnService(management).LogOnUser(u"boss", generated),
              host::LogOnRenewPassword)
        << "page " << page;
    std::filesystem::remove(kept);
  }
}

}  // namespace
}  // namespace krx::test
