#include "runtime/users/win32/Win32Errands.h"

#include <windows.h>

#include <memory>
#include <utility>

#include "com/Errors.h"
#include "com/Module.h"
#include "runtime/core/KorvelError.h"

namespace krx::runtime {
namespace {

[[noreturn]] void Fail() {
  throw KorvelError(kDirectoryFailure, com::SystemMessage(HRESULT_FROM_WIN32(GetLastError())));
}

// One errand; belongs to who waits and to the thread that does it.
struct Errand {
  explicit Errand(std::function<void()> work)
      : Work(std::move(work)), Done(CreateEventW(nullptr, TRUE, FALSE, nullptr)) {
    if (!Done) Fail();
  }
  ~Errand() { CloseHandle(Done); }
  Errand(const Errand&) = delete;
  Errand& operator=(const Errand&) = delete;

  std::function<void()> Work;
  HANDLE Done;
};

void CALLBACK Do(PTP_CALLBACK_INSTANCE, void* held) {
  const std::unique_ptr<std::shared_ptr<Errand>> owner(static_cast<std::shared_ptr<Errand>*>(held));
  Errand& errand = **owner;
  errand.Work();
  errand.Work = nullptr;  // what it kept goes before anybody hears of it
  SetEvent(errand.Done);
}

void Start(const std::shared_ptr<Errand>& errand) {
  TP_CALLBACK_ENVIRON environment;
  InitializeThreadpoolEnvironment(&environment);
  SetThreadpoolCallbackLibrary(&environment, com::ModuleHandle());
  SetThreadpoolCallbackRunsLong(&environment);
  auto held = std::make_unique<std::shared_ptr<Errand>>(errand);
  const bool started = TrySubmitThreadpoolCallback(&Do, held.get(), &environment);
  DestroyThreadpoolEnvironment(&environment);
  if (!started) Fail();
  static_cast<void>(held.release());  // the pool has it now
}

// One window: some never say that they have painted.
void PaintOne() {
  MSG message;
  if (PeekMessageW(&message, nullptr, WM_PAINT, WM_PAINT, PM_REMOVE | PM_QS_PAINT))
    DispatchMessageW(&message);
}

}  // namespace

bool Win32Errands::Run(std::function<void()> work, std::chrono::milliseconds patience) {
  const auto errand = std::make_shared<Errand>(std::move(work));
  Start(errand);
  const ULONGLONG end = GetTickCount64() + static_cast<ULONGLONG>(patience.count());
  for (;;) {
    const ULONGLONG now = GetTickCount64();
    const DWORD rest = now < end ? static_cast<DWORD>(end - now) : 0;
    const DWORD woken = MsgWaitForMultipleObjects(1, &errand->Done, FALSE, rest, QS_PAINT);
    if (woken != WAIT_OBJECT_0 + 1) return woken == WAIT_OBJECT_0;
    PaintOne();
  }
}

}  // namespace krx::runtime
