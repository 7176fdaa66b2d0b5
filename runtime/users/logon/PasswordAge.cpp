#include "runtime/users/logon/PasswordAge.h"

#include <algorithm>

namespace krx::runtime {
namespace {

constexpr std::int64_t kDayOf1970 = 25'569;
constexpr double kDayAfter9999 = 2'958'466;

}  // namespace

std::int32_t PasswordAge::DaysLeft() const {
  if (rules_.PasswordExpiryDays == 0) return -1;
  const std::int64_t end =
      user_.PasswordChangedOn + std::int64_t{rules_.PasswordExpiryDays} * kSecondsPerDay;
  const std::int64_t left = std::max<std::int64_t>(0, end - now_);
  return static_cast<std::int32_t>((left + kSecondsPerDay - 1) / kSecondsPerDay);
}

bool PasswordAge::IsTooYoung() const {
  if (user_.MustRenew || IsExpired()) return false;
  // A day ahead of the clock begins now.
  const std::int64_t begin = std::min(user_.PasswordChangedOn, now_);
  return now_ - begin < std::int64_t{rules_.PasswordMinimumDays} * kSecondsPerDay;
}

std::int32_t PasswordAge::LogOnsLeft() const {
  if (rules_.LogOnsPerPassword == 0) return kUnlimitedLogOns;
  // A limit that was set after the password counts from now on.
  if (user_.RemainingLogOns == kUnlimitedLogOns) return rules_.LogOnsPerPassword;
  return std::min(user_.RemainingLogOns, rules_.LogOnsPerPassword);
}

std::int32_t ToDay(std::int64_t seconds) {
  const std::int64_t whole = seconds / kSecondsPerDay - (seconds % kSecondsPerDay < 0 ? 1 : 0);
  return static_cast<std::int32_t>(whole + kDayOf1970);
}

std::int64_t FromDate(double date) {
  return static_cast<std::int64_t>((date - static_cast<double>(kDayOf1970)) *
                                   static_cast<double>(kSecondsPerDay));
}

bool IsValidDate(double date) {
  return date >= 0 && date < kDayAfter9999;  // false for what is no number, too
}

}  // namespace krx::runtime
