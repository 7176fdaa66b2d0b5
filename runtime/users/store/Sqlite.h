#pragma once

#include <array>
#include <chrono>
#include <cstdint>
#include <filesystem>
#include <map>
#include <span>
#include <string_view>
#include <vector>

#include "base/Error.h"
#include "base/String.h"

struct sqlite3;
struct sqlite3_stmt;

namespace krx::runtime {

// Something could not be stored; what was stored before is still in force.
class UnableToSave : public Error {
 public:
  explicit UnableToSave(String description);
};

// The same, because the disk is full.
class DiskFull : public UnableToSave {
 public:
  using UnableToSave::UnableToSave;
};

// Gives back what the database library keeps for the whole module, when the module goes.
class SqliteLibrary {
 public:
  SqliteLibrary() = default;
  ~SqliteLibrary();
  SqliteLibrary(const SqliteLibrary&) = delete;
  SqliteLibrary& operator=(const SqliteLibrary&) = delete;
};

// How a database is reached.
struct DatabaseAccess {
  const char* FileSystem = nullptr;         // of the library, by name; null: the system's
  std::chrono::milliseconds Patience{450};  // that another process may hold the file
};

// An open database file. Every operation raises Error: busy when another process holds the file too
// long, unreadable when it is no such database or damaged, and while `Writing` is set,
// UnableToSave.
class Database {
 public:
  // Opens the file, with `creates` also one that is not there.
  Database(const std::filesystem::path& file, const DatabaseAccess& access, bool creates);
  ~Database();
  Database(const Database&) = delete;
  Database& operator=(const Database&) = delete;

  // Whether there is such a file, as far as the library's file system can tell.
  static bool Exists(const std::filesystem::path& file, const DatabaseAccess& access);

  // Runs statements that return nothing.
  void Run(const char* script);
  std::int64_t LastId() const;
  // What changes with every committed change, by whomever. It is read past all locks: while it is
  // the same, no change has been completed.
  using Stamp = std::array<std::uint8_t, 16>;
  Stamp ReadStamp();
  // Copies all of it to another file, page by page, as of one moment.
  void CopyTo(Database& other);

  // From now on waiting for others lasts so long at most, all waits together.
  void BeginPatience(std::chrono::milliseconds patience);
  bool Writing = false;

 private:
  friend class Query;
  friend class Transaction;

  sqlite3_stmt* Prepared(std::string_view sql);
  void Configure();
  [[noreturn]] void Fail(int code) const;
  static int WaitForOthers(void* database, int count);

  String name_;
  sqlite3* connection_ = nullptr;
  std::map<std::string_view, sqlite3_stmt*> prepared_;
  std::chrono::steady_clock::time_point end_of_patience_;
};

// One run of a statement, which is prepared once for each text; ended with this object.
class Query {
 public:
  // `sql` is a literal; its parameters are bound in order.
  Query(Database& database, const char* sql);
  template <class... Values>
  Query(Database& database, const char* sql, const Values&... values) : Query(database, sql) {
    (Bind(values), ...);
  }
  ~Query();
  Query(const Query&) = delete;
  Query& operator=(const Query&) = delete;

  // Goes to the next row; false behind the last one.
  bool Next();
  // Runs a statement that has no rows.
  void Run();

  std::int64_t Number(int column) const;
  bool Flag(int column) const { return Number(column) != 0; }
  String Text(int column) const;
  std::vector<std::uint8_t> Bytes(int column) const;

 private:
  void Bind(std::int64_t value);
  void Bind(std::int32_t value) { Bind(std::int64_t{value}); }
  void Bind(std::uint32_t value) { Bind(std::int64_t{value}); }
  void Bind(bool value) { Bind(std::int64_t{value}); }
  void Bind(StringView text);
  void Bind(const String& text) { Bind(StringView(text)); }
  void Bind(std::span<const std::uint8_t> bytes);
  void Bind(const std::vector<std::uint8_t>& bytes) { Bind(std::span(bytes)); }
  void Check(int code);

  Database& database_;
  sqlite3_stmt* statement_;
  int bound_ = 0;
};

// A transaction that is rolled back unless it is committed.
class Transaction {
 public:
  enum class Kind { Reads, Writes };

  Transaction(Database& database, Kind kind);
  ~Transaction();
  Transaction(const Transaction&) = delete;
  Transaction& operator=(const Transaction&) = delete;

  void Commit();

 private:
  Database& database_;
  bool open_ = true;
};

}  // namespace krx::runtime
