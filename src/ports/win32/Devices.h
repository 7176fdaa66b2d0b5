#pragma once

#include <chrono>
#include <map>
#include <memory>

#include "base/String.h"
#include "ports/win32/Background.h"

namespace krx::win32 {

// Drives and servers that keep quiet: one that has not answered within the limit counts as not
// there until the question that it left open has ended, so that questions to it do not pile up. For
// use by one thread.
class Devices {
 public:
  using Clock = std::chrono::steady_clock;
  static constexpr std::chrono::milliseconds kLimit{3000};

  explicit Devices(std::chrono::milliseconds limit = kLimit) : limit_(limit) {}

  // Whether the device of a system path keeps quiet.
  bool Silent(const String& path);
  // Whether a question that was asked at a time has been open for too long.
  bool Overdue(Clock::time_point asked) const { return Clock::now() - asked >= limit_; }
  // Gives up work that asks the device of a system path and has got no answer.
  void GiveUp(const String& path, std::shared_ptr<Background> work);

  // "\\?\c:\Data" and "\\?\C:\" are on one device.
  static String DeviceOf(const String& path);

 private:
  const std::chrono::milliseconds limit_;
  std::map<String, std::shared_ptr<Background>> silent_;  // by device
};

}  // namespace krx::win32
