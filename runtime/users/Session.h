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
  std::int64_t PasswordChangedOn = 0;  // as it was when he logged on
  bool RenewsHimself = false;          // it was he who asked for a new password

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
  // The user has changed his own password or record; nothing when he is not logged on here.
  void Renew(std::uint32_t id, std::int64_t password_changed_on, bool must_renew) {
    const std::lock_guard lock(guard_);
    if (!user_ || user_->IsOfDirectory() || user_->Id != id) return;
    user_->PasswordChangedOn = password_changed_on;
    user_->RenewsHimself = must_renew;
  }
  // Ends the session of this user alone; false when it is not there.
  bool EndOf(std::uint32_t id) {
    const std::lock_guard lock(guard_);
    if (!user_ || user_->IsOfDirectory() || user_->Id != id) return false;
    user_.reset();
    return true;
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
