#include "runtime/users/store/AuditArchive.h"

#include <algorithm>
#include <string>

#include "base/Utf8.h"

namespace krx::runtime {
namespace {

constexpr std::chrono::milliseconds kPatienceForArchives{50};
constexpr std::int64_t kMostAtOnce = 5'000;  // records that are moved while somebody waits
constexpr std::int64_t kDay = std::int64_t{24} * 60 * 60;

enum Told { kNothing, kWarning, kFailure };

struct Filling {
  std::int64_t First = 0;
  std::int64_t Count = 0;
  std::int64_t Oldest = 0;  // time of the first
  std::int64_t Told = kNothing;
};

Filling ReadFilling(Database& database) {
  Filling filling;
  Query chain(database, "SELECT number_before, last_number, told FROM audit_chain, audit_bounds");
  if (!chain.Next()) return filling;
  filling.First = chain.Number(0) + 1;
  filling.Count = chain.Number(1) - chain.Number(0);
  filling.Told = chain.Number(2);
  Query oldest(database, "SELECT at FROM audit WHERE number = ?", filling.First);
  if (oldest.Next()) filling.Oldest = oldest.Number(0);
  return filling;
}

void Tell(UserStore& store, Told told, const String& outcome) {
  UserStore::Writing writing(store, kPatienceForArchives);
  if (!writing.HasStore()) return;
  Query(writing.Data(), "UPDATE audit_bounds SET told = ?", static_cast<std::int32_t>(told)).Run();
  writing.Record({u"", u"archive audit records", u"", outcome});
  writing.Commit();
}

// The number of the last record that has to go; 0 when all may stay.
std::int64_t LastToMove(Database& database, const UserRules& rules, std::int64_t now) {
  const Filling filling = ReadFilling(database);
  if (filling.Count == 0) return 0;
  const std::int64_t most = std::min<std::int64_t>(kMostAtOnce, filling.Count);
  if (rules.AuditRecords > 0 && filling.Count >= rules.AuditRecords)
    return filling.First - 1 + std::min<std::int64_t>(most, rules.AuditRecords / 2);
  if (rules.AuditDays == 0 || filling.Oldest > now - rules.AuditDays * kDay) return 0;
  // Half of the time at once, so that not every day has a file of its own.
  Query old(database, "SELECT max(number) FROM audit WHERE at <= ? AND number < ?",
            now - rules.AuditDays * kDay / 2, filling.First + most);
  return old.Next() ? old.Number(0) : 0;
}

// The tables are those of the database, with its very text.
void MakeTables(Database& source, Database& archive) {
  archive.Run("DROP TABLE IF EXISTS audit; DROP TABLE IF EXISTS audit_chain");
  Query tables(source, "SELECT sql FROM sqlite_schema WHERE name IN ('audit', 'audit_chain')");
  while (tables.Next())
    archive.Run(ToUtf8(tables.Text(0)).c_str());
}

void Move(UserStore::Writing& writing, const UserStore& store, const SystemServices& system,
          std::int64_t last) {
  Database& database = writing.Data();
  const std::int64_t first = ReadFilling(database).First;
  const String name =
      FromUtf8("audit-" + std::to_string(first) + "-" + std::to_string(system.Time.Now()) + ".db")
          .value_or(String());
  {
    Database archive(store.Folder() / name, system.Access, true);
    Transaction transaction(archive, Transaction::Kind::Writes);
    MakeTables(database, archive);
    AuditTrail(database, system.Crypto).MoveTo(archive, last);
    transaction.Commit();
  }
  Query(database,
        "INSERT INTO audit_archives SELECT ?, number_before, hash_before, ? FROM audit_chain",
        first, name)
      .Run();
  Query(database, "UPDATE audit_bounds SET told = 0").Run();
  writing.Record({u"", u"archive audit records", u"",
                  name + u" holds " + FromUtf8(std::to_string(first)).value_or(String()) + u" to " +
                      FromUtf8(std::to_string(last)).value_or(String())});
  writing.Commit();
}

void WarnInTime(UserStore& store, const UserRules& rules) {
  Filling filling;
  {
    UserStore::Reading reading(store);
    if (reading.Data() == nullptr || rules.AuditRecords == 0) return;
    filling = ReadFilling(*reading.Data());
  }
  if (filling.Told != kNothing || filling.Count < std::int64_t{rules.AuditRecords} / 10 * 9) return;
  Tell(store, kWarning,
       u"warning: " + ToString(static_cast<std::int32_t>(filling.Count)) + u" of " +
           ToString(rules.AuditRecords) + u" records, the oldest will be archived");
}

std::int64_t ToMoveNow(UserStore& store, const UserRules& rules, std::int64_t now) {
  UserStore::Reading reading(store);
  return reading.Data() == nullptr ? 0 : LastToMove(*reading.Data(), rules, now);
}

void TellOfFailure(UserStore& store, const Error& failure) noexcept {
  try {
    {
      UserStore::Reading reading(store);
      if (reading.Data() == nullptr || ReadFilling(*reading.Data()).Told == kFailure) return;
    }
    Tell(store, kFailure, u"failed: " + failure.Description());
  } catch (...) {
  }
}

}  // namespace

void KeepAuditInBounds(UserStore& store, const SystemServices& system,
                       const UserRules& rules) noexcept {
  try {
    const std::int64_t now = system.Time.Now();
    if (ToMoveNow(store, rules, now) == 0) return WarnInTime(store, rules);
    UserStore::Writing writing(store, kPatienceForArchives);
    if (!writing.HasStore()) return;
    // Another process may have been first.
    if (const std::int64_t last = LastToMove(writing.Data(), rules, now))
      Move(writing, store, system, last);
  } catch (const Error& failure) {
    TellOfFailure(store, failure);
  } catch (...) {
  }
}

std::vector<AuditArchive> ListArchives(Database& database, const UserStore& store,
                                       const SystemServices& system) {
  std::vector<AuditArchive> archives;
  Query query(database, "SELECT file, first_number, last_number FROM audit_archives ORDER BY 2");
  while (query.Next()) {
    const std::filesystem::path file = store.Folder() / query.Text(0);
    archives.push_back(
        {file, query.Number(1), query.Number(2), Database::Exists(file, system.Access)});
  }
  return archives;
}

std::vector<String> CheckArchives(Database& database, const UserStore& store,
                                  const SystemServices& system) {
  std::vector<String> problems;
  for (const AuditArchive& archive : ListArchives(database, store, system)) {
    if (!archive.IsThere) continue;
    Database data(archive.File, system.Access, false);
    AuditVerdict verdict = AuditTrail(data, system.Crypto).Verify();
    Query ends(data, "SELECT number_before, hash_before, last_number, last_hash FROM audit_chain");
    Query known(database,
                "SELECT first_number, coalesce((SELECT last_hash FROM audit_archives AS before "
                "WHERE before.last_number = audit_archives.first_number - 1), zeroblob(32)), "
                "last_number, last_hash FROM audit_archives WHERE first_number = ?",
                archive.First);
    const bool matches = ends.Next() && known.Next() && ends.Number(0) + 1 == known.Number(0) &&
                         ends.Bytes(1) == known.Bytes(1) && ends.Number(2) == known.Number(2) &&
                         ends.Bytes(3) == known.Bytes(3);
    if (verdict.FirstBroken == 0 && !matches) {
      verdict.FirstBroken = archive.First;
      verdict.Reason = u"the archive is not the one that was written";
    }
    if (verdict.FirstBroken != 0) {
      problems.push_back(archive.File.filename().u16string() + u": audit record " +
                         ToString(static_cast<std::int32_t>(verdict.FirstBroken)) + u": " +
                         verdict.Reason);
    }
  }
  Query end(database,
            "SELECT 1 FROM audit_chain, audit_archives WHERE audit_archives.last_number = "
            "(SELECT max(last_number) FROM audit_archives) AND (number_before <> "
            "audit_archives.last_number OR hash_before <> audit_archives.last_hash)");
  if (end.Next()) problems.push_back(u"the audit records do not go on where the archives end");
  return problems;
}

}  // namespace krx::runtime
