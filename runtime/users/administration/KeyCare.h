#pragma once

#include "runtime/users/UserManagement.h"

namespace krx::runtime {

// The care of the keys that passwords are hashed with, for whoever has the rights of the folder.

// A key, and how many passwords were hashed with it, older ones included.
struct KeyUse {
  KeyId Id;
  std::int64_t Passwords = 0;
  bool IsThere = true;
};

// The keys of the file, the newest first, then those that only passwords know of. A file that
// cannot be opened has none.
std::vector<KeyUse> ListKeys(UserManagement& management);

// Makes the first key, and records it where there are users already. Raises Error when there is a
// file of keys, readable or not.
KeyId CreateKey(UserManagement& management);

// Makes a new key: passwords get it when they are changed or their users log on. Older ones stay
// as long as a password needs them. Recorded; raises Error when there is none before.
KeyId RenewKey(UserManagement& management);

// What is wrong with the keys, in words; nothing when every password can be recognised and the
// rules find the key that they ask for.
std::vector<String> CheckKeys(UserManagement& management);

}  // namespace krx::runtime
