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
  std::int64_t PasswordProvedOn = 0;   // when he last gave his password, seconds since 1970

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
    ++number_;
  }
  // What is known of the user has become another; his session goes on.
  void Update(LoggedOnUser user) {
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
  // The user has given his password once more; nothing when he is not logged on here.
  void Prove(std::uint32_t id, std::int64_t now) {
    const std::lock_guard lock(guard_);
    if (user_ && !user_->IsOfDirectory() && user_->Id == id) user_->PasswordProvedOn = now;
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

  // Tells the sessions of the process apart.
  std::uint64_t Number() const {
    const std::lock_guard lock(guard_);
    return number_;
  }
  // Who is logged on, as long as it is still in this session.
  std::optional<LoggedOnUser> CurrentIn(std::uint64_t number) const {
    const std::lock_guard lock(guard_);
    return number == number_ ? user_ : std::nullopt;
  }
  // The same, and ends that session.
  std::optional<LoggedOnUser> EndIn(std::uint64_t number) {
    const std::lock_guard lock(guard_);
    return number == number_ ? std::exchange(user_, std::nullopt) : std::nullopt;
  }

 private:
  mutable std::mutex guard_;
  std::optional<LoggedOnUser> user_;
  std::uint64_t number_ = 0;
};

}  // namespace krx::runtime
