#pragma once

#include <cstdint>
#include <mutex>
#include <optional>
#include <utility>

#include "base/String.h"

namespace krx::runtime {

struct LoggedOnUser {
  std::uint32_t Id = 0;
  String Name;
  String ClassName = {};  // of a user of the directory service, who has no id here; else empty

  bool IsOfDirectory() const { return !ClassName.empty(); }
};

// Who is logged on to this process; all objects of the process share one.
class Session {
 public:
  std::optional<LoggedOnUser> Current() const {
    const std::lock_guard lock(guard_);
    return user_;
  }
  void Begin(LoggedOnUser user) {
    const std::lock_guard lock(guard_);
    user_ = std::move(user);
  }
  // The user who was logged on.
  std::optional<LoggedOnUser> End() {
    const std::lock_guard lock(guard_);
    return std::exchange(user_, std::nullopt);
  }

 private:
  mutable std::mutex guard_;
  std::optional<LoggedOnUser> user_;
};

}  // namespace krx::runtime
