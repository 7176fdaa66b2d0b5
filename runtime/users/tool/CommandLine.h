#pragma once

#include <optional>
#include <span>
#include <vector>

#include "base/String.h"

namespace krx::runtime {

// The command lines of krxusers, without what they do.

// What stands behind a command, options apart.
struct Arguments {
  std::vector<String> Names;
  bool Generates = false;
  String PanelAccount;
  String Format;
};

struct Command {
  StringView Name;
  StringView Usage;  // what follows the name
  StringView Help;
  std::size_t Names;  // how many it needs
};

// All commands, in the order of the help.
std::span<const Command> Commands();

// What a command line asks for: a command to be carried out, with its arguments; help; or nothing
// that there is. Without a command it is about all of them.
struct CommandLine {
  const runtime::Command* Command = nullptr;
  bool Helps = false;
  std::optional<runtime::Arguments> Arguments = std::nullopt;
};

CommandLine ParseCommandLine(std::vector<String> words);

// How the command, or without one krxusers, is to be called.
String UsageOf(const Command* command);

}  // namespace krx::runtime
