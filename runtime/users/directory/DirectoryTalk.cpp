#include "runtime/users/directory/DirectoryTalk.h"

#include <algorithm>
#include <map>

#include "base/Utf8.h"
#include "host/UserManager.h"
#include "runtime/core/FieldText.h"
#include "runtime/users/directory/Escaping.h"
#include "runtime/users/directory/PasswordWire.h"
#include "runtime/users/rules/Names.h"

namespace krx::runtime {
namespace {

constexpr const char* kNoAttributes = "1.1";
constexpr const char* kUnicodePassword = "unicodePwd";

std::int32_t ChangeCodeOf(DirectoryVerdict verdict) {
  switch (verdict) {
    case DirectoryVerdict::UnknownUser:
      return host::ChangePasswordUnknownUser;
    case DirectoryVerdict::WrongPassword:
      return host::ChangePasswordInvalidPassword;
    default:
      return host::ChangePasswordNotAccepted;
  }
}

// A library that ends passwords at a zero would take the part before it for the whole.
bool CanBeSent(const Password& password) {
  return !password.Empty() && password.View().find(u'\0') == StringView::npos;
}

String TextOf(const std::string& value) {
  return FromUtf8(value).value_or(String());
}

}  // namespace

void DirectoryTalk::BeSearcher() {
  switch (rules_.SearchAs) {
    case SearchIdentity::Anonymous:
      return;
    case SearchIdentity::Negotiate:
      return RequireSuccess(connection_.BindAsProcess(), u"the log-on of this process");
    case SearchIdentity::Entry:
      if (search_password_ == nullptr || !CanBeSent(*search_password_))
        throw KorvelError(kDirectoryFailure, u"directory-password.txt has no password");
      return RequireSuccess(connection_.Bind(rules_.SearchDn, *search_password_),
                            u"the log-on of directory-search-as");
  }
}

std::optional<DirectoryUser> DirectoryTalk::Entry(const String& name) {
  DirectorySearch search;
  search.Base = rules_.Base;
  search.Filter = FilledFilter(rules_.UserFilter, name, u"");
  search.Attributes = UserAttributes(rules_);
  const DirectoryEntries found = connection_.Search(search);
  RequireSuccess(found, u"the search for a user");
  if (found.Entries.empty()) return std::nullopt;
  if (found.Entries.size() > 1)
    throw KorvelError(kDirectoryFailure, u"several entries fit the name of one user");
  return UserOf(rules_, found.Entries.front());
}

String DirectoryTalk::ClassOf(const DirectoryUser& user) {
  DirectorySearch search;
  search.Base = rules_.Base;
  search.Filter = FilledFilter(rules_.GroupFilter, user.Name, user.Dn);
  search.Attributes = {kNoAttributes};
  search.Paged = true;
  const DirectoryEntries groups = connection_.Search(search);
  RequireSuccess(groups, u"the search for groups");
  for (const DirectoryGroup& mapped : rules_.Groups) {
    const String wanted = ComparableDn(mapped.Dn);
    for (const DirectoryEntry& group : groups.Entries) {
      if (ComparableDn(group.Dn) == wanted) return mapped.ClassName;
    }
  }
  return {};
}

std::optional<DirectoryUser> DirectoryTalk::Find(const String& name) {
  BeSearcher();
  std::optional<DirectoryUser> user = Entry(name);
  if (!user) return std::nullopt;
  user->ClassName = ClassOf(*user);
  if (user->ClassName.empty()) return std::nullopt;
  return user;
}

// The members of a group; a server that gives so many values in parts names the part it gives.
void DirectoryTalk::ReadMembers(std::size_t group, const TakeMember& take) {
  const std::string key = AttributeKey(rules_.MemberAttribute);
  std::string wanted = rules_.MemberAttribute;
  while (!wanted.empty()) {
    DirectorySearch search;
    search.Base = rules_.Groups[group].Dn;
    search.Scope = DirectorySearch::Reach::Entry;
    search.Filter = u"(objectClass=*)";
    search.Attributes = {wanted};
    const DirectoryEntries found = connection_.Search(search);
    RequireSuccess(found, u"the members of " + rules_.Groups[group].Dn);
    wanted.clear();
    if (found.Entries.empty()) return;
    for (const auto& [name, values] : found.Entries.front().Attributes) {
      if (name != key && !name.starts_with(key + ";range=")) continue;
      for (const std::string& value : values)
        take(TextOf(value), group);
      const std::size_t last = name.rfind('-');
      const bool goes_on = name != key && !name.ends_with("-*") && !values.empty();
      const auto end = goes_on ? WholeNumber<std::int32_t>(std::string_view(name).substr(last + 1))
                               : std::nullopt;
      if (end) wanted = rules_.MemberAttribute + ";range=" + std::to_string(*end + 1) + "-*";
    }
  }
}

void DirectoryTalk::ReadMembers(const TakeMember& take) {
  for (std::size_t i = 0; i < rules_.Groups.size(); ++i)
    ReadMembers(i, take);
}

std::optional<std::vector<DirectoryUser>> DirectoryTalk::Names() {
  BeSearcher();
  const bool by_name = AttributeKey(rules_.MemberAttribute) == "memberuid";
  std::vector<DirectoryUser> users;
  bool named = true;
  ReadMembers([&](const String& value, std::size_t group) {
    DirectoryUser user;
    user.Name = by_name ? value : FirstValueOf(value, rules_.NameAttribute);
    user.ClassName = rules_.Groups[group].ClassName;
    named = named && IsValidUserName(user.Name);
    users.push_back(std::move(user));
  });
  return named ? std::optional(std::move(users)) : std::nullopt;
}

std::vector<DirectoryUser> DirectoryTalk::All() {
  BeSearcher();
  std::map<String, std::size_t> members;  // the first class wins: emplace leaves what is there
  ReadMembers([&members](const String& value, std::size_t group) {
    members.emplace(ComparableDn(value), group);
  });
  DirectorySearch search;
  search.Base = rules_.Base;
  search.Filter = ReplaceAll(rules_.UserFilter, u"{user}", u"*");
  search.Attributes = UserAttributes(rules_);
  search.Paged = true;
  const DirectoryEntries found = connection_.Search(search);
  RequireSuccess(found, u"the search for all users");
  const bool by_name = AttributeKey(rules_.MemberAttribute) == "memberuid";
  std::vector<DirectoryUser> users;
  for (const DirectoryEntry& entry : found.Entries) {
    std::optional<DirectoryUser> user = UserOf(rules_, entry);
    if (!user) continue;
    const auto member = members.find(ComparableDn(by_name ? user->Name : user->Dn));
    if (member == members.end()) continue;
    user->ClassName = rules_.Groups[member->second].ClassName;
    users.push_back(std::move(*user));
  }
  return users;
}

DirectoryVerdict DirectoryTalk::BindAs(const String& name, const DirectoryUser& user,
                                       const Password& password) {
  if (!CanBeSent(password)) return DirectoryVerdict::WrongPassword;
  const DirectoryAnswer answer =
      connection_.Bind(FilledBindName(rules_.BindAs, name, user.Dn), password);
  const std::optional<DirectoryVerdict> verdict = JudgeBind(answer);
  if (!verdict) {
    RequireSuccess(answer, u"the log-on of a user");
    throw KorvelError(kDirectoryFailure, u"the log-on of a user: " + Describe(answer));
  }
  const bool must_renew = user.State == host::UserActiveChangePassword;
  return *verdict == DirectoryVerdict::Right && must_renew ? DirectoryVerdict::MustRenew : *verdict;
}

DirectoryLogOn DirectoryTalk::LogOn(const String& name, const Password& password) {
  if (rules_.BindAs.find(u"{dn}") == String::npos) return LogOnByName(name, password);
  BeSearcher();
  std::optional<DirectoryUser> user = Entry(name);
  if (!user) return {DirectoryVerdict::UnknownUser, {}, Describe(DirectoryVerdict::UnknownUser)};
  user->ClassName = ClassOf(*user);
  if (user->ClassName.empty())
    return {DirectoryVerdict::UnknownUser, {}, u"user is in no group that has a class"};
  const DirectoryVerdict verdict = user->State == host::UserDeactivated
                                       ? DirectoryVerdict::Deactivated
                                       : BindAs(user->Name, *user, password);
  return {verdict, std::move(*user), Describe(verdict)};
}

// Who binds by his own name finds his entry himself.
DirectoryLogOn DirectoryTalk::LogOnByName(const String& name, const Password& password) {
  DirectoryUser asked;
  asked.Name = name;
  const DirectoryVerdict verdict = BindAs(name, asked, password);
  if (verdict == DirectoryVerdict::UnknownUser) return {verdict, {}, Describe(verdict)};
  // Where unknown names are no different from wrong passwords, the name may be a password.
  if (rules_.Kind == DirectoryKind::OpenLdap) asked.Name.clear();
  if (verdict != DirectoryVerdict::Right) return {verdict, std::move(asked), Describe(verdict)};
  std::optional<DirectoryUser> user = Entry(name);
  if (user) user->ClassName = ClassOf(*user);
  if (!user || user->ClassName.empty())
    return {DirectoryVerdict::UnknownUser, {}, u"user is in no group that has a class"};
  return {verdict, std::move(*user), Describe(verdict)};
}

// Who has to renew his password at Active Directory is not let in before he has: the one who
// searches sends the change, which the server judges by the current password in it.
std::int32_t DirectoryTalk::SendChange(const DirectoryUser& user, DirectoryVerdict verdict,
                                       const Password& changed, const Password& current,
                                       String& reason) {
  DirectoryAnswer answer;
  if (rules_.Kind == DirectoryKind::ActiveDirectory) {
    if (verdict != DirectoryVerdict::Right) BeSearcher();
    answer = connection_.Exchange(user.Dn, kUnicodePassword, QuotedPassword(current),
                                  QuotedPassword(changed));
  } else {
    answer =
        connection_.Extended(kModifyPassword, ModifyPasswordRequest(user.Dn, current, changed));
  }
  if (IsUnavailable(answer)) RequireSuccess(answer, u"the change of a password");
  const std::int32_t code = JudgeChange(answer);
  reason = code == host::ChangePasswordSucceeded ? u"changed"
                                                 : u"the server refuses: " + Describe(answer);
  return code;
}

DirectoryChange DirectoryTalk::Change(const String& name, const Password& changed,
                                      const Password& current) {
  BeSearcher();
  const std::optional<DirectoryUser> user = Entry(name);
  if (!user) return {host::ChangePasswordUnknownUser, {}, u"unknown user"};
  if (!CanBeSent(changed))
    return {host::ChangePasswordInvalidLength, user->Name, u"length of the new password"};
  const DirectoryVerdict verdict = BindAs(user->Name, *user, current);
  const bool may_change = verdict == DirectoryVerdict::Right ||
                          verdict == DirectoryVerdict::MustRenew ||
                          verdict == DirectoryVerdict::Expired;
  if (!may_change) return {ChangeCodeOf(verdict), user->Name, Describe(verdict)};
  DirectoryChange change{0, user->Name, {}};
  change.Code = SendChange(*user, verdict, changed, current, change.Reason);
  return change;
}

}  // namespace krx::runtime
