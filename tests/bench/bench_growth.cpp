// How dialogs grow with what they show: the user overview over more and more users, with what the
// user management takes of it and beside its bare twin, and a message box over longer and longer
// messages. usage: bench_growth [ROUNDS]

#include <windows.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <stdexcept>
#include <string>
#include <vector>

#include "Calls.h"
#include "Showing.h"
#include "Subject.h"
#include "Surroundings.h"
#include "Table.h"
#include "Times.h"

namespace {

using namespace krx;
using bench::Decimal;
using bench::Dialog;
using bench::Table;

constexpr int kWarmUp = 5;

bench::Method Overview(const std::wstring& folder, int users) {
  for (bench::Method& method : bench::Methods(folder)) {
    if (method.Name != "KRUser") continue;
    method.FewestRows = users;
    return method;
  }
  throw std::runtime_error("there is no user overview");
}

void PrintUsers(bench::Surroundings& surroundings, client::Dialogs& component, int rounds) {
  Table table({"users", "KRUser painted", "user management", "painted without it", "twin painted",
               "ratio", "ratio without user management"});
  for (const int users : {1, 10, 100, 500, 10'000}) {
    surroundings.HaveUsers(users);
    Dialog dialog(component, Overview(surroundings.Folder(), users));
    const int fewer = users > 1000 ? std::max(rounds / 5, 1) : rounds;
    for (int i = -kWarmUp; i < fewer; ++i) {
      if (i == 0) dialog.Forget();
      dialog.Own.Run();
      dialog.RunTimed();
      dialog.Bare.Run();
    }
    const double painted = dialog.Own.Painted();
    const double rest = painted - dialog.Users();
    const double twin = dialog.Bare.Painted();
    table.Add({std::to_string(users), Decimal(painted), Decimal(dialog.Users()), Decimal(rest),
               Decimal(twin), Decimal(painted / twin), Decimal(rest / twin)});
  }
  table.Print();
}

// Four times the text should take no more than four times.
void PrintMessages(client::Dialogs& component, int rounds) {
  Table table({"characters of a message", "KRMsgBox painted"});
  const bench::Acquaintance box;
  for (const int length : {100, 10'000, 40'000, 160'000, 640'000}) {
    std::wstring text;
    while (text.size() < static_cast<std::size_t>(length))
      text += L"A message of some length. ";
    std::vector<double> painted;
    for (int i = 0; i < rounds; ++i) {
      const bench::Showing showing = bench::Measure(
          [&] {
            long result = 0;
            component.MsgBox(text, MB_YESNOCANCEL | MB_ICONQUESTION, bench::kTitle, result);
          },
          box);
      if (showing.Painted == 0) throw std::runtime_error("a box was never seen painted");
      painted.push_back(showing.Painted);
    }
    table.Add({std::to_string(length), Decimal(bench::Median(painted))});
  }
  table.Print();
}

void Run(int rounds) {
  bench::Surroundings surroundings(1, bench::kFiles, bench::kFolders);
  client::Dialogs component;
  if (!component) throw std::runtime_error("KRXDialogs is not registered");
  std::printf("Medians of %d rounds, in ms.\n", rounds);
  PrintUsers(surroundings, component, rounds);
  PrintMessages(component, std::max(rounds / 10, 1));
}

}  // namespace

int main(int count, char** arguments) {
  try {
    Run(std::max(count > 1 ? std::atoi(arguments[1]) : 50, 1));
    return 0;
  } catch (const std::exception& error) {
    std::printf("%s\n", error.what());
    return 1;
  }
}
