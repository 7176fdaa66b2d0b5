#pragma once

#include <ole2.h>

#include <filesystem>
#include <optional>

#include "base/Password.h"
#include "runtime/users/administration/UserDirectory.h"
#include "runtime/users/directory/PlantUsers.h"
#include "runtime/users/logon/LogOnNotice.h"
#include "runtime/users/logon/LogOnService.h"

namespace krx::runtime {

// Where the users of this machine are stored: the folder in the environment variable
// KORVEL_USERS_FOLDER, else Korvel\Users in the folder for the data of all users' programs.
std::filesystem::path UsersFolder();

// The user management of this process; all its objects share it. Raises Error when the system's
// cryptography is not to be had. The first call decides how the database is reached.
UserManagement& ProcessUsers(const DatabaseAccess& access = {});

// What operators of this process have to acknowledge before they log on.
LogOnNotice& NoticeBeforeLogOn();

// Keeps the component loaded while somebody is logged on: unloading it would log him off in
// silence. To be called after whatever may have changed that.
void KeepLoadedWhileLoggedOn();

// The users of this process, those of the plant's directory service included, for one call.
class ProcessPlant {
 public:
  ProcessPlant();
  // The call may have noticed that the user is not logged on any more.
  ~ProcessPlant() { KeepLoadedWhileLoggedOn(); }
  ProcessPlant(const ProcessPlant&) = delete;
  ProcessPlant& operator=(const ProcessPlant&) = delete;

  // Nothing when there is no such user.
  std::optional<host::UserInfo> FindUserInfo(const String& user);

 private:
  LogOnService session_;
  UserDirectory users_;

 public:
  PlantUsers Users;
  PlantSession Session;
};

// Held by whoever works with the users: when nobody does any more, the database is closed.
class UsersInUse {
 public:
  UsersInUse();
  ~UsersInUse();
  UsersInUse(const UsersInUse&) = delete;
  UsersInUse& operator=(const UsersInUse&) = delete;
};

// The password in an automation string, copied nowhere else.
Password PasswordFromBstr(BSTR text);

}  // namespace krx::runtime
