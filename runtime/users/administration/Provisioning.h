#pragma once

#include "base/Password.h"
#include "runtime/users/UserManagement.h"

namespace krx::runtime {

// Creates the store with its first administrator, in the lowest class that administers. He has to
// renew his password at the first log-on. Raises Error, and creates nothing, when there is a store
// already (readable or not), or when name or password do not satisfy the rules. Beside the store it
// leaves a configuration file and a list of refused passwords to fill in, where there are none.
void ProvisionFirstAdministrator(UserManagement& management, const String& name,
                                 const Password& password);

// A random password that satisfies the rules' lengths: groups of four small letters and digits
// without look-alikes, about 79 bits.
Password GeneratePassword(Cryptography& cryptography, const UserRules& rules);

}  // namespace krx::runtime
