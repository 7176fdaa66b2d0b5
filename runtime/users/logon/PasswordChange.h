#pragma once

#include <cstdint>

#include "runtime/users/logon/CredentialCheck.h"

namespace krx::runtime {

// Changes a user's password against the current one; nobody needs to be logged on, so that an
// expired password can be renewed. Wrong current passwords count like wrong log-ons.
// ChangePasswordResult; a user who is locked out or deactivated is "not accepted".
std::int32_t ChangePassword(UserManagement& management, const String& user,
                            const Password& new_password, const Password& current_password);

}  // namespace krx::runtime
