#pragma once

#include <chrono>
#include <mutex>
#include <optional>

#include "runtime/users/rules/UserRules.h"
#include "runtime/users/store/UserStore.h"

namespace krx::runtime {

// The rules of users.conf, and the last good ones of it, which lie in the database and stay in
// force while the file is malformed, also for processes that start then. A change of the rules, and
// a file that becomes malformed, is recorded once.
class RulesInForce {
 public:
  RulesInForce(const SystemServices& system, UserStore& store) : system_(system), store_(store) {}

  // A changed file holds from the next call on, at the latest after SystemServices::RulesLag; one
  // that cannot be recorded does not hold yet.
  // Raises Error for a file that cannot be read, and for a malformed one without good ones before.
  UserRules Get();

  // Why the file as it is now is malformed, with its name and line.
  std::optional<String> Fault();

  std::filesystem::path File() const { return store_.Folder() / "users.conf"; }

 private:
  struct Content;

  Content Read();
  bool Settle(const Content& content);
  bool Keep(const Content& content);

  const SystemServices& system_;
  UserStore& store_;
  // As they were settled last: lists of users ask for them with each user.
  std::mutex guard_;
  std::optional<UserRules> rules_;
  FileStamp stamp_;
  std::chrono::steady_clock::time_point unchanged_at_;
  std::string bytes_;
};

// Makes the file's content the good rules that are kept, within the transaction of the caller.
void KeepRules(Database& database, std::string_view bytes);

}  // namespace krx::runtime
