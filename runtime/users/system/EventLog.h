#pragma once

namespace krx::runtime {

struct AuditRecord;

// Where the machine collects the events of its programs.
class EventLog {
 public:
  virtual ~EventLog() = default;
  // Hands a stored event over. What the system does not take is lost there, and stays stored here.
  virtual void Report(const AuditRecord& record) noexcept = 0;
};

}  // namespace krx::runtime
