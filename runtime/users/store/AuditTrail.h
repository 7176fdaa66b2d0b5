#pragma once

#include <string>
#include <vector>

#include "runtime/users/store/Sqlite.h"
#include "runtime/users/system/Clock.h"
#include "runtime/users/system/Cryptography.h"

namespace krx::runtime {

// One event. A password has no place here, and neither has a name that belongs to no user: people
// type their password into the name field.
struct AuditEntry {
  String Actor;  // who did it: the user logged on or logging on, or empty
  String Action;
  String Subject;  // the user it was done to, or empty
  String Outcome;
};

// Where events come from: the machine, the program and the system's account that it runs under.
struct AuditOrigin {
  String Station;
  String Process;
  String Account;
};

// An event as it is stored.
struct AuditRecord {
  std::int64_t Number = 0;
  std::int64_t At = 0;  // seconds since 1970
  AuditEntry Entry;
  AuditOrigin Origin;
  Digest Hash{};
};

// What a look through the whole chain has found.
struct AuditVerdict {
  std::int64_t Records = 0;
  std::int64_t FirstBroken = 0;  // 0: none
  String Reason;                 // why the first broken one is
};

// The events of the database, numbered and chained: each holds the digest of itself together with
// the digest of the one before, so that none can be changed, left out or put in between unseen.
class AuditTrail {
 public:
  AuditTrail(Database& database, Cryptography& cryptography)
      : database_(database), cryptography_(cryptography) {}

  // Adds an event within the caller's transaction and returns it.
  AuditRecord Add(std::int64_t now, const AuditOrigin& origin, const AuditEntry& entry);

  // Up to `count` events behind the one with this number, in order.
  std::vector<AuditRecord> After(std::int64_t number, int count);
  // Moves the events up to this number to a database with the same tables, which then holds a chain
  // of its own that this one goes on; within the callers' transactions.
  void MoveTo(Database& archive, std::int64_t last);
  // Looks through all events. Others may add to them meanwhile.
  AuditVerdict Verify();

 private:
  Digest DigestOf(const Digest& before, const AuditRecord& record);

  Database& database_;
  Cryptography& cryptography_;
};

// Universal time in the notation of ISO 8601.
std::string TimeStamp(std::int64_t seconds);

}  // namespace krx::runtime
