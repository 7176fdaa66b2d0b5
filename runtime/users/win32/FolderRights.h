#pragma once

#include <filesystem>

#include "base/String.h"

namespace krx::runtime {

// Makes sure that the folder is there and that nobody prepared it who could have left a trap: it,
// the folder that it lies in and what is in it belong to administrators, to the system or to this
// account, and none of it points elsewhere. Raises Error otherwise.
void PrepareFolder(const std::filesystem::path& folder);

// Gives the folder and its files explicit rights, none inherited: administrators and the system
// everything, the panel's account what the user management needs. It may add to the folder, change
// the database and read the rules. Empty: this account. Raises Error when there is no such account.
void SetRights(const std::filesystem::path& folder, const String& panel_account);

// The same for the folder of the keys: the panel's account may read it, and what comes into it
// later, too.
void SetRightsOfKeys(const std::filesystem::path& folder, const String& panel_account);

// Gives a file to administrators and the system alone.
void SetAsideForAdministrators(const std::filesystem::path& file);

}  // namespace krx::runtime
