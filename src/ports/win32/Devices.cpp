#include "ports/win32/Devices.h"

#include "ports/win32/Paths.h"

namespace krx::win32 {

namespace {

// "\\?\c:\Data" and "\\?\C:\" are on one drive.
String DeviceOf(const String& path) {
  return AsciiUpper(RootOf(path));
}

}  // namespace

bool Devices::Ask(const String& path, std::shared_ptr<Background> work) {
  const String device = DeviceOf(path);
  const auto silent = silent_.find(device);
  if (silent != silent_.end()) {
    if (!silent->second->WaitForEnd(std::chrono::milliseconds(0))) return false;
    silent_.erase(silent);
  }
  Background::Start(work);
  if (work->WaitForAnswer(patience_)) return true;
  work->GiveUp();
  silent_.emplace(device, std::move(work));
  return false;
}

}  // namespace krx::win32
