#pragma once

#include "base/Password.h"
#include "runtime/users/UserManagement.h"

namespace krx::runtime {

// What whoever has the rights of the folder may do without being logged on. Each is recorded, with
// the system's account as its author, and raises Error when it is refused or fails.

// Ends a lock-out of the user, and activates him if he is deactivated.
void UnlockUser(UserManagement& management, const String& name);

// Gives the user a new random password, which he has to renew at the next log-on, and unlocks him.
Password ResetPassword(UserManagement& management, const String& name);

// What is wrong with the database, in words; nothing when it and its audit records are whole.
std::vector<String> CheckStore(UserManagement& management);

// Copies the users and their audit records into a new file, as of one moment.
void BackUpStore(UserManagement& management, const std::filesystem::path& file);

// Puts a backup, which has to be whole, in the place of the users, in one step. What was there
// before is kept beside it; its name is returned, empty when there was nothing.
std::filesystem::path RestoreStore(UserManagement& management, const std::filesystem::path& file);

}  // namespace krx::runtime
