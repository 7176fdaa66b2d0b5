#pragma once

#include <memory>
#include <optional>

#include "runtime/users/directory/DirectoryUser.h"
#include "runtime/users/passwords/PasswordHash.h"
#include "runtime/users/rules/UserRules.h"
#include "runtime/users/system/Clock.h"
#include "runtime/users/system/Cryptography.h"

namespace krx::runtime {

// What is kept of a user of the directory who has logged on here.
struct OfflineRecord {
  DirectoryUser User;
  PasswordHash Hash;
  std::int64_t ConfirmedAt = 0;     // by a server, seconds since 1970
  std::int32_t Failures = 0;        // attempts since the last lock-out
  std::int32_t FailuresInARow = 0;  // attempts since the last right password
  std::int64_t LastFailure = 0;     // seconds since 1970
};

// Where that is kept.
class OfflineStore {
 public:
  virtual ~OfflineStore() = default;

  // The records, held against every other thread and process until this object goes. Names differ
  // in more than the case of letters.
  class Hold {
   public:
    virtual ~Hold() = default;
    virtual std::optional<OfflineRecord> Find(StringView name) = 0;
    // Another one where there is no such user, by the same work; nothing without any.
    virtual std::optional<OfflineRecord> FindOrAny(StringView name) = 0;
    virtual void Put(const OfflineRecord& record) = 0;
    virtual void Remove(StringView name) = 0;
    // What was put and removed is kept; without it nothing is.
    virtual void Commit() = 0;
  };
  virtual std::unique_ptr<Hold> Open() = 0;
};

// Users of the directory who may log on for some days while no server answers. What is kept of
// their passwords is kept as of any other.
class OfflineUsers {
 public:
  enum class Verdict { Unknown, WrongPassword, LockedOut, Right };
  struct Answer {
    Verdict Outcome = Verdict::Unknown;
    DirectoryUser User;  // empty when unknown
  };

  OfflineUsers(OfflineStore& store, Cryptography& cryptography, Clock& clock,
               PasswordKeys* keys = nullptr)
      : store_(store), cryptography_(cryptography), clock_(clock), keys_(keys) {}

  // A server has found the password right. Without keys, rules that ask for one keep nothing.
  void Remember(const UserRules& rules, const DirectoryUser& user, const Password& password);
  // A server does not let the user in any more.
  void Forget(StringView name);
  // Counts the attempt, stores that, and then looks at the password; by the rules' delays. Who
  // was let in by a server too long ago is unknown. A check takes as long for everybody.
  Answer Check(const UserRules& rules, StringView name, const Password& password);
  // The user, to be shown; nothing when he is unknown.
  std::optional<DirectoryUser> Find(const UserRules& rules, StringView name);

 private:
  struct Attempt {
    Verdict Outcome = Verdict::Unknown;
    std::optional<OfflineRecord> Record;
  };

  Attempt Begin(const UserRules& rules, StringView name);
  bool IsValid(const UserRules& rules, const OfflineRecord& record);
  bool Admit(const UserRules& rules, OfflineRecord& record);

  OfflineStore& store_;
  Cryptography& cryptography_;
  Clock& clock_;
  PasswordKeys* const keys_;
};

}  // namespace krx::runtime
