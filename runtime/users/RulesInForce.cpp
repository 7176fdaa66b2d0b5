#include "runtime/users/RulesInForce.h"

#include <span>
#include <string>

#include "runtime/core/KorvelError.h"
#include "runtime/users/rules/RulesFile.h"

namespace krx::runtime {
namespace {

constexpr std::chrono::milliseconds kPatienceForRules{50};

std::span<const std::uint8_t> BytesOf(std::string_view text) {
  return {reinterpret_cast<const std::uint8_t*>(text.data()), text.size()};
}

// What the database knows of the rules.
struct Kept {
  std::string Good;
  std::vector<std::uint8_t> Malformed;  // digest of the malformed file that was recorded last
};

std::optional<Kept> ReadKept(Database& database) {
  Query query(database, "SELECT good, malformed FROM rules_in_force");
  if (!query.Next()) return std::nullopt;
  const std::vector<std::uint8_t> good = query.Bytes(0);
  return Kept{std::string(good.begin(), good.end()), query.Bytes(1)};
}

void Write(Database& database, std::string_view good, std::span<const std::uint8_t> malformed) {
  Query(database, "INSERT OR REPLACE INTO rules_in_force VALUES (1, ?, ?)", BytesOf(good),
        malformed)
      .Run();
}

}  // namespace

struct RulesInForce::Content {
  std::string Bytes;
  std::optional<UserRules> Rules;  // nothing when it is malformed
  std::optional<Error> Fault;
};

RulesInForce::Content RulesInForce::Read() {
  Content content;
  content.Bytes = system_.FileSystem.Read(File()).value_or(std::string());
  try {
    content.Rules = ParseRules(File().u16string(), content.Bytes);
  } catch (const Error& fault) {
    content.Fault = fault;
  }
  return content;
}

std::optional<String> RulesInForce::Fault() {
  const Content content = Read();
  if (!content.Fault) return std::nullopt;
  return content.Fault->Description();
}

UserRules RulesInForce::Get() {
  const std::lock_guard lock(guard_);
  const auto now = std::chrono::steady_clock::now();
  if (rules_ && now - unchanged_at_ < system_.RulesLag) return *rules_;
  // Taken first: what is written while the file is read gets another stamp.
  const FileStamp stamp = system_.FileSystem.Stamp(File());
  const bool is_same = rules_ && stamp.IsSettled && stamp == stamp_;
  const Content content = is_same ? Content() : Read();
  if (is_same || (rules_ && content.Bytes == bytes_)) {
    stamp_ = stamp;
    unchanged_at_ = now;
    return *rules_;
  }
  const bool settled = Settle(content);
  UserRules rules = *rules_;
  store_.ForwardEvents(rules.AuditEventLog);
  if (settled) {
    stamp_ = stamp;
    bytes_ = content.Bytes;
  } else {
    rules_.reset();  // tried again by the next call
  }
  return rules;
}

// Finds what is in force now; false when it could not be recorded.
bool RulesInForce::Settle(const Content& content) {
  std::optional<Kept> kept;
  bool reached = true;
  try {
    UserStore::Reading reading(store_);
    if (reading.Data() != nullptr) kept = ReadKept(*reading.Data());
  } catch (const Error&) {
    reached = false;  // what the caller wants of the store will say so
  }
  if (!kept) {
    if (!content.Rules && !rules_) throw *content.Fault;
    if (content.Rules) rules_ = content.Rules;
    return reached && content.Rules && Keep(content);
  }
  const UserRules before = ParseRules(File().u16string(), kept->Good);
  const bool is_kept = Keep(content);
  rules_ = content.Rules && (is_kept || *content.Rules == before) ? *content.Rules : before;
  return is_kept;
}

// Looks again at what is kept: another process may have been first.
bool RulesInForce::Keep(const Content& content) {
  try {
    UserStore::Writing writing(store_, kPatienceForRules);
    if (!writing.HasStore()) return true;
    const std::optional<Kept> kept = ReadKept(writing.Data());
    if (content.Fault) {
      const Digest digest = system_.Crypto.Hash(BytesOf(content.Bytes));
      if (!kept || kept->Malformed == std::vector<std::uint8_t>(digest.begin(), digest.end()))
        return true;
      Write(writing.Data(), kept->Good, digest);
      writing.Record({u"", u"read rules", u"",
                      u"refused, the rules before stay in force: " + content.Fault->Description()});
    } else {
      if (kept && kept->Good == content.Bytes && kept->Malformed.empty()) return true;
      KeepRules(writing.Data(), content.Bytes);
      const UserRules before = kept ? ParseRules(File().u16string(), kept->Good) : *content.Rules;
      if (*content.Rules != before || (kept && !kept->Malformed.empty()))
        writing.Record({u"", u"change rules", u"", DescribeChange(before, *content.Rules)});
    }
    writing.Commit();
    return true;
  } catch (const Error&) {
    return false;
  }
}

void KeepRules(Database& database, std::string_view bytes) {
  Write(database, bytes, {});
}

}  // namespace krx::runtime
