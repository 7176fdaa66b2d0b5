#include "runtime/users/rules/GuessingDelay.h"

#include <algorithm>

namespace krx::runtime {
namespace {

constexpr std::int32_t kFreeFailures = 5;
constexpr std::int64_t kLongestDelay = std::int64_t{15} * 60;  // seconds, before a lock-out
constexpr std::int64_t kMinutesOfDay = std::int64_t{24} * 60;

// `first`, doubled so many times, but no more than `most`.
std::int64_t Doubled(std::int64_t first, std::int32_t times, std::int64_t most) {
  std::int64_t grown = first;
  for (std::int32_t i = 0; i < times && grown < most; ++i)
    grown *= 2;
  return std::min(grown, most);
}

}  // namespace

std::int64_t DelayAfter(const UserRules& rules, std::int32_t failures, std::int32_t in_a_row) {
  if (in_a_row >= kEndOfGuessing) return kForever;
  if (failures >= rules.LockOutFailures) {
    if (rules.LockOutMinutes == 0) return kForever;
    const std::int32_t lock_outs_before = (in_a_row - 1) / rules.LockOutFailures;
    const std::int64_t most = std::max<std::int64_t>(kMinutesOfDay, rules.LockOutMinutes);
    return 60 * Doubled(rules.LockOutMinutes, lock_outs_before, most);
  }
  return failures < kFreeFailures ? 0 : Doubled(1, failures - kFreeFailures, kLongestDelay);
}

}  // namespace krx::runtime
