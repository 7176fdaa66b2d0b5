#include "failures/FailingCalls.h"

#include <atomic>

#include "platform/Imports.h"

namespace krx::failures {

namespace {

// Work in the background calls the system, too.
std::atomic<bool> counting{false};
std::atomic<bool> lasting{false};
std::atomic<long> made{0};
std::atomic<long> due{0};
std::atomic<const char*> first_failed{nullptr};

}  // namespace

void FailingCalls::Redirect(HMODULE module) {
  for (const Import& import : FailingImports())
    test::RedirectImport(module, import.Name, import.Replacement);
}

void FailingCalls::Fail(long n, bool for_good) {
  counting = false;
  made = 0;
  due = n;
  lasting = for_good;
  first_failed = nullptr;
  counting = true;
}

long FailingCalls::Stop() {
  counting = false;
  return made;
}

std::string FailingCalls::FirstFailed() {
  const char* const name = first_failed;
  return name ? name : "";
}

bool FailingCalls::IsDue(const char* function) {
  if (!counting) return false;
  const long n = ++made;
  const long failing = due;
  if (failing == 0 || n < failing || (n > failing && !lasting)) return false;
  const char* none = nullptr;
  first_failed.compare_exchange_strong(none, function);
  return true;
}

}  // namespace krx::failures
