#include "runtime/users/win32/FolderRights.h"

#include <gtest/gtest.h>
#include <windows.h>

#include <aclapi.h>
#include <sddl.h>

#include <filesystem>
#include <fstream>
#include <string>

#include "base/Error.h"

namespace krx::test {
namespace {

class FolderRightsTest : public testing::Test {
 protected:
  FolderRightsTest() { std::filesystem::create_directories(folder); }
  ~FolderRightsTest() override { std::filesystem::remove_all(folder.parent_path()); }

  static bool Give(const std::filesystem::path& file, WELL_KNOWN_SID_TYPE to) {
    std::uint8_t sid[SECURITY_MAX_SID_SIZE];
    DWORD size = sizeof sid;
    CreateWellKnownSid(to, nullptr, sid, &size);
    std::wstring name = file.wstring();
    SetNamedSecurityInfoW(name.data(), SE_FILE_OBJECT, OWNER_SECURITY_INFORMATION, sid, nullptr,
                          nullptr, nullptr);
    PSID owner = nullptr;
    PSECURITY_DESCRIPTOR descriptor = nullptr;
    GetNamedSecurityInfoW(name.data(), SE_FILE_OBJECT, OWNER_SECURITY_INFORMATION, &owner, nullptr,
                          nullptr, nullptr, &descriptor);
    const bool given = owner != nullptr && EqualSid(owner, sid);
    LocalFree(descriptor);
    return given;
  }

  const std::filesystem::path folder = std::filesystem::temp_directory_path() /
                                       ("krx-rights-" + std::to_string(GetCurrentProcessId())) /
                                       "Users";
};

TEST_F(FolderRightsTest, AFolderOfOnesOwnIsPrepared) {
  runtime::PrepareFolder(folder / "new");
  EXPECT_TRUE(std::filesystem::is_directory(folder / "new"));
  EXPECT_NO_THROW(runtime::PrepareFolder(folder));
}

TEST_F(FolderRightsTest, AFolderThatCannotBeMadeIsRefused) {
  std::ofstream(folder / "file") << "x";
  EXPECT_THROW(runtime::PrepareFolder(folder / "file" / "Users"), Error);
}

TEST_F(FolderRightsTest, WhatSomebodyElsePreparedIsRefused) {
  std::ofstream(folder / "users.conf") << "x";
  if (!Give(folder / "users.conf", WinBuiltinGuestsSid))
    GTEST_SKIP() << "this platform keeps no other owners";
  EXPECT_THROW(runtime::PrepareFolder(folder), Error);
}

TEST_F(FolderRightsTest, AnUnknownAccountIsRefused) {
  EXPECT_THROW(runtime::SetRights(folder, u"nobody of this name"), Error);
}

TEST_F(FolderRightsTest, TheFolderStaysUsableForThePanel) {
  std::ofstream(folder / "users.db") << "old";
  std::ofstream(folder / "users.conf") << "rules";
  runtime::SetRights(folder, u"");
  EXPECT_TRUE(std::ofstream(folder / "users.db-journal") << "new");
  EXPECT_TRUE(std::filesystem::remove(folder / "users.db-journal"));
  EXPECT_TRUE(std::ofstream(folder / "users.db") << "changed");
  std::string rules;
  EXPECT_TRUE(std::ifstream(folder / "users.conf") >> rules);
  EXPECT_EQ(rules, "rules");
}

}  // namespace
}  // namespace krx::test
