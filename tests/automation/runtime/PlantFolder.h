#pragma once

#include <gtest/gtest.h>
#include <windows.h>

#include <filesystem>
#include <fstream>
#include <string>

#include "host/UserManager.h"
#include "runtime/users/administration/Provisioning.h"
#include "runtime/users/administration/UserDirectory.h"
#include "runtime/users/win32/Win32Clock.h"
#include "runtime/users/win32/Win32Cryptography.h"
#include "runtime/users/win32/Win32Files.h"

namespace krx::test {

// The users of a plant with an administrator, boss, in a temporary folder of their own, as this
// program has them. Hashing is cheap there.
class PlantFolder {
 public:
  static constexpr StringView kBoss = u"boss's own secret";

  explicit PlantFolder(const std::string& name, const std::string& rules = {})
      : Folder(std::filesystem::temp_directory_path() /
               ("krx-" + name + "-" + std::to_string(GetCurrentProcessId()))) {
    std::filesystem::create_directories(Folder);
    std::ofstream(Folder / "users.conf", std::ios::binary) << "hash-iterations = 1000\n" << rules;
    const Password first(u"provisioned secret");
    runtime::ProvisionFirstAdministrator(Management, u"boss", first);
    EXPECT_EQ(Directory.ChangeUserPassword(u"boss", Password(kBoss), first),
              host::ChangePasswordSucceeded);
    Close();
  }
  ~PlantFolder() {
    Close();
    std::error_code ignored;
    std::filesystem::remove_all(Folder, ignored);
  }
  PlantFolder(const PlantFolder&) = delete;
  PlantFolder& operator=(const PlantFolder&) = delete;

  const std::filesystem::path Folder;
  runtime::Win32Cryptography Crypto;

 private:
  void Close() { const runtime::UserStore::Use last(Management.Store); }

  runtime::Win32Files files_;
  runtime::Win32Clock clock_;
  runtime::Session session_;

 public:
  runtime::UserManagement Management{{files_, Crypto, clock_}, Folder, session_};
  runtime::UserDirectory Directory{Management};
};

}  // namespace krx::test
