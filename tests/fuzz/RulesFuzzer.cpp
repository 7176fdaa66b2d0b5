#include <algorithm>

#include "Source.h"
#include "runtime/users/passwords/RefusedPasswords.h"
#include "runtime/users/rules/GuessingDelay.h"
#include "runtime/users/rules/Names.h"
#include "runtime/users/rules/RulesFile.h"

// Files that a plant writes for its users: the rules and the refused passwords; and the names that
// they speak of.

namespace krx::fuzz {
namespace {

using namespace krx::runtime;

constexpr std::string_view kWords[] = {"\n",
                                       " = ",
                                       "0",
                                       "1",
                                       "100",
                                       "yes",
                                       "no",
                                       "minimum-length = ",
                                       "maximum-length = ",
                                       "password-history = ",
                                       "password-minimum-days = ",
                                       "password-expiry-days = ",
                                       "lock-out-failures = ",
                                       "lock-out-minutes = ",
                                       "hash-iterations = ",
                                       "administrator-level = ",
                                       "administration-mode = ",
                                       "audit-records = ",
                                       "when-disk-full = ",
                                       "keyed-passwords = ",
                                       "class = ",
                                       " | ",
                                       "Operator | 10 | Op",
                                       "Administrator | 100 | Ad",
                                       "directory = ",
                                       "ldaps://h1",
                                       "ldap://localhost:389",
                                       "[::1]",
                                       "directory-base = dc=plant\n",
                                       "directory-class = Administrator | cn=a,dc=plant\n",
                                       "directory-user-filter = (uid={user})\n",
                                       "directory-group-filter = ",
                                       "directory-bind-as = ",
                                       "{dn}",
                                       "{user}",
                                       "directory-search-as = ",
                                       "anonymous",
                                       "negotiate",
                                       "directory-kind = ",
                                       "active-directory",
                                       "openldap",
                                       "directory-offline-days = ",
                                       "directory-answer-seconds = ",
                                       "directory-list-minutes = ",
                                       "directory-allow-unencrypted = ",
                                       "#",
                                       "\r\n",
                                       "2147483648",
                                       "-1",
                                       "refuse-common-passwords = ",
                                       "log-ons-per-password = ",
                                       "(",
                                       ")",
                                       "&",
                                       "|",
                                       "=",
                                       "*",
                                       "\\",
                                       "\xC3\xA4",
                                       "\xEF\xBB\xBF"};
constexpr StringView kNames[] = {u" ", u"anna",         u"ANNA",   u"ä", u"Ä", u"\x202E", u"\x200B",
                                 u"ß", u"\xD83D\xDE00", u"\x00A0", u"σ", u"ς", u"Σ"};

void CheckDelays(const UserRules& rules) {
  std::int64_t before = 0;
  for (std::int32_t in_a_row = 0; in_a_row <= kEndOfGuessing; ++in_a_row) {
    const std::int32_t failures = in_a_row == 0 ? 0 : (in_a_row - 1) % rules.LockOutFailures + 1;
    const std::int64_t delay = DelayAfter(rules, failures, in_a_row);
    Require(delay >= 0);
    if (failures == rules.LockOutFailures) {
      Require(delay > 0 && delay >= before);
      before = delay;
    }
  }
  Require(before == kForever || rules.LockOutFailures > kEndOfGuessing ||
          DelayAfter(rules, 1, kEndOfGuessing) == kForever);
}

void CheckRules(const UserRules& rules) {
  Require(rules.MinimumLength <= rules.MaximumLength);
  Require(rules.HashIterations >= 1000 && rules.HashIterations <= kMostIterations);
  Require(rules.LockOutFailures >= 1 && rules.LockOutMinutes >= 0);
  Require(std::ranges::any_of(
      rules.Classes, [&](const UserClass& one) { return rules.IsAdministratorClass(one.Name); }));
  const String nothing = DescribeChange(rules, rules);
  Require((DescribeChange({}, rules) == nothing) == (rules == UserRules()));
  if (rules.Directory.InUse()) {
    for (const DirectoryServer& server : rules.Directory.Servers) {
      Require(server.Port > 0 && server.Port <= 65535 && !server.Host.empty());
      Require(server.Encrypted || server.IsThisMachine() || rules.Directory.AllowsUnencrypted);
    }
    for (const DirectoryGroup& group : rules.Directory.Groups)
      Require(rules.FindClass(group.ClassName) != nullptr);
  }
  CheckDelays(rules);
}

void CheckNames(const String& left, const String& right) {
  Require(IsValidUserName(left) == ReasonAgainstUserName(left).empty());
  Require(EqualIgnoringCase(left, right) == (FoldedName(left) == FoldedName(right)));
  Require(FoldedName(FoldedName(left)) == FoldedName(left));
  const bool precedes = PrecedesInList(left, right);
  Require(!precedes || !PrecedesInList(right, left));
  Require(EqualIgnoringCase(left, right) == (!precedes && !PrecedesInList(right, left)));
}

}  // namespace
}  // namespace krx::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace krx::fuzz;
  Source source(data, size);
  const bool raw = source.Byte() >= 224;
  const std::string bytes = raw ? source.Raw(size) : source.Bytes(kWords);
  UserRules rules;
  if (Allowed([&] { rules = ParseRules(u"users.conf", bytes); })) CheckRules(rules);
  const krx::String left = source.Text(kNames);
  const krx::String right = source.Text(kNames);
  CheckNames(left, right);
  RefusedPasswords refused;
  if (Allowed([&] { refused = RefusedPasswords(u"refused", bytes); }))
    refused.Contains(krx::Password(left));
  return 0;
}
