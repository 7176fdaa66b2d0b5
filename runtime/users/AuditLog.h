#pragma once

#include "base/String.h"
#include "runtime/users/system/Clock.h"
#include "runtime/users/system/Files.h"

namespace krx::runtime {

// One event. A password has no place here, and neither has a name that belongs to no user: people
// type their password into the name field.
struct AuditEntry {
  String Actor;  // who did it: the user logged on or logging on, or empty
  String Action;
  String Subject;  // the user it was done to, or empty
  String Outcome;
};

// The file to which every log-on, refusal, log-off and change is added: one line per event, time
// (universal, ISO 8601), actor, action, subject and outcome, separated by tabs. No text in an event
// can end the line or a field. To be used while the store is held, so that lines do not mix.
class AuditLog {
 public:
  AuditLog(Files& files, Clock& clock, const std::filesystem::path& folder);

  // Raises Error when the event cannot be recorded.
  void Add(const AuditEntry& entry);

 private:
  Files& files_;
  Clock& clock_;
  std::filesystem::path file_;
};

}  // namespace krx::runtime
