#include "runtime/users/store/UserTable.h"

#include <algorithm>
#include <utility>

#include "runtime/core/KorvelError.h"
#include "runtime/users/rules/GuessingDelay.h"
#include "runtime/users/rules/Names.h"

namespace krx::runtime {
namespace {

#define KRX_USER_COLUMNS                                                  \
  "SELECT id, name, full_name, comment, class, deactivated, must_renew, " \
  "remaining_log_ons, password_changed_on, failures, failures_in_a_row, last_failure "
#define KRX_USERS KRX_USER_COLUMNS "FROM users "
#define KRX_PASSWORD_COLUMNS "iterations, salt, key, key_id "

StoredUser UserIn(const Query& query) {
  StoredUser user;
  user.Id = static_cast<std::uint32_t>(query.Number(0));
  user.Name = query.Text(1);
  user.FullName = query.Text(2);
  user.Comment = query.Text(3);
  user.ClassName = query.Text(4);
  user.Deactivated = query.Flag(5);
  user.MustRenew = query.Flag(6);
  user.RemainingLogOns = static_cast<std::int32_t>(query.Number(7));
  user.PasswordChangedOn = query.Number(8);
  user.Failures = static_cast<std::int32_t>(query.Number(9));
  user.FailuresInARow = static_cast<std::int32_t>(query.Number(10));
  user.LastFailure = query.Number(11);
  return user;
}

std::optional<StoredUser> OnlyRecord(Query& query) {
  return query.Next() ? std::optional(UserIn(query)) : std::nullopt;
}

}  // namespace

// A damaged hash must not be one that every password has.
PasswordHash PasswordIn(const Query& query, int column) {
  const std::int64_t iterations = query.Number(column);
  PasswordHash hash{static_cast<std::uint32_t>(iterations), query.Bytes(column + 1),
                    query.Bytes(column + 2), query.Bytes(column + 3)};
  if (iterations <= 0 || iterations > kMostIterations || hash.Salt.size() < kSaltSize ||
      hash.Key.size() != kKeySize || (!hash.KeyId.empty() && hash.KeyId.size() != kKeyIdSize))
    throw KorvelError(kUnreadableUsers, u"a password in the users' database is damaged");
  return hash;
}

const PasswordHash& StoredUser::CurrentPassword() const {
  if (Passwords.empty())
    throw KorvelError(kUnreadableUsers, u"a password is missing in the users' database");
  return Passwords.front();
}

std::vector<std::uint8_t> NameKey(StringView name) {
  std::vector<std::uint8_t> key;
  for (const char16_t unit : FoldedName(name)) {
    key.push_back(static_cast<std::uint8_t>(unit >> 8));
    key.push_back(static_cast<std::uint8_t>(unit & 0xFF));
  }
  return key;
}

std::optional<StoredUser> UserTable::Whole(Query& query) {
  if (!query.Next()) return std::nullopt;
  StoredUser user = UserIn(query);
  Query hashes(database_,
               "SELECT " KRX_PASSWORD_COLUMNS "FROM passwords WHERE user = ? ORDER BY age",
               user.Id);
  while (hashes.Next())
    user.Passwords.push_back(PasswordIn(hashes, 0));
  return user;
}

std::optional<StoredUser> UserTable::Find(StringView name) {
  Query query(database_, KRX_USERS "WHERE name_key = ?", NameKey(name));
  std::optional<StoredUser> user = Whole(query);
  return user && user->Name == name ? user : std::nullopt;
}

std::optional<StoredUser> UserTable::FindId(std::uint32_t id) {
  Query query(database_, KRX_USERS "WHERE id = ?", id);
  return Whole(query);
}

std::optional<StoredUser> UserTable::FindOrAny(StringView name) {
  Query query(database_,
              KRX_USER_COLUMNS ", " KRX_PASSWORD_COLUMNS
                               "FROM (SELECT min(id) AS first FROM users) "
                               "JOIN (SELECT max(id) AS named FROM users WHERE name_key = ?) "
                               "JOIN users ON id = coalesce(named, first) "
                               "LEFT JOIN passwords ON user = id AND age = 0",
              NameKey(name));
  std::optional<StoredUser> user = OnlyRecord(query);
  if (user) user->Passwords = {PasswordIn(query, 12)};
  return user;
}

std::optional<StoredUser> UserTable::FindRecord(StringView name) {
  Query query(database_, KRX_USERS "WHERE name_key = ?", NameKey(name));
  std::optional<StoredUser> user = OnlyRecord(query);
  return user && user->Name == name ? user : std::nullopt;
}

std::optional<StoredUser> UserTable::FindRecordOfId(std::uint32_t id) {
  Query query(database_, KRX_USERS "WHERE id = ?", id);
  return OnlyRecord(query);
}

// All of them are looked at, so that the time does not tell which of them it is.
bool UserTable::HasOtherAdministrator(const UserRules& rules, std::uint32_t except,
                                      std::int64_t at) {
  bool has = false;
  for (const UserClass& one : rules.Classes) {
    if (!rules.IsAdministratorClass(one.Name)) continue;
    Query query(database_,
                "SELECT id, failures, failures_in_a_row, last_failure FROM users "
                "WHERE class = ? AND deactivated = 0 AND failures_in_a_row < ?",
                one.Name, kEndOfGuessing);
    while (query.Next()) {
      const std::int64_t delay = DelayAfter(rules, static_cast<std::int32_t>(query.Number(1)),
                                            static_cast<std::int32_t>(query.Number(2)));
      // A time ahead of the clock begins now.
      const std::int64_t begin = std::clamp<std::int64_t>(query.Number(3), 0, at);
      const bool can_log_on = delay != kForever && at - begin >= delay;
      has |= can_log_on && query.Number(0) != except;
    }
  }
  return has;
}

std::vector<StoredUser> UserTable::List() {
  std::vector<StoredUser> users;
  Query query(database_, KRX_USERS "ORDER BY name_key");
  while (query.Next())
    users.push_back(UserIn(query));
  return users;
}

bool UserTable::HasAny() {
  return Query(database_, "SELECT 1 FROM users LIMIT 1").Next();
}

bool UserTable::IsTaken(StringView name) {
  return Query(database_, "SELECT 1 FROM users WHERE name_key = ?", NameKey(name)).Next();
}

std::uint32_t UserTable::Add(const StoredUser& user) {
  Query(database_,
        "INSERT INTO users (name, name_key, full_name, comment, class, deactivated, must_renew, "
        "remaining_log_ons, password_changed_on, failures, failures_in_a_row, last_failure) "
        "VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?)",
        user.Name, NameKey(user.Name), user.FullName, user.Comment, user.ClassName,
        user.Deactivated, user.MustRenew, user.RemainingLogOns, user.PasswordChangedOn,
        user.Failures, user.FailuresInARow, user.LastFailure)
      .Run();
  StoredUser added = user;
  added.Id = static_cast<std::uint32_t>(database_.LastId());
  AddPasswords(added);
  return added.Id;
}

void UserTable::Update(const StoredUser& user, bool passwords) {
  Query(database_,
        "UPDATE users SET full_name = ?, comment = ?, class = ?, deactivated = ?, must_renew = ?, "
        "remaining_log_ons = ?, password_changed_on = ?, failures = ?, failures_in_a_row = ?, "
        "last_failure = ? WHERE id = ?",
        user.FullName, user.Comment, user.ClassName, user.Deactivated, user.MustRenew,
        user.RemainingLogOns, user.PasswordChangedOn, user.Failures, user.FailuresInARow,
        user.LastFailure, user.Id)
      .Run();
  if (!passwords) return;
  Query(database_, "DELETE FROM passwords WHERE user = ?", user.Id).Run();
  AddPasswords(user);
}

void UserTable::AddPasswords(const StoredUser& user) {
  std::int32_t age = 0;
  for (const PasswordHash& hash : user.Passwords) {
    Query(database_, "INSERT INTO passwords VALUES (?, ?, ?, ?, ?, ?)", user.Id, age++,
          hash.Iterations, hash.Salt, hash.Key, hash.KeyId)
        .Run();
  }
}

void UserTable::Remove(std::uint32_t id) {
  Query(database_, "DELETE FROM users WHERE id = ?", id).Run();
}

void UserTable::UpdateAttempts(const StoredUser& user) {
  Query(database_,
        "UPDATE users SET failures = ?, failures_in_a_row = ?, last_failure = ?, "
        "attempts = attempts + 1 WHERE id = ?",
        user.Failures, user.FailuresInARow, user.LastFailure, user.Id)
      .Run();
}

}  // namespace krx::runtime
