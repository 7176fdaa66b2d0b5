#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "base/String.h"
#include "runtime/users/passwords/PasswordHash.h"
#include "runtime/users/rules/UserRules.h"

namespace krx::runtime {

inline constexpr std::int32_t kUnlimitedLogOns = -1;

// One user as he is stored.
struct StoredUser {
  std::uint32_t Id = 0;  // never given to another user, so a session cannot pass to a namesake
  String Name;
  String FullName;
  String Comment;
  String ClassName;
  bool Deactivated = false;
  bool MustRenew = true;  // kept while deactivated: a first password never becomes a lasting one
  std::int32_t RemainingLogOns = kUnlimitedLogOns;  // until the password has to be renewed
  std::int64_t PasswordChangedOn = 0;               // seconds since 1970
  std::int32_t Failures = 0;                        // attempts that count for the lock-out
  std::int32_t FailuresInARow = 0;                  // attempts since the last right password
  std::int64_t LastFailure = 0;                     // seconds since 1970
  std::vector<PasswordHash> Passwords;              // the current one first

  // Raises Error where a damaged database has none.
  const PasswordHash& CurrentPassword() const;
  bool operator==(const StoredUser& other) const = default;
};

// Where users are looked up. Names are told apart exactly, upper and lower case included, but no
// two users have names that differ in nothing else.
class UserSource {
 public:
  virtual ~UserSource() = default;
  // Nothing when there is no such user. Only writing transactions know passwords.
  virtual std::optional<StoredUser> Find(StringView name) = 0;
  virtual std::optional<StoredUser> FindId(std::uint32_t id) = 0;
  // Whether there is an administrator other than `except` who can log on at that moment: active,
  // and not locked out by the rules. With kForever for a moment, time heals what it can heal.
  virtual bool HasOtherAdministrator(const UserRules& rules, std::uint32_t except,
                                     std::int64_t at) = 0;
};

}  // namespace krx::runtime
