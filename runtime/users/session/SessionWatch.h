#pragma once

#include <chrono>
#include <optional>

#include "runtime/core/Languages.h"
#include "runtime/users/UserManagement.h"
#include "runtime/users/system/Notice.h"
#include "runtime/users/system/OperatorInput.h"

namespace krx::runtime {

// What a session tells its user.
struct SessionWishes {
  std::chrono::minutes IdleLimit{0};  // 0: nobody is logged off
  String Greeting;                    // shown once; empty: none

  bool HasAny() const { return IdleLimit.count() > 0 || !Greeting.empty(); }
};

// Accompanies one session from its beginning: shows its greeting until it is touched, for a minute
// at most, tells half a minute before that nobody seems to be there, and logs the user off.
class SessionWatch {
 public:
  static constexpr std::chrono::seconds kWarning{30};
  static constexpr std::chrono::seconds kGreeting{60};

  // The session is the current one; its beginning counts as input.
  SessionWatch(UserManagement& management, OperatorInput& input, Notice& notice,
               Languages& languages, SessionWishes wishes);

  // Looks what is to be shown or done now; how long until the next look, nothing when there is
  // nothing to look for any more. The notice is hidden then.
  std::optional<std::chrono::milliseconds> Look();

 private:
  using Time = std::chrono::milliseconds;

  // How long before the user is logged off.
  std::optional<Time> Left() const;
  std::optional<Time> Greet();
  std::optional<Time> End();
  void LogOff();

  UserManagement& management_;
  OperatorInput& input_;
  Notice& notice_;
  Languages& languages_;
  SessionWishes wishes_;
  const std::uint64_t session_;
  const Time begun_;
};

}  // namespace krx::runtime
