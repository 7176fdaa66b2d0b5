#include "documents/Interface.h"

#include <algorithm>
#include <map>
#include <regex>
#include <stdexcept>

namespace krx::tests {

namespace {

std::string First(const std::string& text, const std::string& pattern) {
  std::smatch match;
  return std::regex_search(text, match, std::regex(pattern)) ? match[1].str() : std::string();
}

int NumberOf(const std::string& attributes, const std::string& name) {
  const std::string number = First(attributes, "\\b" + name + R"(\((\d+)\))");
  if (number.empty()) throw std::runtime_error("no " + name + " in: " + attributes);
  return std::stoi(number);
}

std::string Documented(const std::string& type) {
  static const std::map<std::string, std::string> kTypes{
      {"BSTR", "String"},          {"long", "Long"},        {"float", "Single"},
      {"VARIANT_BOOL", "Boolean"}, {"IDispatch", "Object"}, {"KRMsgBoxResult", "KRMsgBoxResult"}};
  return kTypes.at(type);
}

// What a parameter is when it is left out.
std::string DefaultOf(const std::string& attributes, const std::string& type) {
  std::string value = First(attributes, R"(defaultvalue\(([^)]*)\))");
  if (type == "VARIANT_BOOL" && !value.empty()) return value == "0" ? "False" : "True";
  if (!value.empty()) return value;
  if (attributes.find("optional") == std::string::npos) return {};
  return type == "BSTR" ? "\"\"" : "0";
}

void AddParameters(const std::string& list, Member& member) {
  const std::regex parameter(R"(\[([^\]]*)\]\s*(\w+)\s*\**\s*(\w+))");
  for (std::sregex_iterator it(list.begin(), list.end(), parameter), end; it != end; ++it) {
    const std::string attributes = (*it)[1];
    const std::string type = (*it)[2];
    if (attributes.find("retval") != std::string::npos)
      member.Result = Documented(type);
    else
      member.Parameters.push_back({(*it)[3], Documented(type), DefaultOf(attributes, type)});
  }
}

}  // namespace

void PrintTo(const Parameter& parameter, std::ostream* out) {
  *out << parameter.Name << ' ' << parameter.Type << " = " << parameter.Default;
}

std::size_t Member::Required() const {
  return static_cast<std::size_t>(
      std::count_if(Parameters.begin(), Parameters.end(),
                    [](const Parameter& parameter) { return parameter.Default.empty(); }));
}

std::vector<Member> Members(const std::string& description) {
  const std::regex function(
      R"re(\[((?:propget|propput|id)\b(?:[^\]"]|"[^"]*")*)\]\s*HRESULT\s+(\w+)\(([^;]*)\);)re");
  std::vector<Member> members;
  for (std::sregex_iterator it(description.begin(), description.end(), function), end; it != end;
       ++it) {
    const std::string attributes = (*it)[1];
    Member member;
    member.Name = (*it)[2];
    member.Id = NumberOf(attributes, "id");
    member.HelpContext = NumberOf(attributes, "helpcontext");
    member.IsProperty = attributes.starts_with("prop");
    if (!attributes.starts_with("propput")) {
      AddParameters((*it)[3], member);
      members.push_back(member);
    } else if (members.empty() || members.back().Id != member.Id ||
               members.back().HelpContext != member.HelpContext) {
      throw std::runtime_error(member.Name + " is not written as it is read");
    }
  }
  return members;
}

Enumeration ReadEnumeration(const std::string& description) {
  std::smatch match;
  const std::regex whole(R"(typedef \[([^\]]*)\] enum (\w+)\s*\{([^}]*)\})");
  if (!std::regex_search(description, match, whole)) throw std::runtime_error("no enumeration");
  Enumeration result{match[2], NumberOf(match[1], "helpcontext"), {}};
  const std::string body = match[3];
  const std::regex value(R"((\w+) = (\d+))");
  for (std::sregex_iterator it(body.begin(), body.end(), value), end; it != end; ++it)
    result.Values.emplace_back((*it)[1], (*it)[2]);
  return result;
}

}  // namespace krx::tests
