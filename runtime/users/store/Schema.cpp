#include "runtime/users/store/Schema.h"

#include <iterator>
#include <string>

#include "runtime/core/KorvelError.h"

namespace krx::runtime {
namespace {

constexpr std::int64_t kApplication = 0x4B525855;  // "KRXU"

// Each makes the next version of the one before; what is published is never changed.
constexpr const char* kMigrations[] = {
    R"sql(
CREATE TABLE users (
  id INTEGER PRIMARY KEY AUTOINCREMENT,
  name TEXT NOT NULL CHECK (name <> ''),
  name_key BLOB NOT NULL UNIQUE,           -- without case; its order is that of lists
  full_name TEXT NOT NULL,
  comment TEXT NOT NULL,
  class TEXT NOT NULL,
  deactivated INTEGER NOT NULL CHECK (deactivated IN (0, 1)),
  must_renew INTEGER NOT NULL CHECK (must_renew IN (0, 1)),
  remaining_log_ons INTEGER NOT NULL CHECK (remaining_log_ons >= -1),
  password_changed_on INTEGER NOT NULL,
  failures INTEGER NOT NULL CHECK (failures >= 0),
  failures_in_a_row INTEGER NOT NULL CHECK (failures_in_a_row >= 0),
  last_failure INTEGER NOT NULL
) STRICT;
CREATE INDEX users_by_class ON users (class);

CREATE TABLE passwords (
  user INTEGER NOT NULL REFERENCES users (id) ON DELETE CASCADE,
  age INTEGER NOT NULL CHECK (age >= 0),   -- 0 is the current one
  iterations INTEGER NOT NULL CHECK (iterations > 0),
  salt BLOB NOT NULL CHECK (length(salt) >= 16),
  key BLOB NOT NULL CHECK (length(key) = 32),
  PRIMARY KEY (user, age)
) STRICT, WITHOUT ROWID;

CREATE TABLE audit (
  number INTEGER PRIMARY KEY CHECK (number > 0),
  at INTEGER NOT NULL,                     -- seconds since 1970
  actor TEXT NOT NULL,
  station TEXT NOT NULL,
  process TEXT NOT NULL,
  account TEXT NOT NULL,
  action TEXT NOT NULL,
  subject TEXT NOT NULL,
  outcome TEXT NOT NULL,
  hash BLOB NOT NULL CHECK (length(hash) = 32)
) STRICT;

-- Where the chain begins, which moves when old records are put away, and where it ends.
CREATE TABLE audit_chain (
  id INTEGER PRIMARY KEY CHECK (id = 1),
  number_before INTEGER NOT NULL,
  hash_before BLOB NOT NULL CHECK (length(hash_before) = 32),
  last_number INTEGER NOT NULL CHECK (last_number >= number_before),
  last_hash BLOB NOT NULL CHECK (length(last_hash) = 32)
) STRICT;
INSERT INTO audit_chain VALUES (1, 0, zeroblob(32), 0, zeroblob(32));

-- An attempt under an unknown name costs what one under a known name costs.
CREATE TABLE unknown_attempts (
  id INTEGER PRIMARY KEY CHECK (id = 1),
  count INTEGER NOT NULL
) STRICT;
INSERT INTO unknown_attempts VALUES (1, 0);
)sql",
    R"sql(
-- Users of the directory service who may log on for a while without it.
CREATE TABLE offline_users (
  name_key BLOB PRIMARY KEY,               -- as in users
  name TEXT NOT NULL CHECK (name <> ''),
  full_name TEXT NOT NULL,
  comment TEXT NOT NULL,
  class TEXT NOT NULL,
  password_changed_on INTEGER NOT NULL,
  iterations INTEGER NOT NULL CHECK (iterations > 0),
  salt BLOB NOT NULL CHECK (length(salt) >= 16),
  key BLOB NOT NULL CHECK (length(key) = 32),
  confirmed_at INTEGER NOT NULL,           -- by a server
  failures INTEGER NOT NULL CHECK (failures >= 0),
  last_failure INTEGER NOT NULL
) STRICT, WITHOUT ROWID;
)sql",
    R"sql(
-- The last good rules, for as long as users.conf is malformed.
CREATE TABLE rules_in_force (
  id INTEGER PRIMARY KEY CHECK (id = 1),
  good BLOB NOT NULL,                      -- the file's content
  malformed BLOB NOT NULL                  -- digest of the malformed one that was recorded, or empty
) STRICT;

-- Files that hold older records, and what has been told of those that are still here.
CREATE TABLE audit_archives (
  first_number INTEGER PRIMARY KEY,
  last_number INTEGER NOT NULL CHECK (last_number >= first_number),
  last_hash BLOB NOT NULL CHECK (length(last_hash) = 32),
  file TEXT NOT NULL
) STRICT;
CREATE TABLE audit_bounds (
  id INTEGER PRIMARY KEY CHECK (id = 1),
  told INTEGER NOT NULL                    -- 0 nothing, 1 that they are many, 2 that moving failed
) STRICT;
INSERT INTO audit_bounds VALUES (1, 0);
)sql",
    R"sql(
-- The secret key that a password was hashed with; empty for none.
ALTER TABLE passwords ADD COLUMN
  key_id BLOB NOT NULL DEFAULT x'' CHECK (length(key_id) IN (0, 8));
ALTER TABLE offline_users ADD COLUMN
  key_id BLOB NOT NULL DEFAULT x'' CHECK (length(key_id) IN (0, 8));

-- As in users.
ALTER TABLE offline_users ADD COLUMN
  failures_in_a_row INTEGER NOT NULL DEFAULT 0 CHECK (failures_in_a_row >= 0);
)sql",
    R"sql(
-- Grows with every attempt, also where nothing else changes: the same is written whatever becomes
-- of it. An attempt under an unknown name counts for one of the users.
ALTER TABLE users ADD COLUMN attempts INTEGER NOT NULL DEFAULT 0;
DROP TABLE unknown_attempts;
)sql"};

std::int64_t Pragma(Database& database, const char* sql) {
  Query query(database, sql);
  return query.Next() ? query.Number(0) : 0;
}

}  // namespace

int CurrentSchema() {
  return static_cast<int>(std::size(kMigrations));
}

int StoredSchema(Database& database) {
  const std::int64_t version = Pragma(database, "PRAGMA user_version");
  const std::int64_t application = Pragma(database, "PRAGMA application_id");
  if (version == 0 && application == 0) return 0;
  if (application != kApplication)
    throw KorvelError(kUnreadableUsers, u"the users' database is another program's");
  if (version > CurrentSchema())
    throw KorvelError(kUnreadableUsers, u"the users' database is of a later version");
  return static_cast<int>(version);
}

void Migrate(Database& database) {
  for (int version = StoredSchema(database); version < CurrentSchema(); ++version) {
    database.Run(kMigrations[version]);
    database.Run(("PRAGMA user_version = " + std::to_string(version + 1) + ";" +
                  "PRAGMA application_id = " + std::to_string(kApplication))
                     .c_str());
  }
}

}  // namespace krx::runtime
