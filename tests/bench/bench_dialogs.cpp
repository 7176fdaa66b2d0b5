// Time from the call of each dialog to all of it painted, and to its return when it is closed as
// soon as it is painted: in turns with the platform's own boxes, with the bare windows that each
// dialog is made of, and with what the user management takes in it. Prints medians and ratios.
// usage: bench_dialogs [ROUNDS]; with --turns it measures each dialog once for each line that it
// reads, to be compared with another build in another process.

#include <windows.h>

#include <algorithm>
#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <exception>
#include <functional>
#include <iostream>
#include <memory>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "Calls.h"
#include "Subject.h"
#include "Surroundings.h"
#include "Table.h"

namespace {

using krx::bench::Decimal;
using krx::bench::Dialog;
using krx::bench::Subject;
using krx::bench::Table;

constexpr int kWarmUp = 5;

using Dialogs = std::vector<std::unique_ptr<Dialog>>;

// Everything that is measured, each as often as the others and in another order each round.
class Rounds {
 public:
  void Add(std::function<void()> run) { runs_.push_back(std::move(run)); }

  void Run(int count) const {
    for (std::size_t round = 0; round < static_cast<std::size_t>(count); ++round)
      for (std::size_t i = 0; i < runs_.size(); ++i)
        runs_[(round + i) % runs_.size()]();
  }

 private:
  std::vector<std::function<void()>> runs_;
};

void PrintBoxes(const Subject& ours, const Subject& box, const Subject& task) {
  Table table({"ms", "KRMsgBox", "MessageBoxW", "TaskDialogIndirect", "to MessageBoxW",
               "to TaskDialogIndirect"});
  const auto add = [&](const char* what, double own, double first, double second) {
    table.Add({what, Decimal(own), Decimal(first), Decimal(second), Decimal(own / first),
               Decimal(own / second)});
  };
  add("painted", ours.Painted(), box.Painted(), task.Painted());
  add("round trip", ours.RoundTrip(), box.RoundTrip(), task.RoundTrip());
  table.Print();
}

void PrintDialogs(const Dialogs& dialogs) {
  const Subject& box = dialogs.front()->Own;
  Table table({"dialog", "painted", "round trip", "painted, to KRMsgBox", "round trip, to it",
               "user management", "painted without it, to KRMsgBox"});
  for (const auto& dialog : dialogs) {
    const Subject& own = dialog->Own;
    const double users = dialog->Users();
    table.Add({own.Name(), Decimal(own.Painted()), Decimal(own.RoundTrip()),
               Decimal(own.Painted() / box.Painted()), Decimal(own.RoundTrip() / box.RoundTrip()),
               Decimal(users), Decimal((own.Painted() - users) / box.Painted())});
  }
  table.Print();
}

void PrintTwins(const Dialogs& dialogs) {
  Table table({"dialog and its bare twin", "windows", "painted", "twin painted", "ratio",
               "without user management", "round trip", "twin's round trip", "ratio"});
  for (const auto& dialog : dialogs) {
    const Subject& own = dialog->Own;
    const Subject& twin = dialog->Bare;
    table.Add({own.Name(), std::to_string(dialog->Likeness->Windows()), Decimal(own.Painted()),
               Decimal(twin.Painted()), Decimal(own.Painted() / twin.Painted()),
               Decimal((own.Painted() - dialog->Users()) / twin.Painted()),
               Decimal(own.RoundTrip()), Decimal(twin.RoundTrip()),
               Decimal(own.RoundTrip() / twin.RoundTrip())});
  }
  table.Print();
}

void Compare(Dialogs& dialogs, int rounds) {
  Subject box("MessageBoxW", krx::bench::ShowMessageBox);
  Subject task("TaskDialogIndirect", krx::bench::ShowTaskDialog);
  Rounds all;
  all.Add([&] { box.Run(); });
  all.Add([&] { task.Run(); });
  for (const auto& dialog : dialogs) {
    all.Add([&] { dialog->Own.Run(); });
    all.Add([&] { dialog->Bare.Run(); });
    all.Add([&] { dialog->RunTimed(); });
  }
  all.Run(kWarmUp);
  box.Forget();
  task.Forget();
  for (const auto& dialog : dialogs)
    dialog->Forget();
  all.Run(rounds);
  if (std::none_of(dialogs.begin(), dialogs.end(), [](const auto& d) { return d->Users() > 0; }))
    throw std::runtime_error("no call of the user management was timed");
  std::printf("Medians of %d rounds, in ms.\n", rounds);
  PrintBoxes(dialogs.front()->Own, box, task);
  PrintDialogs(dialogs);
  PrintTwins(dialogs);
}

// One line for each dialog, then an empty one.
void TakeTurns(const Dialogs& dialogs) {
  std::string line;
  std::puts("ready");
  std::fflush(stdout);
  while (std::getline(std::cin, line)) {
    for (const auto& dialog : dialogs) {
      const krx::bench::Showing showing = dialog->Own.Once();
      std::printf("%s %.4f %.4f\n", dialog->Own.Name().c_str(), showing.Painted, showing.Returned);
    }
    std::puts("done");
    std::fflush(stdout);
  }
}

int Run(int rounds, bool turns) {
  using namespace krx;
  const bench::Surroundings surroundings(bench::kUsers, bench::kFiles, bench::kFolders);
  client::Dialogs component;
  if (!component) throw std::runtime_error("KRXDialogs is not registered");
  Dialogs dialogs;
  for (const bench::Method& method : bench::Methods(surroundings.Folder()))
    dialogs.push_back(std::make_unique<Dialog>(component, method));
  if (turns) {
    TakeTurns(dialogs);
  } else {
    Compare(dialogs, rounds);
  }
  return 0;
}

}  // namespace

int main(int count, char** arguments) {
  const bool turns = count > 1 && std::strcmp(arguments[1], "--turns") == 0;
  const int rounds = count > 1 && !turns ? std::atoi(arguments[1]) : 50;
  try {
    if (rounds > 0) return Run(rounds, turns);
    std::puts("usage: bench_dialogs [ROUNDS|--turns]");
  } catch (const std::exception& error) {
    std::printf("%s\n", error.what());
  }
  return 1;
}
