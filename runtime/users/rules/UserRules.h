#pragma once

#include <cstdint>
#include <vector>

#include "base/String.h"
#include "runtime/users/rules/DirectoryRules.h"

namespace krx::runtime {

inline constexpr std::int32_t kMostIterations = 100'000'000;  // of a password's hash

// A kind of users; a class is below another when its level is strictly less.
struct UserClass {
  String Name;
  String DisplayText;
  std::int32_t Level = 0;

  bool operator==(const UserClass& other) const = default;
};

// What a plant can set. The defaults follow current guidance: long passwords without composition
// rules and without expiry, and slow hashing as OWASP's Password Storage Cheat Sheet recommends it
// (2023: PBKDF2-HMAC-SHA256 with 600,000 iterations).
struct UserRules {
  std::int32_t MinimumLength = 8;          // code points
  std::int32_t MaximumLength = 128;        // code points
  std::int32_t PasswordHistory = 4;        // last passwords that cannot be used again, current too
  std::int32_t PasswordMinimumDays = 0;    // as long nobody changes his own one again
  std::int32_t RefuseCommonPasswords = 1;  // 0: only the plant's own list is refused
  std::int32_t PasswordExpiryDays = 0;     // 0: passwords do not expire
  std::int32_t LogOnsPerPassword = 0;      // 0: unlimited
  std::int32_t LockOutFailures = 5;        // wrong passwords in a row
  std::int32_t LockOutMinutes = 15;        // 0: until an administrator activates the user
  std::int32_t OwnRecordMinutes = 10;      // as long after a log-on one changes one's own record
  std::int32_t HashIterations = 600'000;   // of new hashes; older ones follow at the next log-on
  bool KeyedPasswords = false;             // new hashes need a key that lies apart
  std::int32_t AdministratorLevel = 100;   // class level from which a user is an administrator
  std::int32_t AdministrationMode = 1;     // see AdministrationRights
  std::int32_t AuditRecords = 100'000;     // as many stay in the database; 0: all
  std::int32_t AuditDays = 0;              // as long they stay there; 0: for ever
  bool AuditEventLog = false;              // events go to the machine's event log, too
  bool LogOnWithFullDisk = true;  // else nobody logs on while there is no room for a record
  std::int32_t LogOffAfterIdleMinutes = 0;  // 0: nobody is logged off
  bool LastLogOnNotice = false;             // told after each log-on
  std::vector<UserClass> Classes = {{u"Operator", u"Operator", 10},
                                    {u"Engineer", u"Engineer", 50},
                                    {u"Administrator", u"Administrator", 100}};
  DirectoryRules Directory;  // users beside the local ones

  // Null when there is no such class; names are compared exactly.
  const UserClass* FindClass(StringView name) const;
  bool IsAdministratorClass(StringView name) const;
  bool operator==(const UserRules& other) const = default;
};

}  // namespace krx::runtime
