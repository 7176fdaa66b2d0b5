#include "runtime/users/win32/Win32OperatorInput.h"

#include <windows.h>

namespace krx::runtime {

std::chrono::milliseconds Win32OperatorInput::Now() {
  return std::chrono::milliseconds(GetTickCount64());
}

std::chrono::milliseconds Win32OperatorInput::Last() {
  LASTINPUTINFO info{};
  info.cbSize = sizeof info;
  if (!GetLastInputInfo(&info)) return std::chrono::milliseconds(0);
  // The system counts input in 32 bits, which begin anew after 49 days.
  const ULONGLONG now = GetTickCount64();
  const auto since = static_cast<std::int32_t>(static_cast<DWORD>(now) - info.dwTime);
  if (since < 0) return std::chrono::milliseconds(now);  // come in between
  return std::chrono::milliseconds(now - static_cast<ULONGLONG>(since));
}

}  // namespace krx::runtime
