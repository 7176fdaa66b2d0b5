#include "runtime/users/session/LogOnHistory.h"

#include <chrono>

#include "base/Utf8.h"

namespace krx::runtime {
namespace {

constexpr StringView kLate = u"logged on at ";

int NumberAt(StringView text, std::size_t from, std::size_t count) {
  int number = 0;
  for (const char16_t digit : text.substr(from, count))
    number = number * 10 + (digit - u'0');
  return number;
}

// Of what TimeStamp writes: 2026-01-31T23:59:59Z.
std::int64_t SecondsOf(StringView stamp) {
  using namespace std::chrono;
  const sys_days day = year(NumberAt(stamp, 0, 4)) /
                       month(static_cast<unsigned>(NumberAt(stamp, 5, 2))) /
                       std::chrono::day(static_cast<unsigned>(NumberAt(stamp, 8, 2)));
  return sys_seconds(day).time_since_epoch().count() + std::int64_t{NumberAt(stamp, 11, 2)} * 3600 +
         std::int64_t{NumberAt(stamp, 14, 2)} * 60 + NumberAt(stamp, 17, 2);
}

bool WaitsInMemory(LateRecords& late) {
  const std::lock_guard lock(late.Guard);
  return !late.Entries.empty();
}

}  // namespace

std::optional<LogOnHistory> HistoryOf(UserManagement& management, const String& user) {
  if (WaitsInMemory(management.Late)) return std::nullopt;
  UserStore::Reading reading(management.Store);
  if (reading.Data() == nullptr) return std::nullopt;
  Query events(*reading.Data(),
               "SELECT at, action, outcome FROM audit WHERE (actor = ? AND action = 'log-on') OR "
               "(subject = ? AND action = 'create user') ORDER BY number DESC",
               user, user);
  LogOnHistory history;
  bool current_is_behind = false;
  while (events.Next()) {
    const String outcome = events.Text(2);
    if (events.Text(1) != u"log-on") {
      if (outcome.starts_with(u"refused") || outcome.starts_with(u"failed")) continue;
      break;
    }
    if (!outcome.starts_with(u"logged on")) {
      const bool has_password = outcome.find(u"password must be renewed") != String::npos ||
                                outcome.find(u"password has expired") != String::npos;
      if (current_is_behind && outcome.starts_with(u"refused") && !has_password)
        ++history.FailuresSince;
    } else if (current_is_behind) {
      const bool is_late = outcome.starts_with(kLate);
      history.LastAt =
          is_late ? SecondsOf(StringView(outcome).substr(kLate.size())) : events.Number(0);
      break;
    } else {
      current_is_behind = true;
    }
  }
  return history;
}

}  // namespace krx::runtime
