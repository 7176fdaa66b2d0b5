// The event log of the machine: what the system takes, gives back and shows.
#include <gtest/gtest.h>
#include <windows.h>

#include <string>
#include <vector>

#include "ModuleCopy.h"
#include "driver/Client.h"
#include "platform/Differences.h"
#include "runtime/users/store/AuditTrail.h"
#include "runtime/users/win32/Win32EventLog.h"

namespace krx::test {
namespace {

constexpr const wchar_t* kSource =
    L"SYSTEM\\CurrentControlSet\\Services\\EventLog\\Application\\KRXUsers";

runtime::AuditRecord EventOf(StringView outcome) {
  runtime::AuditRecord record;
  record.Number = 7;
  record.Entry = {u"anna", u"log-on", u"", String(outcome)};
  record.Origin = {u"panel 1", u"hmi.exe (4)", u"operator"};
  return record;
}

constexpr const wchar_t* kText =
    L"Record 7: log-on, refused: invalid password\r\nUser: anna\r\nSubject: \r\n"
    L"Station: panel 1\r\nProcess: hmi.exe (4)\r\nAccount: operator";

// The newest event of the application log as "source: text"; empty where it keeps none.
std::wstring NewestEvent() {
  const HANDLE log = OpenEventLogW(nullptr, L"Application");
  if (log == nullptr) return L"there is no log";
  std::vector<BYTE> buffer(65536);
  DWORD read = 0;
  DWORD needed = 0;
  const BOOL found =
      ReadEventLogW(log, EVENTLOG_SEQUENTIAL_READ | EVENTLOG_BACKWARDS_READ, 0, buffer.data(),
                    static_cast<DWORD>(buffer.size()), &read, &needed);
  CloseEventLog(log);
  if (!found || read == 0) return {};
  const auto* const event = reinterpret_cast<const EVENTLOGRECORD*>(buffer.data());
  const auto* const source =
      reinterpret_cast<const wchar_t*>(buffer.data() + sizeof(EVENTLOGRECORD));
  const auto* const text = reinterpret_cast<const wchar_t*>(buffer.data() + event->StringOffset);
  return std::wstring(source) + L": " + text;
}

bool HasSource() {
  HKEY key = nullptr;
  if (RegOpenKeyExW(HKEY_LOCAL_MACHINE, kSource, 0, KEY_READ, &key) != ERROR_SUCCESS) return false;
  RegCloseKey(key);
  return true;
}

std::wstring ValueOfSource(const wchar_t* name) {
  wchar_t text[MAX_PATH] = L"";
  DWORD size = sizeof text;
  const LSTATUS status = RegGetValueW(HKEY_LOCAL_MACHINE, kSource, name,
                                      RRF_RT_REG_EXPAND_SZ | RRF_NOEXPAND, nullptr, text, &size);
  return status == ERROR_SUCCESS ? text : L"";
}

TEST(EventLogTest, TheSystemTakesEventsOfEveryLevel) {
  runtime::Win32EventLog log;
  for (const StringView outcome : {u"succeeded", u"refused: invalid password", u"failed: no disk"})
    EXPECT_TRUE(log.HandOver(EventOf(outcome)));
}

TEST(EventLogTest, WhatItHasTakenIsReadBack) {
  runtime::Win32EventLog log;
  ASSERT_TRUE(log.HandOver(EventOf(u"refused: invalid password")));
  EXPECT_EQ(NewestEvent(),
            Expected(kEventsAreNotKept, std::wstring(), std::wstring(L"KRXUsers: ") + kText));
}

TEST(EventLogTest, ComponentAndToolCarryTheTextThatViewersShow) {
  for (const wchar_t* const name : {L"KorvelRuntime.dll", L"krxusers.exe"}) {
    const HMODULE file =
        LoadLibraryExW((drive::ProgramFolder() / name).c_str(), nullptr, LOAD_LIBRARY_AS_DATAFILE);
    ASSERT_NE(file, nullptr) << GetLastError();
    DWORD_PTR texts[] = {reinterpret_cast<DWORD_PTR>(kText)};
    wchar_t shown[1000] = L"";
    FormatMessageW(FORMAT_MESSAGE_FROM_HMODULE | FORMAT_MESSAGE_ARGUMENT_ARRAY, file, 1, 0, shown,
                   1000, reinterpret_cast<va_list*>(texts));
    EXPECT_EQ(std::wstring(shown), std::wstring(kText) + L"\r\n") << name;
    FreeLibrary(file);
  }
}

TEST(EventLogTest, TheSourceIsMadeKnownAndUnknownAgain) {
  runtime::AddEventSource(runtime::ComponentFile());
  EXPECT_EQ(ValueOfSource(L"EventMessageFile"), runtime::ComponentFile().wstring());
  runtime::RemoveEventSource();
  EXPECT_FALSE(HasSource());
  EXPECT_NO_THROW(runtime::RemoveEventSource());
}

}  // namespace
}  // namespace krx::test
