#pragma once

#include <windows.h>

#include <algorithm>
#include <array>
#include <chrono>

#include "folders/FileSystem.h"

namespace krx::test {

// More than any folder of the tests takes on the slowest machine.
constexpr std::chrono::milliseconds kLong{300000};

inline folders::FolderPart ReadAll(folders::FileSystem& files, StringView path) {
  return files.ReadFolder(path)->Take(kLong);
}

// How long something took, for tests that nothing waits.
class Stopwatch {
 public:
  std::chrono::milliseconds Passed() const {
    return std::chrono::duration_cast<std::chrono::milliseconds>(Clock::now() - begin_);
  }

 private:
  using Clock = std::chrono::steady_clock;
  const Clock::time_point begin_ = Clock::now();
};

}  // namespace krx::test
