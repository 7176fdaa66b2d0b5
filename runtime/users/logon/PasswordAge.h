#pragma once

#include <cstdint>

#include "runtime/users/rules/UserRules.h"
#include "runtime/users/store/StoredUser.h"

namespace krx::runtime {

inline constexpr std::int64_t kSecondsPerDay = 86'400;

// How much longer a password is good for.
class PasswordAge {
 public:
  // `now`: seconds since 1970.
  PasswordAge(const UserRules& rules, const StoredUser& user, std::int64_t now)
      : rules_(rules), user_(user), now_(now) {}

  // Whether the password is past its days or its log-ons.
  bool IsExpired() const { return DaysLeft() == 0 || LogOnsLeft() == 0; }
  // Whether its user may not change it yet.
  bool IsTooYoung() const;
  // Days, begun ones included, until the password expires; -1 when it never does.
  std::int32_t DaysLeft() const;
  // Log-ons until the password expires; kUnlimitedLogOns when they are not counted.
  std::int32_t LogOnsLeft() const;

 private:
  const UserRules& rules_;
  const StoredUser& user_;
  std::int64_t now_;
};

// Automation dates count days from 1899-12-30; stored times count seconds from 1970-01-01.
std::int32_t ToDay(std::int64_t seconds);
std::int64_t FromDate(double date);
// Whether the date lies between the zero date and the end of the year 9999.
bool IsValidDate(double date);

}  // namespace krx::runtime
