#include "runtime/users/store/UserStore.h"

#include <string>
#include <utility>

#include "runtime/core/KorvelError.h"
#include "runtime/users/store/OldStore.h"
#include "runtime/users/store/Schema.h"

namespace krx::runtime {

// All users as of one moment, found by name and id.
struct UserStore::Snapshot {
  Snapshot(std::vector<StoredUser> users, const Database::Stamp& stamp)
      : Users(std::move(users)), Stamp(stamp) {
    ByName.reserve(Users.size());
    ById.reserve(Users.size());
    for (std::size_t i = 0; i < Users.size(); ++i) {
      ByName.emplace(Users[i].Name, i);
      ById.emplace(Users[i].Id, i);
    }
  }

  template <class Index, class Key>
  std::optional<StoredUser> At(const Index& index, const Key& key) const {
    const auto found = index.find(key);
    if (found == index.end()) return std::nullopt;
    return Users[found->second];
  }

  const std::vector<StoredUser> Users;
  const Database::Stamp Stamp;
  std::unordered_map<StringView, std::size_t> ByName;
  std::unordered_map<std::uint32_t, std::size_t> ById;
};

UserStore::UserStore(const SystemServices& system, std::filesystem::path folder)
    : system_(system), folder_(std::move(folder)) {}

UserStore::~UserStore() = default;

void UserStore::Close() {
  const std::lock_guard lock(guard_);
  snapshot_.reset();
  database_.reset();
}

// A file without tables is what a creation leaves that was cut off.
void UserStore::Open(bool creates, std::chrono::milliseconds patience) {
  if (database_ != nullptr) {
    database_->BeginPatience(patience);
    return;
  }
  const DatabaseAccess access{system_.Access.FileSystem, patience};
  const bool exists = Database::Exists(File(), access);
  const bool is_old = !exists && HasOldStore(system_.FileSystem, folder_);
  if (!exists && !is_old && !creates) return;
  auto database = std::make_unique<Database>(File(), access, true);
  const int schema = StoredSchema(*database);
  if (schema == 0 && !creates && !HasOldStore(system_.FileSystem, folder_)) return;
  if (schema < CurrentSchema()) Create(*database);
  database_ = std::move(database);
}

// Also brings an older database up to date. Another process may have done so first.
void UserStore::Create(Database& database) {
  Transaction transaction(database, Transaction::Kind::Writes);
  const bool is_new = StoredSchema(database) == 0;
  Migrate(database);
  const bool imports = is_new && HasOldStore(system_.FileSystem, folder_);
  if (imports) {
    UserTable users(database);
    for (const StoredUser& user : ReadOldStore(system_.FileSystem, folder_))
      users.Add(user);
    AuditTrail(database, system_.Crypto)
        .Add(system_.Time.Now(), system_.Origin,
             {u"", u"take over users", u"", u"users of the first version's store"});
  }
  transaction.Commit();
  if (imports) PutOldStoreAside(system_.FileSystem, folder_);
}

const UserStore::Snapshot* UserStore::Fresh() {
  if (snapshot_ != nullptr && snapshot_->Stamp != database_->ReadStamp()) snapshot_.reset();
  return snapshot_.get();
}

UserStore::Reading::Reading(UserStore& store) : store_(store), lock_(store.guard_) {
  store.Open(false, store.system_.Access.Patience);
}

std::optional<StoredUser> UserStore::Reading::Find(StringView name) {
  if (Data() == nullptr) return std::nullopt;
  if (const Snapshot* const all = store_.Fresh()) return all->At(all->ByName, name);
  return UserTable(*Data()).FindRecord(name);
}

std::optional<StoredUser> UserStore::Reading::FindId(std::uint32_t id) {
  if (Data() == nullptr) return std::nullopt;
  if (const Snapshot* const all = store_.Fresh()) return all->At(all->ById, id);
  return UserTable(*Data()).FindRecordOfId(id);
}

bool UserStore::Reading::HasOtherAdministrator(const UserRules& rules, std::uint32_t except,
                                               std::int64_t at) {
  return Data() != nullptr && UserTable(*Data()).HasOtherAdministrator(rules, except, at);
}

const std::vector<StoredUser>& UserStore::Reading::List() {
  static const std::vector<StoredUser> nobody;
  if (Data() == nullptr) return nobody;
  if (store_.Fresh() == nullptr) {
    // The stamp is that of the list while the transaction keeps others from completing a change.
    Transaction transaction(*Data(), Transaction::Kind::Reads);
    std::vector<StoredUser> users = UserTable(*Data()).List();
    store_.snapshot_ = std::make_unique<const Snapshot>(std::move(users), Data()->ReadStamp());
  }
  return store_.snapshot_->Users;
}

UserStore::Writing::Writing(UserStore& store, WithoutStore otherwise)
    : store_(store), lock_(store.guard_) {
  store.Open(otherwise == WithoutStore::Create, store.system_.Access.Patience);
  Begin();
}

UserStore::Writing::Writing(UserStore& store, std::chrono::milliseconds patience)
    : store_(store), lock_(store.guard_) {
  store.Open(false, patience);
  Begin();
}

void UserStore::Writing::Begin() {
  if (store_.database_ == nullptr) return;
  transaction_.emplace(*store_.database_, Transaction::Kind::Writes);
  users_.emplace(*store_.database_);
}

void UserStore::Writing::Record(const AuditEntry& entry) {
  recorded_.push_back(AuditTrail(*store_.database_, store_.system_.Crypto)
                          .Add(store_.system_.Time.Now(), store_.system_.Origin, entry));
}

void UserStore::Writing::Commit() {
  transaction_->Commit();
  if (!store_.forwards_ || store_.system_.Events == nullptr) return;
  for (const AuditRecord& record : recorded_)
    store_.system_.Events->Report(record);
}

}  // namespace krx::runtime
