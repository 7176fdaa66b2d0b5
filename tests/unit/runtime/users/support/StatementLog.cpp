#include "support/StatementLog.h"

#include <sqlite3.h>

namespace krx::test {
namespace {

std::vector<std::string>* log_in_use = nullptr;

int Note(unsigned, void*, void* statement, void*) {
  if (log_in_use != nullptr)
    log_in_use->emplace_back(sqlite3_sql(static_cast<sqlite3_stmt*>(statement)));
  return 0;
}

int Attach(sqlite3* connection, const char**, const sqlite3_api_routines*) {
  return sqlite3_trace_v2(connection, SQLITE_TRACE_STMT, &Note, nullptr);
}

using Entry = void (*)();
const Entry kEntry = reinterpret_cast<Entry>(&Attach);

}  // namespace

StatementLog::StatementLog() {
  log_in_use = &texts_;
  sqlite3_auto_extension(kEntry);
}

StatementLog::~StatementLog() {
  sqlite3_cancel_auto_extension(kEntry);
  log_in_use = nullptr;
}

}  // namespace krx::test
