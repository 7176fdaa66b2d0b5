#include "ports/win32/Devices.h"

#include <utility>

#include "ports/win32/Paths.h"

namespace krx::win32 {

String Devices::DeviceOf(const String& path) {
  return AsciiUpper(RootOf(path));
}

bool Devices::Silent(const String& path) {
  const auto silent = silent_.find(DeviceOf(path));
  if (silent == silent_.end()) return false;
  if (!silent->second->WaitForEnd(std::chrono::milliseconds(0))) return true;
  silent_.erase(silent);
  return false;
}

void Devices::GiveUp(const String& path, std::shared_ptr<Background> work) {
  work->GiveUp();
  silent_.insert_or_assign(DeviceOf(path), std::move(work));
}

}  // namespace krx::win32
