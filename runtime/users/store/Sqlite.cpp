#include "runtime/users/store/Sqlite.h"

#include <sqlite3.h>

#include <memory>
#include <new>
#include <string>
#include <utility>

#include "base/Utf8.h"
#include "runtime/core/KorvelError.h"

namespace krx::runtime {
namespace {

constexpr int kPauseOfDatabase = 3;  // milliseconds between two tries
constexpr int kStampAt = 24;

String Described(const char* text) {
  return FromUtf8(text).value_or(u"unknown failure");
}

std::string NameOf(const std::filesystem::path& file) {
  return ToUtf8(file.u16string());
}

sqlite3_vfs* FileSystemOf(const DatabaseAccess& access) {
  if (sqlite3_initialize() != SQLITE_OK) throw std::bad_alloc();
  return sqlite3_vfs_find(access.FileSystem);
}

// The name as the file system wants it; the library hands names on as it gets them.
std::string FullName(sqlite3_vfs* system, const std::filesystem::path& file) {
  std::string full(static_cast<std::size_t>(system->mxPathname) + 1, '\0');
  std::string name = NameOf(file);
  if (system->xFullPathname(system, name.c_str(), static_cast<int>(full.size()), full.data()) !=
      SQLITE_OK) {
    return name;
  }
  full.resize(full.find('\0'));
  return full;
}

}  // namespace

UnableToSave::UnableToSave(String description)
    : Error(KorvelError(kUnableToSaveUsers, std::move(description))) {}

SqliteLibrary::~SqliteLibrary() {
  sqlite3_shutdown();
}

Database::Database(const std::filesystem::path& file, const DatabaseAccess& access, bool creates)
    : name_(file.u16string()) {
  FileSystemOf(access);
  BeginPatience(access.Patience);
  const int flags =
      SQLITE_OPEN_READWRITE | SQLITE_OPEN_FULLMUTEX | (creates ? SQLITE_OPEN_CREATE : 0);
  const int code = sqlite3_open_v2(NameOf(file).c_str(), &connection_, flags, access.FileSystem);
  try {
    if (code != SQLITE_OK) Fail(code);
    sqlite3_busy_handler(connection_, &WaitForOthers, this);
    Configure();
  } catch (...) {
    sqlite3_close(connection_);
    throw;
  }
}

Database::~Database() {
  for (const auto& [sql, statement] : prepared_)
    sqlite3_finalize(statement);
  sqlite3_close(connection_);
}

bool Database::Exists(const std::filesystem::path& file, const DatabaseAccess& access) {
  sqlite3_vfs* const system = FileSystemOf(access);
  int exists = 0;
  const int code =
      system->xAccess(system, FullName(system, file).c_str(), SQLITE_ACCESS_EXISTS, &exists);
  // What cannot be looked at is not missing.
  return code != SQLITE_OK || exists != 0;
}

// Nothing here reads the file, so that a damaged one is told by the first statement. The journal is
// deleted with each commit, so nobody needs a right to more than two files. The first page alone is
// mapped, which no change cuts off: the stamp in it is then read without the system.
void Database::Configure() {
  sqlite3_extended_result_codes(connection_, 1);
  Run("PRAGMA foreign_keys = ON;"
      "PRAGMA synchronous = EXTRA;"
      "PRAGMA secure_delete = ON;"
      "PRAGMA trusted_schema = OFF;"
      "PRAGMA temp_store = MEMORY;"
      "PRAGMA mmap_size = 4096;"
      "PRAGMA cell_size_check = ON;");
}

void Database::BeginPatience(std::chrono::milliseconds patience) {
  end_of_patience_ = std::chrono::steady_clock::now() + patience;
}

int Database::WaitForOthers(void* database, int) {
  if (std::chrono::steady_clock::now() >= static_cast<Database*>(database)->end_of_patience_)
    return 0;
  sqlite3_sleep(kPauseOfDatabase);
  return 1;
}

void Database::Run(const char* script) {
  const int code = sqlite3_exec(connection_, script, nullptr, nullptr, nullptr);
  if (code != SQLITE_OK) Fail(code);
}

std::int64_t Database::LastId() const {
  return sqlite3_last_insert_rowid(connection_);
}

Database::Stamp Database::ReadStamp() {
  sqlite3_file* file = nullptr;
  int code = sqlite3_file_control(connection_, "main", SQLITE_FCNTL_FILE_POINTER,
                                  static_cast<void*>(&file));
  Stamp stamp{};
  if (code == SQLITE_OK && file != nullptr && file->pMethods != nullptr)
    code = file->pMethods->xRead(file, stamp.data(), static_cast<int>(stamp.size()), kStampAt);
  // A file that is still empty has no stamp.
  if (code != SQLITE_OK && code != SQLITE_IOERR_SHORT_READ) Fail(code);
  return stamp;
}

void Database::CopyTo(Database& other) {
  sqlite3_backup* const copying =
      sqlite3_backup_init(other.connection_, "main", connection_, "main");
  if (copying == nullptr) other.Fail(sqlite3_errcode(other.connection_));
  int code = SQLITE_OK;
  do {
    code = sqlite3_backup_step(copying, -1);
  } while ((code == SQLITE_BUSY || code == SQLITE_LOCKED) && WaitForOthers(&other, 0) != 0);
  sqlite3_backup_finish(copying);
  if (code != SQLITE_DONE) other.Fail(code);
}

sqlite3_stmt* Database::Prepared(std::string_view sql) {
  const auto found = prepared_.find(sql);
  if (found != prepared_.end()) return found->second;
  sqlite3_stmt* statement = nullptr;
  const int code = sqlite3_prepare_v3(connection_, sql.data(), static_cast<int>(sql.size()),
                                      SQLITE_PREPARE_PERSISTENT, &statement, nullptr);
  if (code != SQLITE_OK) Fail(code);
  return prepared_.emplace(sql, statement).first->second;
}

void Database::Fail(int code) const {
  const int kind = code & 0xFF;
  if (kind == SQLITE_NOMEM) throw std::bad_alloc();
  const String reason =
      name_ + u": " + Described(sqlite3_errstr(code)) + u" (" + ToString(code) + u")";
  if (kind == SQLITE_BUSY || kind == SQLITE_LOCKED)
    throw KorvelError(kStoreBusy, name_ + u": another process holds the users");
  if (kind == SQLITE_CORRUPT || kind == SQLITE_NOTADB || kind == SQLITE_ERROR ||
      kind == SQLITE_SCHEMA || kind == SQLITE_MISMATCH) {
    throw KorvelError(kUnreadableUsers, reason);
  }
  if (Writing && kind == SQLITE_FULL) throw DiskFull(reason);
  if (Writing) throw UnableToSave(reason);
  throw KorvelError(kFileFailure, reason);
}

Query::Query(Database& database, const char* sql)
    : database_(database), statement_(database.Prepared(sql)) {}

Query::~Query() {
  sqlite3_reset(statement_);
  sqlite3_clear_bindings(statement_);
}

bool Query::Next() {
  const int code = sqlite3_step(statement_);
  if (code == SQLITE_ROW) return true;
  if (code != SQLITE_DONE) database_.Fail(code);
  return false;
}

void Query::Run() {
  while (Next()) {
  }
}

std::int64_t Query::Number(int column) const {
  return sqlite3_column_int64(statement_, column);
}

String Query::Text(int column) const {
  const void* const text = sqlite3_column_text16(statement_, column);
  const int bytes = sqlite3_column_bytes16(statement_, column);
  if (text == nullptr) return {};
  return String(static_cast<const char16_t*>(text), static_cast<std::size_t>(bytes) / 2);
}

std::vector<std::uint8_t> Query::Bytes(int column) const {
  const auto* const bytes =
      static_cast<const std::uint8_t*>(sqlite3_column_blob(statement_, column));
  const int size = sqlite3_column_bytes(statement_, column);
  return {bytes, bytes + size};
}

void Query::Check(int code) {
  if (code != SQLITE_OK) database_.Fail(code);
}

void Query::Bind(std::int64_t value) {
  Check(sqlite3_bind_int64(statement_, ++bound_, value));
}

// The library takes a null pointer for a missing value.
void Query::Bind(StringView text) {
  Check(sqlite3_bind_text16(statement_, ++bound_, text.empty() ? u"" : text.data(),
                            static_cast<int>(text.size() * 2), SQLITE_TRANSIENT));
}

void Query::Bind(std::span<const std::uint8_t> bytes) {
  Check(sqlite3_bind_blob(statement_, ++bound_,
                          bytes.empty() ? "" : static_cast<const void*>(bytes.data()),
                          static_cast<int>(bytes.size()), SQLITE_TRANSIENT));
}

Transaction::Transaction(Database& database, Kind kind) : database_(database) {
  database.Writing = kind == Kind::Writes;
  try {
    Query(database, kind == Kind::Writes ? "BEGIN IMMEDIATE" : "BEGIN").Run();
  } catch (...) {
    database.Writing = false;
    throw;
  }
}

Transaction::~Transaction() {
  if (open_ && sqlite3_get_autocommit(database_.connection_) == 0)
    sqlite3_exec(database_.connection_, "ROLLBACK", nullptr, nullptr, nullptr);
  database_.Writing = false;
}

void Transaction::Commit() {
  Query(database_, "COMMIT").Run();
  open_ = false;
}

}  // namespace krx::runtime
