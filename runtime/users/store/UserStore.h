#pragma once

#include <atomic>
#include <chrono>
#include <memory>
#include <mutex>
#include <unordered_map>

#include "runtime/users/passwords/KeyProtection.h"
#include "runtime/users/store/AuditTrail.h"
#include "runtime/users/store/UserTable.h"
#include "runtime/users/system/EventLog.h"
#include "runtime/users/system/Files.h"

namespace krx::runtime {

// What the user management needs of the machine.
struct SystemServices {
  Files& FileSystem;
  Cryptography& Crypto;
  Clock& Time;
  AuditOrigin Origin = {};
  DatabaseAccess Access = {};
  EventLog* Events = nullptr;           // gets stored events while the rules want it
  KeyProtection* Protection = nullptr;  // of the keys of passwords
  // As long users.conf counts as unchanged: looking at a file is dear to who lists many users.
  std::chrono::milliseconds RulesLag{0};
};

// The users of one folder and the record of what happened to them, in the database users.db.
// Threads of this process wait for each other as long as it takes, other processes for as long as
// SystemServices::Access says. A store of the first version (users.dat) is taken over at the first
// opening.
class UserStore {
 public:
  UserStore(const SystemServices& system, std::filesystem::path folder);
  ~UserStore();
  UserStore(const UserStore&) = delete;
  UserStore& operator=(const UserStore&) = delete;

  const std::filesystem::path& Folder() const { return folder_; }
  std::filesystem::path File() const { return folder_ / "users.db"; }

  // The database file stays open from one operation to the next for as long as somebody uses it.
  class Use {
   public:
    explicit Use(UserStore& store) : store_(store) { ++store_.uses_; }
    ~Use() {
      if (--store_.uses_ == 0) store_.Close();
    }
    Use(const Use&) = delete;
    Use& operator=(const Use&) = delete;

   private:
    UserStore& store_;
  };

  // Looks at the users. What it is asked is answered as of now; without a store there is nobody.
  class Reading : public UserSource {
   public:
    explicit Reading(UserStore& store);

    std::optional<StoredUser> Find(StringView name) override;
    std::optional<StoredUser> FindId(std::uint32_t id) override;
    bool HasOtherAdministrator(const UserRules& rules, std::uint32_t except,
                               std::int64_t at) override;
    // All users in the order of lists. They are kept until somebody changes one: who lists users
    // asks for each of them next.
    const std::vector<StoredUser>& List();
    // Nothing without a store.
    Database* Data() const { return store_.database_.get(); }

   private:
    UserStore& store_;
    std::unique_lock<std::mutex> lock_;
  };

  // Changes users and records it: all of it happens with Commit, or nothing.
  class Writing {
   public:
    enum class WithoutStore { Nothing, Create };

    explicit Writing(UserStore& store, WithoutStore otherwise = WithoutStore::Nothing);
    Writing(UserStore& store, std::chrono::milliseconds patience);

    bool HasStore() const { return transaction_.has_value(); }
    // Only with a store.
    UserTable& Users() { return *users_; }
    // The same, for other tables than that of the users.
    Database& Data() { return *store_.database_; }
    void Record(const AuditEntry& entry);
    void Commit();

   private:
    void Begin();

    UserStore& store_;
    std::unique_lock<std::mutex> lock_;
    std::optional<Transaction> transaction_;
    std::optional<UserTable> users_;
    std::vector<AuditRecord> recorded_;
  };

  // Whether events are handed to the machine's log once they are stored.
  void ForwardEvents(bool forwards) { forwards_ = forwards; }

 private:
  struct Snapshot;

  void Open(bool creates, std::chrono::milliseconds patience);
  void Create(Database& database);
  void Close();
  const Snapshot* Fresh();

  const SystemServices system_;
  const std::filesystem::path folder_;
  std::mutex guard_;
  std::atomic<int> uses_ = 0;
  std::atomic<bool> forwards_ = false;
  std::unique_ptr<Database> database_;
  std::unique_ptr<const Snapshot> snapshot_;
};

}  // namespace krx::runtime
