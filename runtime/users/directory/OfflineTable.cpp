#include "runtime/users/directory/OfflineTable.h"

namespace krx::runtime {
namespace {

#define KRX_OFFLINE_COLUMNS                                                         \
  "SELECT name, full_name, comment, class, password_changed_on, iterations, salt, " \
  "key, key_id, confirmed_at, failures, failures_in_a_row, last_failure "

class HeldTable : public OfflineStore::Hold {
 public:
  explicit HeldTable(UserStore& store) : writing_(store) {}

  std::optional<OfflineRecord> Find(StringView name) override {
    return Read(KRX_OFFLINE_COLUMNS "FROM offline_users WHERE name_key = ?", name);
  }

  std::optional<OfflineRecord> FindOrAny(StringView name) override {
    return Read(KRX_OFFLINE_COLUMNS
                "FROM (SELECT min(name_key) AS first FROM offline_users) "
                "JOIN (SELECT max(name_key) AS named FROM offline_users WHERE name_key = ?) "
                "JOIN offline_users ON name_key = coalesce(named, first)",
                name);
  }

  void Put(const OfflineRecord& record) override {
    if (!writing_.HasStore()) return;
    const DirectoryUser& user = record.User;
    Query(writing_.Data(),
          "INSERT OR REPLACE INTO offline_users (name_key, name, full_name, comment, class, "
          "password_changed_on, iterations, salt, key, confirmed_at, failures, last_failure, "
          "key_id, failures_in_a_row) "
          "VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?)",
          NameKey(user.Name), user.Name, user.FullName, user.Comment, user.ClassName,
          user.PasswordChangedOn, record.Hash.Iterations, record.Hash.Salt, record.Hash.Key,
          record.ConfirmedAt, record.Failures, record.LastFailure, record.Hash.KeyId,
          record.FailuresInARow)
        .Run();
  }

  void Remove(StringView name) override {
    if (!writing_.HasStore()) return;
    Query(writing_.Data(), "DELETE FROM offline_users WHERE name_key = ?", NameKey(name)).Run();
  }

  void Commit() override {
    if (writing_.HasStore()) writing_.Commit();
  }

 private:
  std::optional<OfflineRecord> Read(const char* sql, StringView name) {
    if (!writing_.HasStore()) return std::nullopt;
    Query query(writing_.Data(), sql, NameKey(name));
    if (!query.Next()) return std::nullopt;
    OfflineRecord record;
    record.User.Name = query.Text(0);
    record.User.FullName = query.Text(1);
    record.User.Comment = query.Text(2);
    record.User.ClassName = query.Text(3);
    record.User.PasswordChangedOn = static_cast<std::int32_t>(query.Number(4));
    record.Hash = PasswordIn(query, 5);
    record.ConfirmedAt = query.Number(9);
    record.Failures = static_cast<std::int32_t>(query.Number(10));
    record.FailuresInARow = static_cast<std::int32_t>(query.Number(11));
    record.LastFailure = query.Number(12);
    return record;
  }

  UserStore::Writing writing_;
};

}  // namespace

std::unique_ptr<OfflineStore::Hold> OfflineTable::Open() {
  return std::make_unique<HeldTable>(store_);
}

}  // namespace krx::runtime
