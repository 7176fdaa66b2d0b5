#include "documents/Examples.h"

#include <algorithm>
#include <regex>
#include <set>
#include <sstream>
#include <utility>

#include "documents/Markdown.h"

namespace krx::tests {

namespace {

const char* const kClass = "CreateObject(\"KRXDialogs.KRXDialog\")";

// Where a text that begins behind a quote ends.
std::size_t EndOfText(const std::string& line, std::size_t at) {
  return std::min(line.find('"', at + 1), line.size());
}

// Lines without comments, those that go on in the next one joined.
std::vector<std::string> Statements(const std::string& script) {
  std::vector<std::string> statements;
  std::istringstream stream(script);
  std::string whole;
  for (std::string line; std::getline(stream, line);) {
    for (std::size_t at = 0; at < line.size(); ++at) {
      if (line[at] == '"') at = EndOfText(line, at);
      if (at < line.size() && line[at] == '\'') line.resize(at);
    }
    line.erase(line.find_last_not_of(" \r") + 1);
    const bool goes_on = line.ends_with(" _");
    whole += goes_on ? line.substr(0, line.size() - 1) : line;
    if (!goes_on) statements.push_back(std::exchange(whole, {}));
  }
  return statements;
}

// Number of the arguments from a place up to the closing bracket or, without one, the line's end.
std::size_t CountArguments(const std::string& line, std::size_t from) {
  std::size_t commas = 0;
  int depth = 0;
  bool any = false;
  for (std::size_t at = from; at < line.size(); ++at) {
    if (line[at] == ')' && --depth < 0) break;
    if (line[at] == '(') ++depth;
    if (line[at] == ',' && depth == 0) ++commas;
    any = any || line[at] != ' ';
    if (line[at] == '"') at = EndOfText(line, at);
  }
  return any ? commas + 1 : 0;
}

Use UseAt(const std::string& line, const std::string& member, std::size_t behind) {
  const std::size_t next = std::min(line.find_first_not_of(' ', behind), line.size());
  if (next < line.size() && line[next] == '=') return {member, true, 0};
  if (behind < line.size() && line[behind] == '(')
    return {member, false, CountArguments(line, behind + 1)};
  // Within an expression a member without brackets has no arguments.
  const bool statement = line.find_first_not_of(' ') == line.rfind(' ', behind - 1) + 1;
  return {member, false, statement ? CountArguments(line, next) : 0};
}

}  // namespace

std::string Example::Whole() const {
  const bool makes = Code.find("Set dialogs = ") != std::string::npos;
  const bool uses = Code.find("dialogs.") != std::string::npos;
  return uses && !makes ? std::string("Set dialogs = ") + kClass + '\n' + Code : Code;
}

std::string Example::Name() const {
  std::string name = Page.substr(0, Page.size() - 3) + "_" + std::to_string(Number);
  std::replace_if(
      name.begin(), name.end(), [](char sign) { return !std::isalnum(sign); }, '_');
  return name;
}

std::vector<Example> Examples(const std::filesystem::path& root) {
  std::vector<Example> examples;
  for (const std::string& page : MarkdownFiles(root)) {
    int number = 0;
    for (const std::string& code : Markdown::Read(root / page).Code("vbscript"))
      examples.push_back({page, ++number, code});
  }
  return examples;
}

std::vector<Use> Uses(const std::string& script) {
  const std::vector<std::string> statements = Statements(script);
  std::set<std::string> objects;
  std::vector<Use> uses;
  const std::regex creation(R"(Set (\w+) = CreateObject\("KRXDialogs\.KRXDialog"\))");
  const std::regex use(R"(\b(\w+)\.(\w+))");
  for (const std::string& line : statements) {
    std::smatch made;
    if (std::regex_search(line, made, creation)) objects.insert(made[1]);
    for (std::sregex_iterator it(line.begin(), line.end(), use), end; it != end; ++it) {
      if (!objects.contains((*it)[1])) continue;
      const auto behind = static_cast<std::size_t>(it->position() + it->length());
      uses.push_back(UseAt(line, (*it)[2], behind));
    }
  }
  return uses;
}

}  // namespace krx::tests
