// A client whose dialogs fail: calls one dialog method again and again while one call after the
// other that the component makes into the system fails, and tells what came of it. Arguments: the
// method, a seed, about how many calls are to fail, and the call behind which it goes on. Lines
// that begin with "bad" are findings; "begin" without an end is one, too.

#include <windows.h>

#include <algorithm>
#include <atomic>
#include <cstdlib>
#include <exception>
#include <future>
#include <optional>
#include <random>
#include <stdexcept>
#include <string>
#include <thread>

#include "client/Methods.h"
#include "client/Report.h"
#include "driver/Wait.h"
#include "driver/Window.h"
#include "failures/FailingCalls.h"
#include "failures/Life.h"
#include "platform/Differences.h"
#include "platform/GdiObjects.h"
#include "platform/Wish.h"
#include "soak/Administrator.h"
#include "soak/Counters.h"

namespace {

using krx::client::Hex;
using krx::client::Method;
using krx::client::Methods;
using krx::client::Say;
using krx::failures::FailingCalls;
using krx::failures::Life;
using krx::failures::Outcome;

constexpr int kWarmUp = 8;
constexpr int kRepetitions = 4;
constexpr int kStandstill = 3;  // exit code

// Ends the program where a dialog stays for good, which nobody else could.
class Watch {
 public:
  Watch() : thread_([this](const std::stop_token& stop) { Run(stop); }) {}
  void Begin() { began_ = GetTickCount64(); }
  void End() { began_ = 0; }

 private:
  void Run(const std::stop_token& stop) const {
    constexpr DWORD kLook = 100;  // milliseconds
    while (!stop.stop_requested()) {
      Sleep(kLook);
      const ULONGLONG began = began_;
      if (began == 0 || GetTickCount64() - began < limit_) continue;
      Say("standstill");
      TerminateProcess(GetCurrentProcess(), kStandstill);
    }
  }

  const ULONGLONG limit_ = static_cast<ULONGLONG>(
      krx::test::Wish("KRX_STANDSTILL", static_cast<long>(krx::drive::kPatience.count())));
  std::atomic<ULONGLONG> began_ = 0;
  std::jthread thread_;
};

// Some dialogs open for an administrator only. He has a thread of his own, so that this one leaves
// automation behind every call.
class LoggedOn {
 public:
  LoggedOn() : thread_([this] { Run(); }) { there_.get_future().get(); }
  ~LoggedOn() { over_.set_value(); }
  LoggedOn(const LoggedOn&) = delete;
  LoggedOn& operator=(const LoggedOn&) = delete;

 private:
  void Run() {
    try {
      const krx::soak::Administrator administrator;
      there_.set_value();
      over_.get_future().wait();
    } catch (...) {
      there_.set_exception(std::current_exception());
    }
  }

  std::promise<void> there_;
  std::promise<void> over_;
  std::jthread thread_;
};

// What is counted around every call; atoms, which take time, are counted around many.
struct Held {
  long Windows = 0;
  long Objects = 0;
  long Handles = 0;
  long Blocks = 0;

  static Held Now() {
    return {krx::soak::CountWindows(), krx::test::GdiObjects(), krx::soak::CountKernelHandles(),
            krx::soak::CountHeapBlocks()};
  }
  // In words; empty when there is none.
  std::string Growth() const {
    std::string words;
    const auto add = [&](const char* kind, long count) {
      if (count > 0) words += " leaves " + std::to_string(count) + ' ' + kind;
    };
    add("windows", Windows);
    add("graphics objects", Objects);
    add("handles", Handles);
    // A heap that shows groups of blocks says nothing of single ones.
    add("blocks", krx::test::Expected(krx::test::kHeapsGroupBlocks, 0L, Blocks));
    return words;
  }
};

Held operator-(const Held& a, const Held& b) {
  return {a.Windows - b.Windows, a.Objects - b.Objects, a.Handles - b.Handles, a.Blocks - b.Blocks};
}

// All that is failed in one program.
class Session {
 public:
  explicit Session(const Method& method) : method_(method) {}

