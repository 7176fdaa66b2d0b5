#pragma once

#include <cstdint>
#include <limits>

#include "runtime/users/rules/UserRules.h"

namespace krx::runtime {

// Attempts in a row after which time alone lets nobody log on any more.
inline constexpr std::int32_t kEndOfGuessing = 100;
// What only an administrator ends.
inline constexpr std::int64_t kForever = std::numeric_limits<std::int64_t>::max();

// Seconds between the last wrong password and the next attempt that is looked at. `failures` counts
// those since the last lock-out, `in_a_row` those since the last right password.
// Fewer than five cost nothing; where the rules lock out later, the fifth costs one second and each
// further one twice as much, up to 15 minutes. The first lock-out takes lock-out-minutes and each
// further one in a row twice as long, up to a day where the rules do not ask for more.
std::int64_t DelayAfter(const UserRules& rules, std::int32_t failures, std::int32_t in_a_row);

}  // namespace krx::runtime
