// Time from the call of a message box to all of it painted, and to its return, against the
// platform's own message box in the same process and run. Prints medians and ratios, and what long
// messages cost.
// usage: bench_msgbox [ROUNDS]

#include <windows.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "PaintWatch.h"
#include "client/Dialogs.h"

namespace {

using krx::bench::Clock;
using krx::bench::PaintWatch;
using krx::bench::Time;

constexpr int kWarmUp = 5;
constexpr const wchar_t* kText = L"The recipe has changed. Save it before closing?";
constexpr const wchar_t* kTitle = L"Recipe";
constexpr long kStyle = MB_YESNOCANCEL | MB_ICONQUESTION;

// When one box reached each stage, in the order in which they happen.
struct Run {
  Time Called, Created, Activated, Painted, Returned;
};

// At once: a pause here would pull both round trips, and so their ratio, together.
void Answer(HWND box) {
  PostMessageW(box, WM_KEYDOWN, VK_ESCAPE, 0x00010001);
  PostMessageW(box, WM_KEYUP, VK_ESCAPE, static_cast<LPARAM>(0xC0010001));
}

Run Measure(const std::function<void()>& show) {
  Run run;
  // Each paint message that has been handled may be the last one.
  const PaintWatch watch([&](HWND box, HWND, UINT message) {
    if (message != WM_PAINT || run.Painted != Time() || krx::bench::AnyPaintPending()) return;
    run.Painted = Clock::now();
    Answer(box);
  });
  run.Called = Clock::now();
  show();
  run.Returned = Clock::now();
  run.Created = watch.Created;
  run.Activated = watch.Activated;
  return run;
}

double Median(const std::vector<Run>& runs, Time Run::*from, Time Run::*to) {
  std::vector<double> times;
  for (const Run& r : runs)
    times.push_back(krx::bench::MillisecondsBetween(r.*from, r.*to));
  return krx::bench::Median(std::move(times));
}

void PrintRow(const char* what, const std::vector<Run>& ours, const std::vector<Run>& theirs,
              Time Run::*from, Time Run::*to) {
  const double own = Median(ours, from, to);
  const double other = Median(theirs, from, to);
  std::printf("%-28s %9.2f %12.2f %8.2f\n", what, own, other, own / other);
}

// How the cost grows with the message: four times the text should take no more than four times.
void PrintLongTexts(krx::client::Dialogs& dialogs) {
  constexpr int kRounds = 5;
  std::printf("\ncharacters of the message  painted in ms\n");
  for (const int length : {10'000, 40'000, 160'000, 640'000}) {
    std::wstring text;
    while (text.size() < static_cast<std::size_t>(length))
      text += L"A message of some length. ";
    std::vector<Run> runs;
    for (int i = 0; i < kRounds; ++i)
      runs.push_back(Measure([&] {
        long result = 0;
        dialogs.MsgBox(text.c_str(), kStyle, kTitle, result);
      }));
    std::printf("%25d %14.2f\n", length, Median(runs, &Run::Called, &Run::Painted));
  }
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
  for (const auto* runs : {&ours, &theirs})
    for (const Run& r : *runs)
      if (r.Painted == Time()) return std::puts("a box was never seen painted"), 1;
  std::printf("median of %d, in ms           KRMsgBox  MessageBoxW    ratio\n", rounds);
  PrintRow("called to painted", ours, theirs, &Run::Called, &Run::Painted);
  PrintRow("answered to returned", ours, theirs, &Run::Painted, &Run::Returned);
  PrintRow("round trip", ours, theirs, &Run::Called, &Run::Returned);
  PrintRow("  call to first window", ours, theirs, &Run::Called, &Run::Created);
  PrintRow("  windows to activation", ours, theirs, &Run::Created, &Run::Activated);
  PrintRow("  activation to painted", ours, theirs, &Run::Activated, &Run::Painted);
  PrintLongTexts(dialogs);
  return 0;
}
