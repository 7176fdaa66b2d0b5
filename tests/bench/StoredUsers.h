#pragma once

#include <filesystem>

#include "runtime/users/administration/UserDirectory.h"
#include "runtime/users/logon/LogOnService.h"
#include "runtime/users/win32/Win32Clock.h"
#include "runtime/users/win32/Win32Cryptography.h"
#include "runtime/users/win32/Win32Files.h"

namespace krx::bench {

// The reference runtime's users in a folder, without automation in between.
class StoredUsers {
 public:
  explicit StoredUsers(const std::filesystem::path& folder)
      : Management({files_, crypto_, clock_, {}, {}, nullptr, nullptr, kRulesLag}, folder,
                   session_) {}

  // Adds operators with the numbers from `first` to before `end`, all at once and past the rules:
  // what they cost one by one is measured apart.
  void Fill(int first, int end);
  // Adds so many events to the audit records.
  void FillAudit(int count);
  // Creates the administrator and logs him on.
  void ProvisionAndLogOn();
  // Milliseconds that an operator of this number takes to create.
  double Create(int number);

 private:
  static constexpr std::chrono::milliseconds kRulesLag{10};  // as in the component

  runtime::Win32Files files_;
  runtime::Win32Cryptography crypto_;
  runtime::Win32Clock clock_;
  runtime::Session session_;

 public:
  runtime::UserManagement Management;
};

}  // namespace krx::bench
