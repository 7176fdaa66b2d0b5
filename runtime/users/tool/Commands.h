#pragma once

#include "runtime/users/tool/CommandLine.h"

namespace krx::runtime {

inline constexpr int kDone = 0;
inline constexpr int kRefused = 1;
inline constexpr int kWrongUsage = 2;
inline constexpr int kDamaged = 3;

// Carries a command out; returns the exit code. Raises Error for a refusal.
int CarryOut(const Command& command, const Arguments& arguments);

}  // namespace krx::runtime
