#include "runtime/users/directory/DirectoryUser.h"

#include <algorithm>
#include <chrono>

#include "base/Utf8.h"
#include "host/UserManager.h"
#include "runtime/core/FieldText.h"
#include "runtime/users/rules/Names.h"

namespace krx::runtime {
namespace {

constexpr std::int32_t kFirstUnixDay = 25'569;
constexpr std::int64_t kDayOf1601 = -109'205;
constexpr std::int64_t kTicksPerDay = 864'000'000'000;  // of 100 nanoseconds
constexpr std::int64_t kAccountDisabled = 2;
constexpr StringView kLockedForGood = u"000001010000Z";

std::int64_t NumberOf(const DirectoryEntry& entry, std::string_view attribute,
                      std::int64_t otherwise) {
  const String text = entry.Text(attribute);
  return WholeNumber<std::int64_t>(ToUtf8(text)).value_or(otherwise);
}

// The day of a time as LDAP writes it, "20261123065617Z"; 0 when it is none.
std::int32_t DayOf(const String& time) {
  using namespace std::chrono;
  const std::string text = ToUtf8(time);
  if (text.size() < 8) return 0;
  const std::string_view digits = text;
  const auto year_number = WholeNumber<int>(digits.substr(0, 4));
  const auto month_number = WholeNumber<unsigned>(digits.substr(4, 2));
  const auto day_number = WholeNumber<unsigned>(digits.substr(6, 2));
  if (!year_number || !month_number || !day_number) return 0;
  const year_month_day date{year(*year_number), month(*month_number), day(*day_number)};
  if (!date.ok()) return 0;
  return static_cast<std::int32_t>(sys_days(date).time_since_epoch().count()) + kFirstUnixDay;
}

void ReadOpenLdap(DirectoryUser& user, const DirectoryEntry& entry) {
  const String locked = entry.Text("pwdaccountlockedtime");
  user.PasswordChangedOn = DayOf(entry.Text("pwdchangedtime"));
  if (locked == kLockedForGood) {
    user.State = host::UserDeactivated;
  } else if (!locked.empty()) {
    user.State = host::UserLocked;
  } else if (entry.Text("pwdreset") == u"TRUE") {
    user.State = host::UserActiveChangePassword;
  }
}

void ReadActiveDirectory(DirectoryUser& user, const DirectoryEntry& entry) {
  const std::int64_t set = NumberOf(entry, "pwdlastset", -1);
  if (set > 0) user.PasswordChangedOn = static_cast<std::int32_t>(set / kTicksPerDay + kDayOf1601);
  if ((NumberOf(entry, "useraccountcontrol", 0) & kAccountDisabled) != 0) {
    user.State = host::UserDeactivated;
  } else if (NumberOf(entry, "lockouttime", 0) != 0) {
    user.State = host::UserLocked;
  } else if (set == 0) {
    user.State = host::UserActiveChangePassword;
  }
}

// As much as the dialogs take.
String Description(const DirectoryEntry& entry, const std::string& attribute) {
  String text = entry.Text(AttributeKey(attribute));
  return IsValidDescription(text) ? text : String();
}

}  // namespace

std::vector<std::string> UserAttributes(const DirectoryRules& rules) {
  std::vector<std::string> attributes = {rules.NameAttribute, rules.FullNameAttribute,
                                         rules.CommentAttribute};
  if (rules.Kind == DirectoryKind::OpenLdap)
    attributes.insert(attributes.end(), {"pwdAccountLockedTime", "pwdReset", "pwdChangedTime"});
  else
    attributes.insert(attributes.end(), {"userAccountControl", "lockoutTime", "pwdLastSet"});
  return attributes;
}

std::optional<DirectoryUser> UserOf(const DirectoryRules& rules, const DirectoryEntry& entry) {
  DirectoryUser user;
  user.Name = entry.Text(AttributeKey(rules.NameAttribute));
  if (!IsValidUserName(user.Name)) return std::nullopt;
  user.FullName = Description(entry, rules.FullNameAttribute);
  user.Comment = Description(entry, rules.CommentAttribute);
  user.Dn = entry.Dn;
  user.State = host::UserActive;
  if (rules.Kind == DirectoryKind::OpenLdap)
    ReadOpenLdap(user, entry);
  else
    ReadActiveDirectory(user, entry);
  return user;
}

std::string AttributeKey(std::string_view name) {
  std::string key(name);
  std::transform(key.begin(), key.end(), key.begin(),
                 [](char c) { return static_cast<char>(AsciiLower(static_cast<char16_t>(c))); });
  return key;
}

}  // namespace krx::runtime
