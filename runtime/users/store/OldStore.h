#pragma once

#include <filesystem>
#include <vector>

#include "runtime/users/store/StoredUser.h"
#include "runtime/users/system/Files.h"

namespace krx::runtime {

// The store of the first version, users.dat, which is read once: lines of tab-separated fields
// between a head line and an end line with the number of users.
bool HasOldStore(Files& files, const std::filesystem::path& folder);

// Its users. Raises Error, which names the line, when it is damaged or cut off.
std::vector<StoredUser> ReadOldStore(Files& files, const std::filesystem::path& folder);

// Gives it another name, so that it never comes back; when that fails it stays, and is not read
// again as long as there is a database.
void PutOldStoreAside(Files& files, const std::filesystem::path& folder) noexcept;

}  // namespace krx::runtime
