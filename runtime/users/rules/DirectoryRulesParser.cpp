#include "runtime/users/rules/DirectoryRulesParser.h"

#include <algorithm>
#include <utility>

#include "runtime/core/FieldText.h"

namespace krx::runtime {
namespace {

constexpr std::size_t kMostServers = 4;
constexpr StringView kUserPlace = u"{user}";
constexpr StringView kDnPlace = u"{dn}";

bool Holds(StringView text, StringView part) {
  return text.find(part) != text.npos;
}

bool IsAttribute(std::string_view text) {
  return !text.empty() && std::all_of(text.begin(), text.end(), [](char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '-';
  });
}

bool IsHost(std::string_view text) {
  return !text.empty() && std::all_of(text.begin(), text.end(), [](char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '-' ||
           c == '.' || c == ':';
  });
}

// Whether the parentheses enclose the whole and are in pairs; what is in them, the server judges.
bool IsEnclosed(StringView filter) {
  if (!filter.starts_with(u'(')) return false;
  int depth = 0;
  for (std::size_t i = 0; i < filter.size(); ++i) {
    if (filter[i] == u'(') ++depth;
    if (filter[i] == u')') --depth;
    if (depth == 0) return i + 1 == filter.size();
  }
  return false;
}

}  // namespace

struct DirectoryRulesParser::TextSetting {
  std::string_view Name;
  std::string DirectoryRules::*Attribute;
  String DirectoryRules::*Filter;
};

struct DirectoryRulesParser::NumberSetting {
  std::string_view Name;
  std::int32_t DirectoryRules::*Value;
  std::int32_t Smallest;
  std::int32_t Largest;
};

struct DirectoryRulesParser::ChoiceSetting {
  std::string_view Name;
  std::string_view Value;
  void (*Choose)(DirectoryRules& rules);
};

bool DirectoryRulesParser::Take(std::string_view name, std::string_view value) {
  const bool repeats = name == "directory-class";
  const auto [first, added] = seen_.emplace(name, lines_.Number());
  if (!added && !repeats)
    lines_.Refuse(u"the setting stands already in line " + ToString(first->second));
  if (value.empty()) lines_.Refuse(u"the value is missing");
  if (name == "directory") {
    TakeServers(value);
  } else if (repeats) {
    TakeGroup(value);
  } else if (name == "directory-base") {
    rules_.Base = lines_.Text(value);
  } else if (name == "directory-search-as") {
    TakeSearchIdentity(value);
  } else if (name == "directory-bind-as") {
    rules_.BindAs = lines_.Text(value);
    if (!Holds(rules_.BindAs, kDnPlace) && !Holds(rules_.BindAs, kUserPlace))
      lines_.Refuse(u"neither {dn} nor {user} is in it");
  } else {
    return TakeText(name, value) || TakeNumber(name, value) || TakeChoice(name, value);
  }
  return true;
}

void DirectoryRulesParser::TakeServers(std::string_view value) {
  for (const std::string_view text : Split(value, ' ')) {
    if (!Trimmed(text).empty()) rules_.Servers.push_back(Server(Trimmed(text)));
  }
  if (rules_.Servers.size() > kMostServers) lines_.Refuse(u"these are more than four servers");
}

DirectoryServer DirectoryRulesParser::Server(std::string_view text) const {
  DirectoryServer server;
  std::string_view rest = text;
  if (rest.starts_with("ldaps://")) {
    rest.remove_prefix(8);
  } else if (rest.starts_with("ldap://")) {
    rest.remove_prefix(7);
    server.Encrypted = false;
    server.Port = 389;
  } else {
    lines_.Refuse(u"a server begins with ldaps:// or ldap://");
  }
  const bool bracketed = rest.starts_with('[');
  const std::size_t end = bracketed ? rest.find(']') : std::min(rest.find(':'), rest.size());
  if (end == rest.npos) lines_.Refuse(u"\"]\" is missing");
  const std::string_view host = bracketed ? rest.substr(1, end - 1) : rest.substr(0, end);
  if (!IsHost(host)) lines_.Refuse(u"this is no name of a server");
  server.Host = lines_.Text(host);
  rest.remove_prefix(bracketed ? end + 1 : end);
  if (rest.empty()) return server;
  const auto port = WholeNumber<std::int32_t>(rest.substr(1));
  if (rest.front() != ':' || !port || *port < 1 || *port > 65535)
    lines_.Refuse(u"a server ends with its name or with a port between 1 and 65535");
  server.Port = *port;
  return server;
}

void DirectoryRulesParser::TakeGroup(std::string_view value) {
  const std::size_t bar = value.find('|');
  if (bar == value.npos) lines_.Refuse(u"a group needs class | distinguished name");
  DirectoryGroup group{lines_.Text(Trimmed(value.substr(0, bar))),
                       lines_.Text(Trimmed(value.substr(bar + 1)))};
  if (group.Dn.find(u'=') == group.Dn.npos) lines_.Refuse(u"this is no distinguished name");
  rules_.Groups.push_back(std::move(group));
}

void DirectoryRulesParser::TakeSearchIdentity(std::string_view value) {
  if (value == "anonymous") return;
  rules_.SearchAs = value == "negotiate" ? SearchIdentity::Negotiate : SearchIdentity::Entry;
  if (rules_.SearchAs == SearchIdentity::Entry) rules_.SearchDn = lines_.Text(value);
}

bool DirectoryRulesParser::TakeText(std::string_view name, std::string_view value) {
  static constexpr TextSetting kTexts[] = {
      {"directory-user-filter", nullptr, &DirectoryRules::UserFilter},
      {"directory-group-filter", nullptr, &DirectoryRules::GroupFilter},
      {"directory-name", &DirectoryRules::NameAttribute, nullptr},
      {"directory-full-name", &DirectoryRules::FullNameAttribute, nullptr},
      {"directory-comment", &DirectoryRules::CommentAttribute, nullptr},
      {"directory-member", &DirectoryRules::MemberAttribute, nullptr},
  };
  for (const TextSetting& setting : kTexts) {
    if (setting.Name != name) continue;
    if (setting.Attribute) rules_.*setting.Attribute = Attribute(value);
    if (setting.Filter) rules_.*setting.Filter = Filter(value);
    return true;
  }
  return false;
}

bool DirectoryRulesParser::TakeNumber(std::string_view name, std::string_view value) {
  static constexpr NumberSetting kNumbers[] = {
      {"directory-answer-seconds", &DirectoryRules::AnswerSeconds, 1, 60},
      {"directory-list-minutes", &DirectoryRules::ListMinutes, 1, 1440},
      {"directory-offline-days", &DirectoryRules::OfflineDays, 0, 90},
  };
  for (const NumberSetting& setting : kNumbers) {
    if (setting.Name != name) continue;
    const auto number = WholeNumber<std::int32_t>(value);
    if (!number) lines_.Refuse(u"a whole number is expected");
    if (*number < setting.Smallest || *number > setting.Largest) {
      lines_.Refuse(u"the number is not between " + ToString(setting.Smallest) + u" and " +
                    ToString(setting.Largest));
    }
    rules_.*setting.Value = *number;
    return true;
  }
  return false;
}

bool DirectoryRulesParser::TakeChoice(std::string_view name, std::string_view value) {
  static constexpr ChoiceSetting kChoices[] = {
      {"directory-kind", "openldap", [](DirectoryRules& r) { r.Kind = DirectoryKind::OpenLdap; }},
      {"directory-kind", "active-directory",
       [](DirectoryRules& r) { r.Kind = DirectoryKind::ActiveDirectory; }},
      {"directory-unencrypted", "refused", [](DirectoryRules& r) { r.AllowsUnencrypted = false; }},
      {"directory-unencrypted", "allowed", [](DirectoryRules& r) { r.AllowsUnencrypted = true; }},
  };
  String choices;
  for (const ChoiceSetting& one : kChoices) {
    if (one.Name != name) continue;
    if (one.Value == value) {
      one.Choose(rules_);
      return true;
    }
    choices += (choices.empty() ? u"" : u" or ") + lines_.Text(one.Value);
  }
  if (choices.empty()) return false;
  lines_.Refuse(choices + u" is expected");
}

String DirectoryRulesParser::Filter(std::string_view value) const {
  String filter = lines_.Text(value);
  if (!IsEnclosed(filter)) lines_.Refuse(u"a filter stands in parentheses that are in pairs");
  if (!Holds(filter, kUserPlace) && !Holds(filter, kDnPlace))
    lines_.Refuse(u"neither {dn} nor {user} is in it");
  return filter;
}

std::string DirectoryRulesParser::Attribute(std::string_view value) const {
  if (!IsAttribute(value)) lines_.Refuse(u"this is no name of an attribute");
  return std::string(value);
}

DirectoryRules DirectoryRulesParser::Finish(const UserRules& rules) {
  if (seen_.empty()) return {};
  if (!rules_.InUse()) lines_.Refuse(u"the setting directory is missing");
  if (rules_.Base.empty()) lines_.Refuse(u"the setting directory-base is missing");
  if (rules_.Groups.empty()) lines_.Refuse(u"no directory-class maps a group");
  if (!Holds(rules_.UserFilter, kUserPlace))
    lines_.Refuse(u"{user} is missing in directory-user-filter");
  for (const DirectoryGroup& group : rules_.Groups) {
    if (rules.FindClass(group.ClassName) == nullptr)
      lines_.Refuse(u"directory-class names the class \"" + group.ClassName +
                    u"\", which there is not");
  }
  for (const DirectoryServer& server : rules_.Servers) {
    if (!server.Encrypted && !server.IsThisMachine() && !rules_.AllowsUnencrypted)
      lines_.Refuse(server.Address() +
                    u" would show passwords on the network; ldaps:// is expected");
  }
  return std::move(rules_);
}

}  // namespace krx::runtime
