#pragma once

#include <span>
#include <vector>

#include "base/String.h"

namespace krx::runtime {

inline constexpr int kDone = 0;
inline constexpr int kRefused = 1;
inline constexpr int kWrongUsage = 2;
inline constexpr int kDamaged = 3;

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
  std::size_t Names;                       // how many it needs
  int (*Run)(const Arguments& arguments);  // raises Error for a refusal
};

// All commands, in the order of the help.
std::span<const Command> Commands();

}  // namespace krx::runtime
