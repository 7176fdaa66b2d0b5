// Time from the call of a message box to all of it painted, and to its return, against the
// platform's own message box in the same process and run. Prints medians and ratios.
// usage: bench_msgbox [ROUNDS]

#include <windows.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <vector>

#include "client/Dialogs.h"

namespace {

using Clock = std::chrono::steady_clock;
using Time = Clock::time_point;

constexpr int kWarmUp = 5;
constexpr const wchar_t* kText = L"The recipe has changed. Save it before closing?";
constexpr const wchar_t* kTitle = L"Recipe";
constexpr long kStyle = MB_YESNOCANCEL | MB_ICONQUESTION;

// When one box reached each stage, in the order in which they happen.
struct Run {
  Time Called, Created, Activated, Painted, Returned;
};

Run run;
HWND box = nullptr;
HHOOK hook = nullptr;

bool AnyPaintPending(HWND window) {
  if (GetUpdateRect(window, nullptr, FALSE)) return true;
  for (HWND child = GetWindow(window, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT))
    if (IsWindowVisible(child) && GetUpdateRect(child, nullptr, FALSE)) return true;
  return false;
}

// At once: a pause here would pull both round trips, and so their ratio, together.
void Answer() {
  PostMessageW(box, WM_KEYDOWN, VK_ESCAPE, 0x00010001);
  PostMessageW(box, WM_KEYUP, VK_ESCAPE, static_cast<LPARAM>(0xC0010001));
}

// Every window of the box gets this procedure in front of its own; each paint message that has
// returned may be the last one.
LRESULT CALLBACK WatchPaint(HWND window, UINT message, WPARAM w, LPARAM l) {
  const auto own = reinterpret_cast<WNDPROC>(GetPropW(window, L"BenchOwn"));
  if (message == WM_NCDESTROY) {
    RemovePropW(window, L"BenchOwn");
    SetWindowLongPtrW(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(own));
  }
  const LRESULT result = CallWindowProcW(own, window, message, w, l);
  if (message == WM_PAINT && run.Painted == Time() && !AnyPaintPending(box)) {
    run.Painted = Clock::now();
    Answer();
  }
  return result;
}

BOOL CALLBACK Watch(HWND window, LPARAM) {
  const LONG_PTR own = GetWindowLongPtrW(window, GWLP_WNDPROC);
  SetPropW(window, L"BenchOwn", reinterpret_cast<HANDLE>(own));
  SetWindowLongPtrW(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(WatchPaint));
  return TRUE;
}

LRESULT CALLBACK OnWindowEvent(int code, WPARAM w, LPARAM l) {
  const auto window = reinterpret_cast<HWND>(w);
  const bool top_level = code >= 0 && !(GetWindowLongW(window, GWL_STYLE) & WS_CHILD);
  if (code == HCBT_CREATEWND && top_level && run.Created == Time()) run.Created = Clock::now();
  if (code == HCBT_ACTIVATE && !box) {
    run.Activated = Clock::now();
    box = window;
    Watch(window, 0);
    EnumChildWindows(window, Watch, 0);
  }
  return CallNextHookEx(hook, code, w, l);
}

Run Measure(const std::function<void()>& show) {
  run = {};
  box = nullptr;
  hook = SetWindowsHookExW(WH_CBT, OnWindowEvent, nullptr, GetCurrentThreadId());
  run.Called = Clock::now();
  show();
  run.Returned = Clock::now();
  UnhookWindowsHookEx(hook);
  MSG message;
  while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE))
    DispatchMessageW(&message);
  return run;
}

double Median(const std::vector<Run>& runs, Time Run::*from, Time Run::*to) {
  std::vector<double> times;
  for (const Run& r : runs)
    times.push_back(std::chrono::duration<double, std::milli>(r.*to - r.*from).count());
  std::sort(times.begin(), times.end());
  return times[times.size() / 2];
}

void PrintRow(const char* what, const std::vector<Run>& ours, const std::vector<Run>& theirs,
              Time Run::*from, Time Run::*to) {
  const double own = Median(ours, from, to);
  const double other = Median(theirs, from, to);
  std::printf("%-28s %9.2f %12.2f %8.2f\n", what, own, other, own / other);
}

}  // namespace

int main(int count, char** arguments) {
  const int rounds = count > 1 ? std::atoi(arguments[1]) : 60;
  const krx::client::Automation automation;
  krx::client::Dialogs dialogs;
  if (!dialogs || rounds < 1) return 1;
  std::vector<Run> ours;
  std::vector<Run> theirs;
  for (int i = -kWarmUp; i < rounds; ++i) {
    const Run own = Measure([&] {
      long result = 0;
      dialogs.MsgBox(kText, kStyle, kTitle, result);
    });
    const Run other = Measure([] { MessageBoxW(nullptr, kText, kTitle, kStyle); });
    if (i < 0) continue;
    ours.push_back(own);
    theirs.push_back(other);
  }
  for (const Run& r : ours)
    if (r.Painted == Time()) return std::puts("a box was never seen painted"), 1;
  std::printf("median of %d, in ms           KRMsgBox  MessageBoxW    ratio\n", rounds);
  PrintRow("called to painted", ours, theirs, &Run::Called, &Run::Painted);
  PrintRow("answered to returned", ours, theirs, &Run::Painted, &Run::Returned);
  PrintRow("round trip", ours, theirs, &Run::Called, &Run::Returned);
  PrintRow("  call to first window", ours, theirs, &Run::Called, &Run::Created);
  PrintRow("  windows to activation", ours, theirs, &Run::Created, &Run::Activated);
  PrintRow("  activation to painted", ours, theirs, &Run::Activated, &Run::Painted);
  return 0;
}
