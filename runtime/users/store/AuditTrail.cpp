#include "runtime/users/store/AuditTrail.h"

#include <algorithm>
#include <chrono>
#include <cstdio>

#include "runtime/core/KorvelError.h"

namespace krx::runtime {
namespace {

constexpr int kPortion = 500;  // records that are read at once, so that nobody waits long

Digest DigestIn(const std::vector<std::uint8_t>& bytes) {
  Digest digest{};
  std::copy_n(bytes.begin(), std::min(bytes.size(), digest.size()), digest.begin());
  return digest;
}

void AddNumber(std::vector<std::uint8_t>& bytes, std::int64_t number, int size) {
  for (int shift = 8 * (size - 1); shift >= 0; shift -= 8)
    bytes.push_back(static_cast<std::uint8_t>((number >> shift) & 0xFF));
}

// With its length, so that no text can pass as the end of one and the begin of the next.
void AddText(std::vector<std::uint8_t>& bytes, StringView text) {
  const std::string utf8 = ToUtf8(text);
  AddNumber(bytes, static_cast<std::int64_t>(utf8.size()), 4);
  bytes.insert(bytes.end(), utf8.begin(), utf8.end());
}

struct Chain {
  std::int64_t NumberBefore = 0;
  Digest HashBefore{};
  std::int64_t LastNumber = 0;
  Digest LastHash{};
};

Chain ReadChain(Database& database) {
  Query query(database,
              "SELECT number_before, hash_before, last_number, last_hash FROM audit_chain");
  if (!query.Next()) throw KorvelError(kUnreadableUsers, u"the audit records have no end");
  return {query.Number(0), DigestIn(query.Bytes(1)), query.Number(2), DigestIn(query.Bytes(3))};
}

AuditRecord RecordOf(const Query& query) {
  AuditRecord record;
  record.Number = query.Number(0);
  record.At = query.Number(1);
  record.Entry.Actor = query.Text(2);
  record.Origin = {query.Text(3), query.Text(4), query.Text(5)};
  record.Entry.Action = query.Text(6);
  record.Entry.Subject = query.Text(7);
  record.Entry.Outcome = query.Text(8);
  record.Hash = DigestIn(query.Bytes(9));
  return record;
}

void Insert(Database& database, const AuditRecord& record) {
  Query(database, "INSERT INTO audit VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?)", record.Number,
        record.At, record.Entry.Actor, record.Origin.Station, record.Origin.Process,
        record.Origin.Account, record.Entry.Action, record.Entry.Subject, record.Entry.Outcome,
        std::span<const std::uint8_t>(record.Hash))
      .Run();
}

}  // namespace

Digest AuditTrail::DigestOf(const Digest& before, const AuditRecord& record) {
  std::vector<std::uint8_t> bytes(before.begin(), before.end());
  AddNumber(bytes, record.Number, 8);
  AddNumber(bytes, record.At, 8);
  for (const String* const text :
       {&record.Entry.Actor, &record.Origin.Station, &record.Origin.Process, &record.Origin.Account,
        &record.Entry.Action, &record.Entry.Subject, &record.Entry.Outcome}) {
    AddText(bytes, *text);
  }
  return cryptography_.Hash(bytes);
}

AuditRecord AuditTrail::Add(std::int64_t now, const AuditOrigin& origin, const AuditEntry& entry) {
  const Chain chain = ReadChain(database_);
  AuditRecord record{chain.LastNumber + 1, now, entry, origin, {}};
  record.Hash = DigestOf(chain.LastHash, record);
  Insert(database_, record);
  Query(database_, "UPDATE audit_chain SET last_number = ?, last_hash = ?", record.Number,
        std::span<const std::uint8_t>(record.Hash))
      .Run();
  return record;
}

void AuditTrail::MoveTo(Database& archive, std::int64_t last) {
  const Chain chain = ReadChain(database_);
  std::int64_t number = chain.NumberBefore;
  Digest hash = chain.HashBefore;
  while (number < last) {
    const std::vector<AuditRecord> records = After(number, kPortion);
    for (const AuditRecord& record : records) {
      if (record.Number != number + 1) break;
      if (record.Number > last) break;
      Insert(archive, record);
      number = record.Number;
      hash = record.Hash;
    }
    if (number < last && (records.empty() || records.back().Number != number))
      throw KorvelError(kUnreadableUsers, u"audit records are missing");
  }
  Query(archive, "INSERT INTO audit_chain VALUES (1, ?, ?, ?, ?)", chain.NumberBefore,
        std::span<const std::uint8_t>(chain.HashBefore), number,
        std::span<const std::uint8_t>(hash))
      .Run();
  Query(database_, "DELETE FROM audit WHERE number <= ?", last).Run();
  Query(database_, "UPDATE audit_chain SET number_before = ?, hash_before = ?", number,
        std::span<const std::uint8_t>(hash))
      .Run();
}

std::vector<AuditRecord> AuditTrail::After(std::int64_t number, int count) {
  std::vector<AuditRecord> records;
  Query query(database_,
              "SELECT number, at, actor, station, process, account, action, subject, outcome, hash "
              "FROM audit WHERE number > ? ORDER BY number LIMIT ?",
              number, count);
  while (query.Next())
    records.push_back(RecordOf(query));
  return records;
}

AuditVerdict AuditTrail::Verify() {
  const Chain chain = ReadChain(database_);
  AuditVerdict verdict;
  std::int64_t number = chain.NumberBefore;
  Digest hash = chain.HashBefore;
  const auto broken = [&](std::int64_t at, const char16_t* reason) {
    verdict.FirstBroken = at;
    verdict.Reason = reason;
    return verdict;
  };
  while (number < chain.LastNumber) {
    const std::vector<AuditRecord> records = After(number, kPortion);
    if (records.empty()) return broken(number + 1, u"it is missing");
    for (const AuditRecord& record : records) {
      if (record.Number != number + 1) return broken(number + 1, u"it is missing");
      hash = DigestOf(hash, record);
      if (record.Hash != hash) return broken(record.Number, u"it does not follow the one before");
      number = record.Number;
      ++verdict.Records;
      if (number == chain.LastNumber && hash != chain.LastHash)
        return broken(number, u"it is not the last one that was written");
    }
  }
  Query beyond(database_,
               "SELECT max(number) FROM audit, audit_chain HAVING max(number) > last_number");
  if (beyond.Next()) return broken(beyond.Number(0), u"nobody recorded it");
  return verdict;
}

std::string TimeStamp(std::int64_t seconds) {
  using namespace std::chrono;
  const sys_seconds time{std::chrono::seconds(seconds)};
  const sys_days day = floor<days>(time);
  const year_month_day date(day);
  const hh_mm_ss clock(time - day);
  char text[64];
  std::snprintf(text, sizeof text, "%04d-%02u-%02uT%02d:%02d:%02dZ", static_cast<int>(date.year()),
                static_cast<unsigned>(date.month()), static_cast<unsigned>(date.day()),
                static_cast<int>(clock.hours().count()), static_cast<int>(clock.minutes().count()),
                static_cast<int>(clock.seconds().count()));
  return text;
}

}  // namespace krx::runtime
