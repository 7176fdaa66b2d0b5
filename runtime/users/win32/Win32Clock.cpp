#include "runtime/users/win32/Win32Clock.h"

#include <windows.h>

namespace krx::runtime {

std::int64_t Win32Clock::Now() {
  constexpr std::int64_t kTicksPerSecond = 10'000'000;
  constexpr std::int64_t kSecondsFrom1601To1970 = 11'644'473'600;
  FILETIME time{};
  GetSystemTimeAsFileTime(&time);
  const std::int64_t ticks =
      (static_cast<std::int64_t>(time.dwHighDateTime) << 32) | time.dwLowDateTime;
  return ticks / kTicksPerSecond - kSecondsFrom1601To1970;
}

}  // namespace krx::runtime
