#include "runtime/users/rules/RulesFile.h"

#include <map>
#include <string>

#include "runtime/core/FieldText.h"
#include "runtime/core/KorvelError.h"
#include "runtime/core/LineReader.h"
#include "runtime/users/rules/DirectoryRulesParser.h"
#include "runtime/users/rules/Names.h"

namespace krx::runtime {
namespace {

struct Setting {
  std::string_view Name;
  std::int32_t UserRules::*Value;
  std::int32_t Smallest;
  std::int32_t Largest;
};

constexpr Setting kSettings[] = {
    {"minimum-length", &UserRules::MinimumLength, 1, 1024},
    {"maximum-length", &UserRules::MaximumLength, 1, 1024},
    {"password-history", &UserRules::PasswordHistory, 0, 24},
    {"password-minimum-days", &UserRules::PasswordMinimumDays, 0, 3650},
    {"refuse-common-passwords", &UserRules::RefuseCommonPasswords, 0, 1},
    {"password-expiry-days", &UserRules::PasswordExpiryDays, 0, 3650},
    {"log-ons-per-password", &UserRules::LogOnsPerPassword, 0, 1'000'000},
    {"lock-out-failures", &UserRules::LockOutFailures, 1, 1000},
    {"lock-out-minutes", &UserRules::LockOutMinutes, 0, 525'600},
    {"own-record-minutes", &UserRules::OwnRecordMinutes, 0, 1440},
    {"hash-iterations", &UserRules::HashIterations, 1000, kMostIterations},
    {"audit-records", &UserRules::AuditRecords, 0, 10'000'000},
    {"audit-days", &UserRules::AuditDays, 0, 3650},
    {"log-off-after-idle-minutes", &UserRules::LogOffAfterIdleMinutes, 0, 1440},
    {"administrator-level", &UserRules::AdministratorLevel, INT32_MIN, INT32_MAX},
    {"administration-mode", &UserRules::AdministrationMode, INT32_MIN, INT32_MAX},
};

struct Choice {
  std::string_view Name;
  bool UserRules::*Value;
  std::string_view Yes;
  std::string_view No;
};

constexpr Choice kChoices[] = {
    {"audit-event-log", &UserRules::AuditEventLog, "on", "off"},
    {"keyed-passwords", &UserRules::KeyedPasswords, "on", "off"},
    {"last-log-on-notice", &UserRules::LastLogOnNotice, "on", "off"},
    {"when-disk-full", &UserRules::LogOnWithFullDisk, "log-on", "refuse"},
};

class Parser {
 public:
  Parser(const String& file, std::string_view bytes) : lines_(file, bytes, kMalformedRules) {}

  UserRules Parse() {
    while (lines_.Next()) {
      if (!lines_.Line().empty() && lines_.Line().front() != '#') ParseLine(lines_.Line());
    }
    if (!classes_.empty()) rules_.Classes = std::move(classes_);
    CheckWhole();
    rules_.Directory = directory_.Finish(rules_);
    return std::move(rules_);
  }

 private:
  void ParseLine(std::string_view line) {
    const std::size_t equals = line.find('=');
    if (equals == std::string_view::npos) lines_.Refuse(u"\"=\" is missing");
    const std::string_view name = Trimmed(line.substr(0, equals));
    const std::string_view value = Trimmed(line.substr(equals + 1));
    if (name == "class") return ParseClass(value);
    if (name.starts_with("directory") && directory_.Take(name, value)) return;
    for (const Setting& setting : kSettings) {
      if (name == setting.Name) return ParseSetting(setting, value);
    }
    for (const Choice& choice : kChoices) {
      if (name == choice.Name) return ParseChoice(choice, value);
    }
    lines_.Refuse(u"there is no setting \"" + lines_.Text(name) + u"\"");
  }

  void TakeOnce(std::string_view name) {
    const auto [first, added] = seen_.emplace(name, lines_.Number());
    if (!added) lines_.Refuse(u"the setting stands already in line " + ToString(first->second));
  }

  void ParseChoice(const Choice& choice, std::string_view value) {
    TakeOnce(choice.Name);
    if (value != choice.Yes && value != choice.No)
      lines_.Refuse(lines_.Text(choice.Yes) + u" or " + lines_.Text(choice.No) + u" is expected");
    rules_.*choice.Value = value == choice.Yes;
  }

  void ParseSetting(const Setting& setting, std::string_view value) {
    TakeOnce(setting.Name);
    const std::int32_t number = WholeNumber(value);
    if (number < setting.Smallest || number > setting.Largest) {
      lines_.Refuse(u"the number is not between " + ToString(setting.Smallest) + u" and " +
                    ToString(setting.Largest));
    }
    rules_.*setting.Value = number;
  }

  void ParseClass(std::string_view value) {
    const std::vector<std::string_view> parts = Split(value, '|');
    if (parts.size() != 3) lines_.Refuse(u"a class needs name | level | display text");
    UserClass added{lines_.Text(Trimmed(parts[0])), lines_.Text(Trimmed(parts[2])),
                    WholeNumber(Trimmed(parts[1]))};
    if (!IsValidClassName(added.Name)) lines_.Refuse(u"this is no name of a class");
    if (added.DisplayText.empty()) lines_.Refuse(u"the display text is missing");
    for (const UserClass& other : classes_) {
      if (other.Name == added.Name) lines_.Refuse(u"there is a class of this name already");
    }
    classes_.push_back(std::move(added));
  }

  std::int32_t WholeNumber(std::string_view text) {
    const auto number = runtime::WholeNumber<std::int32_t>(text);
    if (!number) lines_.Refuse(u"a whole number is expected");
    return *number;
  }

  // What only the file as a whole can show; reported at its last line.
  void CheckWhole() {
    if (rules_.MinimumLength > rules_.MaximumLength)
      lines_.Refuse(u"minimum-length is more than maximum-length");
    if (rules_.PasswordExpiryDays > 0 && rules_.PasswordMinimumDays >= rules_.PasswordExpiryDays)
      lines_.Refuse(u"password-minimum-days is not less than password-expiry-days");
    for (const UserClass& one : rules_.Classes) {
      if (one.Level >= rules_.AdministratorLevel) return;
    }
    lines_.Refuse(u"no class reaches the administrator-level");
  }

  LineReader lines_;
  DirectoryRulesParser directory_{lines_};
  std::map<std::string_view, std::int32_t> seen_;
  std::vector<UserClass> classes_;
  UserRules rules_;
};

}  // namespace

UserRules ParseRules(const String& file, std::string_view bytes) {
  return Parser(file, bytes).Parse();
}

String DescribeChange(const UserRules& before, const UserRules& after) {
  String changes;
  const auto add = [&changes](const String& change) {
    changes += (changes.empty() ? u"" : u", ") + change;
  };
  for (const Setting& setting : kSettings) {
    const std::int32_t now = after.*setting.Value;
    const std::int32_t then = before.*setting.Value;
    const String name(setting.Name.begin(), setting.Name.end());
    if (now != then) add(name + u" " + ToString(now) + u" instead of " + ToString(then));
  }
  for (const Choice& choice : kChoices) {
    if (before.*choice.Value == after.*choice.Value) continue;
    const std::string_view now = after.*choice.Value ? choice.Yes : choice.No;
    add(String(choice.Name.begin(), choice.Name.end()) + u" " + String(now.begin(), now.end()));
  }
  if (before.Classes != after.Classes) add(u"other classes");
  if (before.Directory != after.Directory) add(u"another directory service");
  return u"in force: " + (changes.empty() ? u"the same as before" : changes);
}

std::string_view RulesFileTemplate() {
  return R"(# Rules of the user management. Remove the "#" before a setting to change its default.

# Length of passwords in characters (code points); out of range is refused as invalid length.
#minimum-length = 8
#maximum-length = 128

# How many of the last passwords, the current one included, cannot be used again.
#password-history = 4

# Days that a password has to be kept before its user may change it again, so that nobody runs
# through the last passwords to his first one. It does not hold for what has to be renewed.
#password-minimum-days = 0

# 1 refuses some 30,000 passwords that are guessed first, 0 only those of refused-passwords.txt.
#refuse-common-passwords = 1

# Days and log-ons after which a password has to be renewed; 0 is never.
#password-expiry-days = 0
#log-ons-per-password = 0

# Wrong passwords in a row that lock a user out, and for how long at first: each further time
# takes twice as long, up to a day. With 0 minutes only an administrator ends the lock-out; the
# last administrator is never delayed by more than 15 minutes.
#lock-out-failures = 5
#lock-out-minutes = 15

# Minutes after his log-on in which who administers may change his own record, his password included,
# without giving the current one; later he logs on again first. 0 never, which leaves the change of
# password, where the current one is asked for.
#own-record-minutes = 10

# Work to check one password. Users with fewer iterations follow at their next log-on.
#hash-iterations = 600000

# Whether passwords are hashed with a secret key, too, that lies apart from the users (on or off).
# "krxusers key create" makes it, and has to come first; docs/user-management.md tells the rest.
#keyed-passwords = off

# Minutes without any input after which the user is logged off, told half a minute before; 0 is
# never. And whether a log-on shows when the last one was and how many have failed since (on or off).
# Both hold from the next log-on on.
#log-off-after-idle-minutes = 0
#last-log-on-notice = off

# Audit records: as many stay in the database before the oldest go to a file beside it, and for so
# many days (0: all, for ever); whether they go to the event log of Windows, too (on or off); and
# whether people log on while a full disk has no room for records (log-on or refuse).
#audit-records = 100000
#audit-days = 0
#audit-event-log = off
#when-disk-full = log-on

# Who may administer: 0 every user, classes below his own; 1 administrators, all classes;
# 2 administrators, classes up to their own; any other number nobody.
#administration-mode = 1
#administrator-level = 100

# Classes: name | level | display text. The first line of this kind drops the three built-in ones.
#class = Operator | 10 | Operator
#class = Engineer | 50 | Engineer
#class = Administrator | 100 | Administrator

# Users of the plant's directory service, besides those of this machine; docs/user-management.md
# explains every setting. The password of directory-search-as stands in directory-password.txt.
#   directory = ldaps://host1.plant.example ldaps://host2.plant.example
#   directory-base = dc=plant,dc=example
#   directory-class = Operator | cn=operators,ou=groups,dc=plant,dc=example
#   directory-kind = openldap
#   directory-search-as = cn=panels,dc=plant,dc=example
)";
}

}  // namespace krx::runtime
