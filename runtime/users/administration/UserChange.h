#pragma once

#include "host/UserManager.h"
#include "runtime/users/UserManagement.h"

namespace krx::runtime {

// The administrative changes of UserDirectory, each checked and stored while the store is held, so
// that rights and the last administrator are judged by what is really replaced. Passwords are
// hashed in between, without holding it.
std::int32_t CreateUser(UserManagement& management, const host::UserRecord& record);
std::int32_t ModifyUser(UserManagement& management, const host::UserRecord& record);
std::int32_t RemoveUser(UserManagement& management, const String& user);
std::int32_t SetUserActive(UserManagement& management, const String& user, std::int32_t active);

}  // namespace krx::runtime
