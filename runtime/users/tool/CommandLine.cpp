#include "runtime/users/tool/CommandLine.h"

#include <algorithm>
#include <utility>

namespace krx::runtime {
namespace {

constexpr Command kCommands[] = {
    {u"provision", u"USER [--generate] [--panel-account ACCOUNT]",
     u"Creates the users of this machine with their first administrator, who has to renew his\n"
     u"password at the first log-on. The password is typed, or generated and printed once. The\n"
     u"folder gets explicit rights: administrators everything, the account that the panel runs\n"
     u"under (this one unless it is named) what it needs.\n",
     1},
    {u"list", u"", u"Lists the users: name, class, state and full name between tabs.\n", 0},
    {u"unlock", u"USER", u"Ends a lock-out and activates a user who is deactivated.\n", 1},
    {u"reset", u"USER",
     u"Gives a user a new password, printed once, which he has to renew at the next log-on, and\n"
     u"unlocks him.\n",
     1},
    {u"verify", u"",
     u"Looks through the database and the chain of audit records and names the first record that\n"
     u"does not hold, keys of passwords that are not there, and the line of users.conf that is\n"
     u"malformed. The exit code is 3 when something is wrong.\n",
     0},
    {u"backup", u"FILE",
     u"Copies users and audit records into a new file; panels go on meanwhile.\n", 1},
    {u"restore", u"FILE",
     u"Puts a backup that is whole in the place of the users. What was there is kept beside it.\n",
     1},
    {u"export-audit", u"FILE [--format csv|json]",
     u"Writes all audit records, the oldest first, as comma-separated values or JSON lines; the\n"
     u"file - is the standard output.\n",
     1},
    {u"key", u"create|renew|show [--panel-account ACCOUNT]",
     u"Makes the secret key that passwords are hashed with under the rule keyed-passwords, or a\n"
     u"new one, and shows where it lies and how many passwords need it. The file can be opened on\n"
     u"this machine alone.\n",
     1},
    {u"event-source", u"register|remove",
     u"Makes the source of the users' events known to the event log of Windows, or unknown again;\n"
     u"the rule audit-event-log sends them there.\n",
     1},
};

String LineOf(const Command& command) {
  String usage = u"krxusers ";
  usage.append(command.Name).append(command.Usage.empty() ? u"" : u" ").append(command.Usage);
  return usage + u"\n";
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

}  // namespace

std::span<const Command> Commands() {
  return kCommands;
}

CommandLine ParseCommandLine(std::vector<String> words) {
  CommandLine line;
  line.Helps = std::ranges::find(words, StringView(u"--help")) != words.end();
  const auto command =
      words.empty() ? std::end(kCommands) : std::ranges::find(kCommands, words[0], &Command::Name);
  if (command == std::end(kCommands)) return line;
  line.Command = command;
  words.erase(words.begin());
  if (!line.Helps) line.Arguments = Parsed(*command, std::move(words));
  return line;
}

String UsageOf(const Command* command) {
  if (command != nullptr) return u"usage: " + LineOf(*command);
  String text = u"usage:\n";
  for (const Command& one : kCommands)
    text += u"  " + LineOf(one);
  return text +
         u"krxusers COMMAND --help tells more. The exit code is 0 when it is done, 1 when it was\n"
         u"refused or failed, 2 for a wrong command line and 3 for damage that was found.\n";
}

}  // namespace krx::runtime
