#pragma once

#include <filesystem>

#include "runtime/users/system/EventLog.h"

namespace krx::runtime {

// The application log of Windows. Nothing is loaded or opened before the first event.
class Win32EventLog : public EventLog {
 public:
  Win32EventLog() = default;
  ~Win32EventLog() override;
  Win32EventLog(const Win32EventLog&) = delete;
  Win32EventLog& operator=(const Win32EventLog&) = delete;

  void Report(const AuditRecord& record) noexcept override { HandOver(record); }
  // The same; whether the system has taken the event.
  bool HandOver(const AuditRecord& record) noexcept;

 private:
  void* source_ = nullptr;
};

// Makes the source known to the system, with the program that carries the text of its events, and
// takes it away again. Both raise Error when the system refuses, and need an administrator's
// rights.
void AddEventSource(const std::filesystem::path& program);
void RemoveEventSource();

}  // namespace krx::runtime
