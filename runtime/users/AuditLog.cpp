#include "runtime/users/AuditLog.h"

#include <chrono>
#include <cstdio>
#include <string>

#include "runtime/core/FieldText.h"

namespace krx::runtime {
namespace {

std::string TimeStamp(std::int64_t seconds) {
  using namespace std::chrono;
  const sys_seconds time{std::chrono::seconds(seconds)};
  const sys_days day = floor<days>(time);
  const year_month_day date(day);
  const hh_mm_ss clock(time - day);
  char text[64];
  std::snprintf(text, sizeof text, "%04d-%02u-%02uT%02d:%02d:%02dZ", static_cast<int>(date.year()),
                static_cast<unsigned>(date.month()), static_cast<unsigned>(date.day()),
                static_cast<int>(clock.hours().count()), static_cast<int>(clock.minutes().count()),
                static_cast<int>(clock.seconds().count()));
  return text;
}

// An empty field would be hard to see between two tabs.
std::string Field(StringView text) {
  return text.empty() ? "-" : EscapedField(text);
}

}  // namespace

AuditLog::AuditLog(Files& files, Clock& clock, const std::filesystem::path& folder)
    : files_(files), clock_(clock), file_(folder / "audit.log") {}

void AuditLog::Add(const AuditEntry& entry) {
  std::string line = TimeStamp(clock_.Now()) + "\t" + Field(entry.Actor) + "\t" +
                     Field(entry.Action) + "\t" + Field(entry.Subject) + "\t" +
                     Field(entry.Outcome) + "\n";
  // A process that was killed may have left half a line; this event keeps its own.
  if (files_.LastByte(file_).value_or('\n') != '\n') line = '\n' + line;
  files_.Append(file_, line);
}

}  // namespace krx::runtime
