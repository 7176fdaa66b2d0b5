#include "runtime/users/session/SessionWatch.h"

#include <algorithm>
#include <utility>

#include "runtime/users/logon/FullDisk.h"
#include "runtime/users/session/SessionTexts.h"

namespace krx::runtime {
namespace {

// While something is told, so that input is seen to have been noticed.
constexpr std::chrono::milliseconds kCloseLook{200};

}  // namespace

SessionWatch::SessionWatch(UserManagement& management, OperatorInput& input, Notice& notice,
                           Languages& languages, SessionWishes wishes)
    : management_(management),
      input_(input),
      notice_(notice),
      languages_(languages),
      wishes_(std::move(wishes)),
      session_(management.Session.Number()),
      begun_(input.Now()) {}

std::optional<SessionWatch::Time> SessionWatch::Left() const {
  if (wishes_.IdleLimit.count() == 0) return std::nullopt;
  const Time last = std::max(begun_, input_.Last());
  return wishes_.IdleLimit - (input_.Now() - last);
}

std::optional<std::chrono::milliseconds> SessionWatch::Look() {
  const std::optional<LoggedOnUser> user = management_.Session.CurrentIn(session_);
  if (!user) return End();
  const std::optional<Time> left = Left();
  if (left && *left <= Time(0)) {
    LogOff();
    return End();
  }
  if (left && *left <= kWarning) {
    notice_.Show(IdleText(languages_, user->Name, std::chrono::ceil<std::chrono::seconds>(*left)));
    return std::min(*left, kCloseLook);
  }
  const std::optional<Time> greeted = Greet();
  if (!left) return greeted ? greeted : End();
  return std::min(greeted.value_or(Time::max()), *left - kWarning);
}

// How long the greeting is still shown.
std::optional<SessionWatch::Time> SessionWatch::Greet() {
  const Time rest = begun_ + kGreeting - input_.Now();
  if (notice_.IsTouched() || rest <= Time(0)) wishes_.Greeting.clear();
  if (wishes_.Greeting.empty()) {
    notice_.Hide();
    return std::nullopt;
  }
  notice_.Show(wishes_.Greeting);
  return rest;
}

std::optional<SessionWatch::Time> SessionWatch::End() {
  notice_.Hide();
  return std::nullopt;
}

void SessionWatch::LogOff() {
  const std::optional<LoggedOnUser> user = management_.Session.EndIn(session_);
  if (!user) return;
  const String minutes = ToString(static_cast<std::int32_t>(wishes_.IdleLimit.count()));
  RecordOrKeep(management_,
               {user->Name, u"log-off", u"", u"after " + minutes + u" min without input"});
}

}  // namespace krx::runtime
