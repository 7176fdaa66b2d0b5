#include <algorithm>
#include <exception>
#include <optional>
#include <string>
#include <vector>

#include "base/Error.h"
#include "com/Text.h"
#include "runtime/users/tool/Commands.h"
#include "runtime/users/tool/Console.h"

namespace krx::runtime {
namespace {

String UsageOf(const Command& command) {
  String usage = u"krxusers ";
  usage.append(command.Name).append(command.Usage.empty() ? u"" : u" ").append(command.Usage);
  return usage + u"\n";
}

String Usage() {
  String text = u"usage:\n";
  for (const Command& command : Commands())
    text += u"  " + UsageOf(command);
  return text +
         u"krxusers COMMAND --help tells more. The exit code is 0 when it is done, 1 when it was\n"
         u"refused or failed, 2 for a wrong command line and 3 for damage that was found.\n";
}

// Nothing when it is no command line of the command.
std::optional<Arguments> Parsed(const Command& command, std::vector<String> words) {
  Arguments arguments;
  for (auto word = words.begin(); word != words.end(); ++word) {
    const bool has_value = word + 1 != words.end();
    const bool is_known = command.Usage.find(*word) != StringView::npos;
    if (!word->starts_with(u"--")) {
      arguments.Names.push_back(*word);
    } else if (*word == u"--generate" && is_known) {
      arguments.Generates = true;
    } else if (*word == u"--panel-account" && is_known && has_value) {
      arguments.PanelAccount = *++word;
    } else if (*word == u"--format" && is_known && has_value) {
      arguments.Format = *++word;
      if (arguments.Format != u"csv" && arguments.Format != u"json") return std::nullopt;
    } else {
      return std::nullopt;
    }
  }
  if (arguments.Names.size() != command.Names) return std::nullopt;
  return arguments;
}

int Execute(const Command& command, const Arguments& arguments) {
  try {
    return command.Run(arguments);
  } catch (const Error& failure) {
    PrintError(u"Nothing was done: " + failure.Description() + u"\n");
  } catch (const std::exception& failure) {
    const std::string reason = failure.what();
    PrintError(u"Nothing was done: " + String(reason.begin(), reason.end()) + u"\n");
  }
  return kRefused;
}

int Run(std::vector<String> words) {
  const auto asks = [](const String& word) { return word == u"--help"; };
  const auto commands = Commands();
  const auto command = std::find_if(commands.begin(), commands.end(), [&](const Command& one) {
    return !words.empty() && one.Name == words[0];
  });
  const bool helps = std::any_of(words.begin(), words.end(), asks);
  if (command == commands.end()) {
    helps ? Print(Usage()) : PrintError(Usage());
    return helps ? kDone : kWrongUsage;
  }
  words.erase(words.begin());
  if (helps) {
    Print(u"usage: " + UsageOf(*command) + String(command->Help));
    return kDone;
  }
  const std::optional<Arguments> arguments = Parsed(*command, std::move(words));
  if (arguments) return Execute(*command, *arguments);
  PrintError(u"usage: " + UsageOf(*command));
  return kWrongUsage;
}

}  // namespace
}  // namespace krx::runtime

int wmain(int count, wchar_t** arguments) {
  const krx::runtime::Utf8Console console;
  std::vector<krx::String> texts;
  for (int i = 1; i < count; ++i)
    texts.push_back(krx::com::FromWide(arguments[i]));
  return krx::runtime::Run(std::move(texts));
}
