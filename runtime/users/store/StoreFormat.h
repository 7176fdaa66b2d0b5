#pragma once

#include <string>
#include <string_view>

#include "runtime/users/store/UserStore.h"

namespace krx::runtime {

// The stored form of all users: lines of tab-separated UTF-8 fields between a head line with the
// format's version and an end line with the number of users and a checksum of all before it.
std::string Serialize(const UserStore& store);

// The users of a stored form. Anything but the exact bytes that Serialize writes (damaged, cut off,
// of a later version, edited by hand) raises Error, which names `file`, the line and the reason.
UserStore ParseStore(const String& file, std::string_view bytes);

}  // namespace krx::runtime
