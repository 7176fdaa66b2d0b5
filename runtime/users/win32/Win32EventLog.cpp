#include "runtime/users/win32/Win32EventLog.h"

#include <windows.h>

#include <exception>
#include <string>

#include "com/Errors.h"
#include "com/Text.h"
#include "runtime/core/KorvelError.h"
#include "runtime/users/store/AuditTrail.h"

namespace krx::runtime {
namespace {

constexpr const wchar_t* kEventSource = L"KRXUsers";
constexpr const wchar_t* kEventSources =
    L"SYSTEM\\CurrentControlSet\\Services\\EventLog\\Application\\KRXUsers";
constexpr DWORD kEventOfUsers = 1;  // in the message table of the program

void CheckRegistry(LSTATUS status) {
  if (status == ERROR_SUCCESS) return;
  throw KorvelError(
      kUnableToProvision,
      u"the event source: " + com::SystemMessage(HRESULT_FROM_WIN32(static_cast<DWORD>(status))));
}

void SetEventValue(const wchar_t* name, DWORD type, const void* data, std::size_t size) {
  CheckRegistry(RegSetKeyValueW(HKEY_LOCAL_MACHINE, kEventSources, name, type, data,
                                static_cast<DWORD>(size)));
}

WORD LevelOf(const AuditEntry& entry) {
  const auto begins = [&entry](StringView word) { return entry.Outcome.starts_with(word); };
  if (begins(u"failed")) return EVENTLOG_ERROR_TYPE;
  return begins(u"refused") || begins(u"warning") ? EVENTLOG_WARNING_TYPE
                                                  : EVENTLOG_INFORMATION_TYPE;
}

std::wstring LineOfEvent(const AuditRecord& record) {
  const AuditEntry& entry = record.Entry;
  String line = u"Record " + com::FromWide(std::to_wstring(record.Number).c_str()) + u": ";
  line.append(entry.Action).append(u", ").append(entry.Outcome);
  line.append(u"\r\nUser: ").append(entry.Actor).append(u"\r\nSubject: ").append(entry.Subject);
  line.append(u"\r\nStation: ").append(record.Origin.Station);
  line.append(u"\r\nProcess: ").append(record.Origin.Process);
  line.append(u"\r\nAccount: ").append(record.Origin.Account);
  return com::ToWide(line);
}

}  // namespace

Win32EventLog::~Win32EventLog() {
  if (source_ != nullptr) DeregisterEventSource(source_);
}

bool Win32EventLog::HandOver(const AuditRecord& record) noexcept {
  try {
    if (source_ == nullptr) source_ = RegisterEventSourceW(nullptr, kEventSource);
    if (source_ == nullptr) return false;
    const std::wstring line = LineOfEvent(record);
    const wchar_t* texts[] = {line.c_str()};
    return ReportEventW(source_, LevelOf(record.Entry), 0, kEventOfUsers, nullptr, 1, 0, texts,
                        nullptr) != FALSE;
  } catch (const std::exception&) {
    return false;
  }
}

void AddEventSource(const std::filesystem::path& program) {
  const std::wstring file = program.wstring();
  const DWORD types = EVENTLOG_ERROR_TYPE | EVENTLOG_WARNING_TYPE | EVENTLOG_INFORMATION_TYPE;
  SetEventValue(L"EventMessageFile", REG_EXPAND_SZ, file.c_str(), (file.size() + 1) * 2);
  SetEventValue(L"TypesSupported", REG_DWORD, &types, sizeof types);
}

void RemoveEventSource() {
  const LSTATUS status = RegDeleteKeyW(HKEY_LOCAL_MACHINE, kEventSources);
  if (status != ERROR_FILE_NOT_FOUND) CheckRegistry(status);
}

}  // namespace krx::runtime
