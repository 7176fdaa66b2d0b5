#include <algorithm>

#include "Source.h"
#include "runtime/users/tool/CommandLine.h"

// Command lines of krxusers.

namespace krx::fuzz {
namespace {

using namespace krx::runtime;

constexpr StringView kWords[] = {
    u"provision", u"list",         u"unlock", u"reset",        u"verify",     u"backup",
    u"restore",   u"export-audit", u"key",    u"event-source", u"create",     u"renew",
    u"show",      u"register",     u"remove", u"--help",       u"--generate", u"--panel-account",
    u"--format",  u"csv",          u"json",   u"--",           u"-",          u"anna",
    u"USER"};

std::vector<String> WordsOf(Source& source) {
  std::vector<String> words;
  while (!source.AtEnd() && words.size() < 12) {
    const std::uint8_t byte = source.Byte();
    words.emplace_back(byte < 0xC0 ? String(kWords[byte % std::size(kWords)])
                                   : source.Text(kWords));
  }
  return words;
}

// What was understood, written down again; it has to mean the same.
std::vector<String> WrittenAgain(const CommandLine& line) {
  std::vector<String> words{String(line.Command->Name)};
  words.insert(words.end(), line.Arguments->Names.begin(), line.Arguments->Names.end());
  if (line.Arguments->Generates) words.push_back(u"--generate");
  if (!line.Arguments->PanelAccount.empty())
    words.insert(words.end(), {u"--panel-account", line.Arguments->PanelAccount});
  if (!line.Arguments->Format.empty())
    words.insert(words.end(), {u"--format", line.Arguments->Format});
  return words;
}

void CheckArguments(const CommandLine& line) {
  const Arguments& arguments = *line.Arguments;
  Require(!line.Helps && arguments.Names.size() == line.Command->Names);
  Require(std::ranges::none_of(arguments.Names,
                               [](const String& name) { return name.starts_with(u"--"); }));
  Require(arguments.Format.empty() || line.Command->Name == u"export-audit");
  Require(!arguments.Generates || line.Command->Name == u"provision");
  const CommandLine again = ParseCommandLine(WrittenAgain(line));
  Require(again.Command == line.Command && again.Arguments);
  Require(again.Arguments->Names == arguments.Names &&
          again.Arguments->Generates == arguments.Generates &&
          again.Arguments->PanelAccount == arguments.PanelAccount &&
          again.Arguments->Format == arguments.Format);
}

}  // namespace
}  // namespace krx::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace krx::fuzz;
  Source source(data, size);
  const std::vector<krx::String> words = WordsOf(source);
  const CommandLine line = ParseCommandLine(words);
  Require(line.Helps == (std::ranges::find(words, krx::StringView(u"--help")) != words.end()));
  Require((line.Command != nullptr) ==
          (!words.empty() &&
           std::ranges::find(Commands(), words[0], &Command::Name) != Commands().end()));
  if (line.Arguments) CheckArguments(line);
  Require(UsageOf(line.Command).starts_with(u"usage:"));
  return 0;
}
