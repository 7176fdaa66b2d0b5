#include "runtime/users/com/ProcessUsers.h"

#include <atomic>
#include <mutex>
#include <optional>
#include <string>

#include "com/Module.h"
#include "com/Text.h"
#include "runtime/users/directory/OfflineTable.h"
#include "runtime/users/directory/win32/SystemLdapClient.h"
#include "runtime/users/win32/Win32Clock.h"
#include "runtime/users/win32/Win32Cryptography.h"
#include "runtime/users/win32/Win32Errands.h"
#include "runtime/users/win32/Win32EventLog.h"
#include "runtime/users/win32/Win32Files.h"
#include "runtime/users/win32/Win32KeyProtection.h"
#include "runtime/users/win32/Win32Origin.h"

namespace krx::runtime {
namespace {

constexpr std::chrono::milliseconds kRulesLag{10};

std::wstring EnvironmentVariable(const wchar_t* name) {
  std::wstring value(GetEnvironmentVariableW(name, nullptr, 0), L'\0');
  value.resize(GetEnvironmentVariableW(name, value.data(), static_cast<DWORD>(value.size())));
  return value;
}

// What the user management of the process lives on.
struct Process {
  explicit Process(const DatabaseAccess& access)
      : Management(
            {Files, Crypto, Clock, OriginOfProcess(), access, &Events, &Protection, kRulesLag},
            UsersFolder(), Session) {}

  SqliteLibrary Library;  // first, so that it goes last
  Win32Files Files;
  Win32Cryptography Crypto;
  Win32Clock Clock;
  Win32EventLog Events;
  Win32KeyProtection Protection;
  runtime::Session Session;
  UserManagement Management;
  LogOnNotice Notice{Management};

  SystemLdapClient Client;
  Win32Errands Errands;
  DirectoryService Service{Client, Errands};
  OfflineTable Kept{Management.Store};
  OfflineUsers Offline{Kept, Crypto, Clock, &Management.Keys};
  DirectoryUsers Directory{Service, Offline};
};

Process& TheProcess(const DatabaseAccess& access = {}) {
  static Process process{access};
  return process;
}

std::atomic<int> in_use = 0;
std::atomic<UserManagement*> made = nullptr;

std::mutex keeper_guard;
std::optional<com::ModuleLock> keeper;

}  // namespace

std::filesystem::path UsersFolder() {
  const std::wstring folder = EnvironmentVariable(L"KORVEL_USERS_FOLDER");
  if (!folder.empty()) return folder;
  return std::filesystem::path(EnvironmentVariable(L"ProgramData")) / "Korvel" / "Users";
}

UserManagement& ProcessUsers(const DatabaseAccess& access) {
  made = &TheProcess(access).Management;
  return *made;
}

LogOnNotice& NoticeBeforeLogOn() {
  ProcessUsers();
  return TheProcess().Notice;
}

std::optional<host::UserInfo> ProcessPlant::FindUserInfo(const String& user) {
  // Lists of users ask for each of them: this machine's cost one look at the store.
  if (std::optional<host::UserInfo> local = users_.FindUserInfo(user)) return local;
  if (!Users.GetUserClass(user).Found) return std::nullopt;
  return Users.GetUserInfo(user);
}

UsersInUse::UsersInUse() {
  ++in_use;
}

UsersInUse::~UsersInUse() {
  if (--in_use > 0) return;
  if (UserManagement* const management = made) const UserStore::Use last(management->Store);
}

ProcessPlant::ProcessPlant()
    : session_(ProcessUsers()),
      users_(ProcessUsers()),
      Users(ProcessUsers(), users_, TheProcess().Directory),
      Session(ProcessUsers(), session_, users_, TheProcess().Directory) {}

void KeepLoadedWhileLoggedOn() {
  const UserManagement& users = ProcessUsers();
  const std::lock_guard lock(keeper_guard);  // who asks last knows best
  if (!users.Session.Current()) {
    keeper.reset();
  } else if (!keeper) {
    keeper.emplace();
  }
}

Password PasswordFromBstr(BSTR text) {
  static_assert(sizeof(wchar_t) == sizeof(char16_t));
  return Password(StringView(reinterpret_cast<const char16_t*>(text), SysStringLen(text)));
}

}  // namespace krx::runtime
