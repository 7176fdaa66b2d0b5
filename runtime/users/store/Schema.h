#pragma once

#include "runtime/users/store/Sqlite.h"

namespace krx::runtime {

// The version of the tables that this program knows.
int CurrentSchema();

// The version of the tables that are stored; 0 when there are none yet. Raises Error for another
// program's database and for a later version, which is never written.
int StoredSchema(Database& database);

// Brings the tables from their version to the current one, within the transaction of the caller.
void Migrate(Database& database);

}  // namespace krx::runtime
