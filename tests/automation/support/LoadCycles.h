#pragma once

#include <gtest/gtest.h>

#include <functional>

namespace krx::tests {

// How often a component is loaded, used and unloaded: five hundred times, or as often as the
// environment variable KRX_LOAD_CYCLES says.
int LoadCycles();

// Whether the process holds no more after so many cycles than after the first hundred.
testing::AssertionResult LeavesNothing(int cycles, const std::function<void()>& cycle);

}  // namespace krx::tests
