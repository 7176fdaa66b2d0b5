#pragma once

#include <cstdint>
#include <vector>

#include "base/String.h"
#include "runtime/users/passwords/PasswordHash.h"

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
  std::int32_t Failures = 0;                        // attempts since the last right password
  std::int64_t LastFailure = 0;                     // seconds since 1970
  std::vector<PasswordHash> Passwords;              // the current one first

  const PasswordHash& CurrentPassword() const { return Passwords.front(); }
  bool operator==(const StoredUser& other) const = default;
};

// All users. Names are told apart exactly, upper and lower case included, but no two users have
// names that differ in nothing else.
class UserStore {
 public:
  const std::vector<StoredUser>& Users() const { return users_; }
  std::uint32_t NextId() const { return next_id_; }

  // Null when there is no such user.
  const StoredUser* Find(StringView name) const;
  const StoredUser* FindId(std::uint32_t id) const;
  StoredUser* FindId(std::uint32_t id);
  // Whether a new user of this name would be mixed up with an existing one.
  bool IsTaken(StringView name) const;

  // Appends the user under a new id.
  void Add(StoredUser user);
  void Remove(std::uint32_t id);

  // For reading a stored file: users keep their ids.
  void Restore(StoredUser user) { users_.push_back(std::move(user)); }
  void RestoreNextId(std::uint32_t id) { next_id_ = id; }

  bool operator==(const UserStore& other) const = default;

 private:
  std::vector<StoredUser> users_;
  std::uint32_t next_id_ = 1;
};

}  // namespace krx::runtime
