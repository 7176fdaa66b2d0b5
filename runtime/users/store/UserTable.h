#pragma once

#include "runtime/users/store/Sqlite.h"
#include "runtime/users/store/StoredUser.h"

namespace krx::runtime {

// A name without case, by which it is looked up; the bytes' order is that of lists.
std::vector<std::uint8_t> NameKey(StringView name);

// Of a row with iterations, salt, key and key_id from that column on. Raises Error for a damaged
// one.
PasswordHash PasswordIn(const Query& query, int column);

// The users and their passwords in the database, read and changed by key.
class UserTable : public UserSource {
 public:
  explicit UserTable(Database& database) : database_(database) {}

  // With passwords.
  std::optional<StoredUser> Find(StringView name) override;
  std::optional<StoredUser> FindId(std::uint32_t id) override;
  // The user of that name, in whatever case, with his current password alone; another one where
  // there is none, by the same work. Nothing without users.
  std::optional<StoredUser> FindOrAny(StringView name);
  // Without passwords.
  std::optional<StoredUser> FindRecord(StringView name);
  std::optional<StoredUser> FindRecordOfId(std::uint32_t id);
  bool HasOtherAdministrator(const UserRules& rules, std::uint32_t except,
                             std::int64_t at) override;

  // All users in the order of lists, without passwords.
  std::vector<StoredUser> List();
  bool HasAny();
  // Whether a new user of this name would be mixed up with an existing one.
  bool IsTaken(StringView name);

  // Adds the user under a new id, which it returns.
  std::uint32_t Add(const StoredUser& user);
  // Everything but the name; with `passwords` these, too.
  void Update(const StoredUser& user, bool passwords);
  void Remove(std::uint32_t id);
  // Stores what the user's attempts have come to; something is written also when that is nothing
  // new.
  void UpdateAttempts(const StoredUser& user);

 private:
  std::optional<StoredUser> Whole(Query& query);
  void AddPasswords(const StoredUser& user);

  Database& database_;
};

}  // namespace krx::runtime
