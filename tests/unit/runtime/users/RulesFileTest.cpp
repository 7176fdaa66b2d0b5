#include "runtime/users/rules/RulesFile.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

#include "base/Error.h"
#include "runtime/core/KorvelError.h"

namespace krx::test {
namespace {

using runtime::ParseRules;
using runtime::UserRules;

String RefusalOf(std::string_view bytes) {
  try {
    ParseRules(u"users.conf", bytes);
    return u"accepted";
  } catch (const Error& failure) {
    EXPECT_EQ(failure.Status(), runtime::kMalformedRules);
    return failure.Description();
  }
}

TEST(RulesFileTest, AnEmptyFileLeavesTheDefaults) {
  const UserRules rules = ParseRules(u"", "");
  EXPECT_EQ(rules.MinimumLength, 8);
  EXPECT_EQ(rules.MaximumLength, 128);
  EXPECT_EQ(rules.PasswordHistory, 4);
  EXPECT_EQ(rules.PasswordMinimumDays, 0);
  EXPECT_EQ(rules.RefuseCommonPasswords, 1);
  EXPECT_EQ(rules.PasswordExpiryDays, 0);
  EXPECT_EQ(rules.LogOnsPerPassword, 0);
  EXPECT_EQ(rules.LockOutFailures, 5);
  EXPECT_EQ(rules.LockOutMinutes, 15);
  EXPECT_EQ(rules.HashIterations, 600'000);
  EXPECT_EQ(rules.OwnRecordMinutes, 10);
  EXPECT_FALSE(rules.KeyedPasswords);
  EXPECT_EQ(rules.AdministratorLevel, 100);
  EXPECT_EQ(rules.AdministrationMode, 1);
  EXPECT_EQ(rules.LogOffAfterIdleMinutes, 0);
  EXPECT_FALSE(rules.LastLogOnNotice);
  ASSERT_EQ(rules.Classes.size(), 3u);
  EXPECT_EQ(rules.FindClass(u"Operator")->Level, 10);
  EXPECT_EQ(rules.FindClass(u"Engineer")->Level, 50);
  EXPECT_EQ(rules.FindClass(u"Administrator")->Level, 100);
}

TEST(RulesFileTest, TheTemplateWithoutCommentMarksGivesTheDefaults) {
  std::string settings;
  std::string_view rest = runtime::RulesFileTemplate();
  while (!rest.empty()) {
    const std::size_t end = rest.find('\n');
    std::string_view line = rest.substr(0, end);
    if (line.starts_with("#") && line.find(" = ") != line.npos && line[1] != ' ')
      settings += std::string(line.substr(1)) + "\n";
    rest.remove_prefix(end + 1);
  }
  EXPECT_EQ(std::count(settings.begin(), settings.end(), '\n'), 23);
  const UserRules rules = ParseRules(u"", settings);
  EXPECT_EQ(rules.Classes, UserRules().Classes);
  EXPECT_EQ(rules.MinimumLength, 8);
  EXPECT_EQ(rules.HashIterations, 600'000);
  EXPECT_EQ(ParseRules(u"", runtime::RulesFileTemplate()).Classes, UserRules().Classes);
}

TEST(RulesFileTest, EverySettingIsRead) {
  const UserRules rules = ParseRules(u"",
                                     "\xEF\xBB\xBF# comment\r\n"
                                     "  minimum-length=1\r\n"
                                     "maximum-length = 1024\n"
                                     "password-history = 0\n"
                                     "password-minimum-days = 89\n"
                                     "refuse-common-passwords = 0\n"
                                     "password-expiry-days = 90\n"
                                     "log-ons-per-password = 50\n"
                                     "lock-out-failures = 3\n"
                                     "lock-out-minutes = 0\n"
                                     "hash-iterations = 1000000\n"
                                     "administrator-level = -1\n"
                                     "administration-mode = 7\n"
                                     "audit-records = 0\n"
                                     "audit-days = 365\n"
                                     "audit-event-log = on\n"
                                     "own-record-minutes = 0\n"
                                     "keyed-passwords = on\n"
                                     "when-disk-full = refuse\n"
                                     "log-off-after-idle-minutes = 1440\n"
                                     "last-log-on-notice = on\n"
                                     "class = Boss | -1 | Der Chef");
  EXPECT_EQ(rules.MinimumLength, 1);
  EXPECT_EQ(rules.MaximumLength, 1024);
  EXPECT_EQ(rules.PasswordHistory, 0);
  EXPECT_EQ(rules.PasswordMinimumDays, 89);
  EXPECT_EQ(rules.RefuseCommonPasswords, 0);
  EXPECT_EQ(rules.OwnRecordMinutes, 0);
  EXPECT_TRUE(rules.KeyedPasswords);
  EXPECT_EQ(rules.PasswordExpiryDays, 90);
  EXPECT_EQ(rules.LogOnsPerPassword, 50);
  EXPECT_EQ(rules.LockOutFailures, 3);
  EXPECT_EQ(rules.LockOutMinutes, 0);
  EXPECT_EQ(rules.HashIterations, 1'000'000);
  EXPECT_EQ(rules.AdministratorLevel, -1);
  EXPECT_EQ(rules.AdministrationMode, 7);
  EXPECT_EQ(rules.AuditRecords, 0);
  EXPECT_EQ(rules.AuditDays, 365);
  EXPECT_TRUE(rules.AuditEventLog);
  EXPECT_FALSE(rules.LogOnWithFullDisk);
  EXPECT_EQ(rules.LogOffAfterIdleMinutes, 1440);
  EXPECT_TRUE(rules.LastLogOnNotice);
  EXPECT_TRUE(rules.IsAdministratorClass(u"Boss"));
}

TEST(RulesFileTest, ClassesOfTheFileTakeThePlaceOfTheBuiltInOnes) {
  const UserRules rules = ParseRules(
      u"", "class = Top | 100 | Ganz oben\n\nclass = Low | -2147483648 | \xC3\x84rmster");
  ASSERT_EQ(rules.Classes.size(), 2u);
  EXPECT_EQ(rules.Classes[0], (runtime::UserClass{u"Top", u"Ganz oben", 100}));
  EXPECT_EQ(rules.Classes[1].Level, INT32_MIN);
  EXPECT_EQ(rules.Classes[1].DisplayText, u"\u00C4rmster");
}

TEST(RulesFileTest, RefusalsNameFileLineAndReason) {
  const std::pair<std::string_view, StringView> cases[] = {
      {"password-minimum-days = 30\npassword-expiry-days = 30",
       u"users.conf, line 2: password-minimum-days is not less than password-expiry-days"},
      {"nonsense", u"users.conf, line 1: \"=\" is missing"},
      {"\n# x\nminimum-lenght = 8", u"users.conf, line 3: there is no setting \"minimum-lenght\""},
      {"minimum-length = 8\nminimum-length = 8",
       u"users.conf, line 2: the setting stands already in line 1"},
      {"minimum-length = 0", u"users.conf, line 1: the number is not between 1 and 1024"},
      {"maximum-length = 1025", u"users.conf, line 1: the number is not between 1 and 1024"},
      {"hash-iterations = 999",
       u"users.conf, line 1: the number is not between 1000 and 100000000"},
      {"lock-out-failures = 0", u"users.conf, line 1: the number is not between 1 and 1000"},
      {"lock-out-minutes = -1", u"users.conf, line 1: the number is not between 0 and 525600"},
      {"password-history = four", u"users.conf, line 1: a whole number is expected"},
      {"password-history = 4.5", u"users.conf, line 1: a whole number is expected"},
      {"password-history = ", u"users.conf, line 1: a whole number is expected"},
      {"password-history = 99999999999", u"users.conf, line 1: a whole number is expected"},
      {"class = Operator", u"users.conf, line 1: a class needs name | level | display text"},
      {"class = | 1 | x", u"users.conf, line 1: this is no name of a class"},
      {"audit-event-log = yes", u"users.conf, line 1: on or off is expected"},
      {"when-disk-full = refuse\nwhen-disk-full = refuse",
       u"users.conf, line 2: the setting stands already in line 1"},
      {"audit-days = -1", u"users.conf, line 1: the number is not between 0 and 3650"},
      {"class = A | b | x", u"users.conf, line 1: a whole number is expected"},
      {"class = A | 1 |", u"users.conf, line 1: the display text is missing"},
      {"class = A | 100 | x\nclass = A | 2 | y",
       u"users.conf, line 2: there is a class of this name already"},
      {"class = A | 99 | x\n", u"users.conf, line 1: no class reaches the administrator-level"},
      {"minimum-length = 20\nmaximum-length = 10\n# end",
       u"users.conf, line 3: minimum-length is more than maximum-length"},
      {"class = \xFF | 1 | x", u"users.conf, line 1: the line is not UTF-8"},
      {"class = A | 100 | x\x01y", u"users.conf, line 1: the line contains a control character"},
  };
  for (const auto& [bytes, refusal] : cases)
    EXPECT_EQ(RefusalOf(bytes), refusal) << bytes;
}

TEST(RulesFileTest, RandomBytesAreAcceptedOrRefusedWithAPlace) {
  std::mt19937 random(7);
  const std::string pieces[] = {
      "class", " = ", "=", "|",    "\n", "minimum-length",         "100",
      "-1",    "#",   " ", "Boss", "x",  "hash-iterations = 2000", "\xC3\xA4",
      "\xFF"};
  for (int run = 0; run < 30'000; ++run) {
    std::string bytes;
    for (auto parts = random() % 16; parts > 0; --parts) {
      const auto kind = random() % (std::size(pieces) + 1);
      bytes +=
          kind < std::size(pieces) ? pieces[kind] : std::string(1, static_cast<char>(random()));
    }
    const String refusal = RefusalOf(bytes);
    ASSERT_TRUE(refusal == u"accepted" || refusal.find(u"users.conf, line ") == 0) << bytes;
  }
}

}  // namespace
}  // namespace krx::test
