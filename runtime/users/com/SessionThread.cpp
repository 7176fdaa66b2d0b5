#include "runtime/users/com/SessionThread.h"

#include <windows.h>

#include <memory>
#include <mutex>

#include "com/Errors.h"
#include "com/Module.h"
#include "com/Text.h"
#include "runtime/core/KorvelError.h"
#include "runtime/users/com/ProcessUsers.h"
#include "runtime/users/session/LogOnHistory.h"
#include "runtime/users/session/SessionTexts.h"
#include "runtime/users/session/SessionWatch.h"
#include "runtime/users/win32/NoticeWindow.h"
#include "runtime/users/win32/Win32OperatorInput.h"

namespace krx::runtime {
namespace {

// What the thread of a session and who ends it have in common.
struct Company {
  explicit Company(SessionWishes wishes)
      : Wishes(std::move(wishes)), Ended(CreateEventW(nullptr, TRUE, FALSE, nullptr)) {}
  ~Company() {
    if (Ended) CloseHandle(Ended);
  }
  Company(const Company&) = delete;
  Company& operator=(const Company&) = delete;

  const SessionWishes Wishes;
  const HANDLE Ended;
};

using TellLanguages = Languages& (*)();
constinit TellLanguages session_texts = nullptr;

std::mutex guard;
std::shared_ptr<Company> company;  // of the last session

// Day and time as the operator's system writes them, in the runtime's language.
String LocalTime(std::int64_t seconds, const String& language) {
  constexpr std::int64_t kSecondsFrom1601To1970 = 11'644'473'600;
  ULARGE_INTEGER ticks{};
  ticks.QuadPart = static_cast<ULONGLONG>(seconds + kSecondsFrom1601To1970) * 10'000'000;
  const FILETIME stamp{ticks.LowPart, ticks.HighPart};
  SYSTEMTIME universal{};
  SYSTEMTIME local{};
  if (!FileTimeToSystemTime(&stamp, &universal) ||
      !SystemTimeToTzSpecificLocalTime(nullptr, &universal, &local))
    return {};
  const std::wstring name = com::ToWide(language);
  wchar_t day[80] = {};
  wchar_t time[80] = {};
  GetDateFormatEx(name.c_str(), DATE_SHORTDATE, &local, nullptr, day, 80, nullptr);
  GetTimeFormatEx(name.c_str(), TIME_NOSECONDS, &local, nullptr, time, 80);
  return com::FromWide(day) + u" " + com::FromWide(time);
}

// What cannot be read is not told; the session is watched all the same.
String Greeting(const LoggedOnUser& user) try {
  const std::optional<LogOnHistory> history = HistoryOf(ProcessUsers(), user.Name);
  if (!history) return {};
  Languages& languages = session_texts();
  const String last = history->LastAt ? LocalTime(*history->LastAt, languages.Current()) : String();
  return GreetingText(languages, *history, last);
} catch (const Error&) {
  return {};
}

SessionWishes WishesOf(const LoggedOnUser& user) {
  const UserRules rules = ProcessUsers().Rules();
  SessionWishes wishes;
  wishes.IdleLimit = std::chrono::minutes(rules.LogOffAfterIdleMinutes);
  if (rules.LastLogOnNotice) wishes.Greeting = Greeting(user);
  return wishes;
}

void HandleMessages() {
  MSG message;
  while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE))
    DispatchMessageW(&message);
}

void Accompany(const Company& session) {
  Win32OperatorInput input;
  NoticeWindow notice(session_texts());
  SessionWatch watch(ProcessUsers(), input, notice, session_texts(), session.Wishes);
  while (const std::optional<std::chrono::milliseconds> next = watch.Look()) {
    const DWORD woken = MsgWaitForMultipleObjects(1, &session.Ended, FALSE,
                                                  static_cast<DWORD>(next->count()), QS_ALLINPUT);
    if (woken == WAIT_OBJECT_0) return;
    HandleMessages();
  }
  const UsersInUse last;  // what the log-off has opened is closed
  KeepLoadedWhileLoggedOn();
}

DWORD WINAPI SessionThread(void* held) {
  {
    const std::unique_ptr<std::shared_ptr<Company>> owner(
        static_cast<std::shared_ptr<Company>*>(held));
    try {
      Accompany(**owner);
    } catch (const std::exception&) {
      ProcessUsers().RecordFailure({u"", u"accompany session", u"", u"failed"});
    }
  }
  FreeLibraryAndExitThread(com::ModuleHandle(), 0);
}

void Start(const std::shared_ptr<Company>& session) {
  HMODULE module = nullptr;
  auto held = std::make_unique<std::shared_ptr<Company>>(session);
  const bool started =
      session->Ended &&
      GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS,
                         reinterpret_cast<const wchar_t*>(com::ModuleHandle()), &module);
  const HANDLE thread =
      started ? CreateThread(nullptr, 0, &SessionThread, held.get(), 0, nullptr) : nullptr;
  if (!thread) {
    const DWORD reason = GetLastError();
    if (module) FreeLibrary(module);
    throw KorvelError(kFileFailure, com::SystemMessage(HRESULT_FROM_WIN32(reason)));
  }
  static_cast<void>(held.release());  // the thread has it now
  CloseHandle(thread);
}

}  // namespace

void TellSessionsBy(Languages& (*languages)()) noexcept {
  session_texts = languages;
}

void AccompanySession() noexcept {
  SessionHasEnded();  // the one before
  const std::optional<LoggedOnUser> user = ProcessUsers().Session.Current();
  if (!user) return;
  try {
    SessionWishes wishes = WishesOf(*user);
    if (!wishes.HasAny()) return;
    const auto session = std::make_shared<Company>(std::move(wishes));
    Start(session);
    const std::lock_guard lock(guard);
    company = session;
  } catch (const Error& failure) {
    ProcessUsers().RecordFailure(
        {user->Name, u"accompany session", u"", u"failed: " + failure.Description()});
  }
}

void SessionHasEnded() noexcept {
  const std::lock_guard lock(guard);
  if (company) SetEvent(company->Ended);
  company.reset();
}

}  // namespace krx::runtime
