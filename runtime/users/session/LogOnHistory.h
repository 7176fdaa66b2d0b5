#pragma once

#include <cstdint>
#include <optional>

#include "runtime/users/UserManagement.h"

namespace krx::runtime {

// What a user's log-ons were like before the one that has just been recorded.
struct LogOnHistory {
  std::optional<std::int64_t> LastAt;  // seconds since 1970
  std::int32_t FailuresSince = 0;      // refusals with a right password that has to be renewed
                                       // are none
};

// Out of the audit records that are in the database; those of a namesake who has been removed do
// not count. Nothing when the current log-on waits in memory for a disk with room. Raises Error.
std::optional<LogOnHistory> HistoryOf(UserManagement& management, const String& user);

}  // namespace krx::runtime
