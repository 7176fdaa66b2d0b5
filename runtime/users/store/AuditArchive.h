#pragma once

#include <vector>

#include "runtime/users/rules/UserRules.h"
#include "runtime/users/store/UserStore.h"

namespace krx::runtime {

// Moves the oldest audit records into a file of their own beside the database when there are as
// many as the rules allow, or older ones; before that, at nine tenths, an event warns once. The
// file's records go on the chain, and the database remembers where they end. Never raises: a
// failure is an event, too, and the records stay where they are.
void KeepAuditInBounds(UserStore& store, const SystemServices& system,
                       const UserRules& rules) noexcept;

// An archive as the database remembers it.
struct AuditArchive {
  std::filesystem::path File;
  std::int64_t First = 0;
  std::int64_t Last = 0;
  bool IsThere = false;
};

// All archives, the oldest first.
std::vector<AuditArchive> ListArchives(Database& database, const UserStore& store,
                                       const SystemServices& system);

// What is wrong with the archives that are there, each with its first record that does not hold.
std::vector<String> CheckArchives(Database& database, const UserStore& store,
                                  const SystemServices& system);

}  // namespace krx::runtime