  void Run(unsigned seed, long sample, long behind) {
    Pin();
    long calls = 0;
    for (int i = 0; i < kWarmUp; ++i)
      calls = Live(0, false).Calls;
    Say("calls " + std::to_string(calls));
    const long step = std::max(1L, calls / sample);
    std::mt19937 random(seed);
    const long first = 1 + static_cast<long>(random() % static_cast<unsigned long>(step));
    for (long n = first; n <= calls; n += step) {
      if (n <= behind) continue;
      // What the system keeps from the first failures on is there by then.
      if (!halfway_ && n > (behind + calls) / 2) halfway_ = krx::soak::Counters::Now();
      for (const bool for_good : {false, true})
        Try(n, for_good);
    }
    SayLeft();
    Say("done");
  }

 private:
  // The component stays while its imports lead elsewhere.
  static void Pin() {
    const krx::client::Automation automation;
    const krx::client::Dialogs dialogs;
    const HMODULE module = LoadLibraryW(L"KRXDialogs.dll");
    if (!module || !dialogs) throw std::runtime_error("no component");
    FailingCalls::Redirect(module);
  }

  Life Live(long n, bool for_good) {
    watch_.Begin();
    Life life(method_, n, for_good);
    watch_.End();
    return life;
  }

  // Counters grow now and then by what the system keeps; what is left behind every time is ours.
  void Try(long n, bool for_good) {
    const std::string name = std::to_string(n) + (for_good ? " for good" : " once");
    std::string left;
    Say("begin " + name);
    for (int i = 0; i < kRepetitions && (i == 0 || !left.empty()); ++i)
      left = FailOne(name, n, for_good, i == 0);
    if (!left.empty()) Say("bad " + name + " " + FailingCalls::FirstFailed() + left);
  }

  std::string FailOne(const std::string& name, long n, bool for_good, bool judged) {
    const Held before = Held::Now();
    {
      const Life life = Live(n, for_good);
      if (judged) Judge(name, life);
    }
    const Held grown = Held::Now() - before;
    return FailingCalls::FirstFailed().empty() ? "" : grown.Growth();
  }

  void SayLeft() {
    if (!halfway_) return;
    const auto left = krx::soak::Counters::Now() - *halfway_;
    Say("left " + std::to_string(left.Windows) + " " + std::to_string(left.GdiObjects) + " " +
        std::to_string(left.KernelHandles) + " " + std::to_string(left.HeapBlocks) + " " +
        std::to_string(left.Atoms));
  }

  static void Judge(const std::string& name, const Life& life) {
    const std::string what = name + " " + FailingCalls::FirstFailed();
    if (FailingCalls::FirstFailed().empty()) return Say("none " + what);
    JudgeFirst(what, life.First);
    JudgeNext(what, life.Next);
  }
  static void JudgeFirst(const std::string& what, const Outcome& first) {
    if (FAILED(first.Status)) {
      Say((first.Words.empty() ? "bad " : "told ") + what + " " + Hex(first.Status) + " " +
          first.Words);
    } else {
      Say((first.Seen ? "works " : "bad ") + what + (first.Seen ? "" : " shows nothing"));
    }
  }
  static void JudgeNext(const std::string& what, const Outcome& next) {
    if (FAILED(next.Status) || !next.Seen)
      Say("bad " + what + " the next call: " + Hex(next.Status) + " " + next.Words +
          (next.Seen ? "" : " shows nothing"));
  }

  const Method& method_;
  std::optional<krx::soak::Counters> halfway_;
  Watch watch_;
};

}  // namespace

int wmain(int count, wchar_t** arguments) {
  if (count != 5) return 2;
  const std::wstring name = arguments[1];
  const auto method = std::find_if(Methods().begin(), Methods().end(), [&](const Method& m) {
    return std::wstring(m.Name.begin(), m.Name.end()) == name;
  });
  if (method == Methods().end()) return 2;
  const auto number = [&](int at) { return std::wcstol(arguments[at], nullptr, 10); };
  try {
    const LoggedOn administrator;
    Session(*method).Run(static_cast<unsigned>(number(2)), number(3), number(4));
    return 0;
  } catch (const std::exception& error) {
    Say(error.what());
  }
  return 1;
}
