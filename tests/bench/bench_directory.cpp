// Log-on by list where the users come from a directory service: a real server on this machine, and
// for each round a client that has read nothing yet. It opens the dialog, opens it again while all
// that is to be known of the users is still being read, and a third time when it is. usage:
// bench_directory [ROUNDS]; with --open and a number of users it is such a client

#include <windows.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <exception>
#include <optional>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

#include "Showing.h"
#include "Table.h"
#include "Times.h"
#include "UserCalls.h"
#include "client/Dialogs.h"
#include "com/ComPtr.h"
#include "directory/PlantServer.h"
#include "driver/Client.h"
#include "users/UserStoreFolder.h"

namespace {

using namespace krx;
using bench::Decimal;

constexpr int kNamed = 8;  // of the server's own, who have a class
constexpr int kOfThisMachine = 1;

// What one client has seen, in milliseconds.
struct Opened {
  double First = 0;      // painted
  double Users = 0;      // of it, in the user management
  double Answered = 0;   // the first call had returned, its dialog closed as soon as it was painted
  double Meanwhile = 0;  // painted while the users are read
  double AllRead = 0;    // since the first call
  double Again = 0;      // painted when all are read
};

class Client {
 public:
  explicit Client(int users) : users_(users) {
    // The runtime is there, as in any program that has shown a text of it.
    CoCreateInstance(__uuidof(UserAdministration), nullptr, CLSCTX_INPROC_SERVER,
                     __uuidof(IUserAdministration), administration_.PutVoid());
    if (!dialogs_ || !administration_) throw std::runtime_error("a component is not registered");
  }

  Opened Run() {
    Opened opened;
    const bench::Time begin = bench::Clock::now();
    {
      const bench::UserCalls calls;
      const bench::Showing first = Open();
      opened.First = first.Painted;
      opened.Answered = first.Returned;
      opened.Users = calls.Milliseconds();
    }
    opened.Meanwhile = Open().Painted;
    AwaitAll();
    opened.AllRead = bench::Since(begin);
    opened.Again = Open().Painted;
    return opened;
  }

 private:
  bench::Showing Open() {
    const bench::Acquaintance box;
    const bench::Showing showing = bench::Measure(
        [this] {
          VARIANT_BOOL result = VARIANT_FALSE;
          if (dialogs_->KRUserLogOnCombo(&result) != S_OK)
            throw std::runtime_error("the dialog fails");
        },
        box);
    const int wanted = users_ + kNamed + kOfThisMachine;
    if (showing.Painted == 0 || showing.Choices != wanted)
      throw std::runtime_error("the dialog shows " + std::to_string(showing.Choices) + " users");
    return showing;
  }

  // Who asks for more than one user waits, for seconds at a time, until all are known.
  void AwaitAll() {
    bench::Time begin;
    do {
      begin = bench::Clock::now();
      if (FullNameOf(L"op00001").empty() || FullNameOf(L"op00002").empty())
        throw std::runtime_error("a user has no full name");
    } while (bench::Since(begin) > 1000);
  }

  std::wstring FullNameOf(const wchar_t* user) {
    BSTR full_name = nullptr;
    BSTR comment = nullptr;
    LONG state = 0, remaining = 0, changed = 0, renew = 0, status = -1;
    administration_->GetUserInfo(client::BasicString(user), &full_name, &comment, &state,
                                 &remaining, &changed, &renew, &status);
    const std::wstring name(full_name, SysStringLen(full_name));
    SysFreeString(full_name);
    SysFreeString(comment);
    if (status != 0) throw std::runtime_error("a user is unknown");
    return name;
  }

  const int users_;
  const client::Automation automation_;
  client::Dialogs dialogs_;
  com::ComPtr<IUserAdministration> administration_;
};

Opened RunClient(int users) {
  const std::wstring program = (drive::ProgramFolder() / "bench_directory.exe").wstring();
  drive::Client client(L"\"" + program + L"\" --open " + std::to_wstring(users));
  client.Finish();
  const std::vector<std::string> lines = client.Lines();
  Opened opened;
  std::istringstream line(lines.empty() ? "nothing" : lines.back());
  line >> opened.First >> opened.Users >> opened.Answered >> opened.Meanwhile >> opened.AllRead >>
      opened.Again;
  if (!line) throw std::runtime_error("a client says: " + line.str());
  return opened;
}

double MedianOf(const std::vector<Opened>& all, double Opened::*value) {
  std::vector<double> values;
  for (const Opened& one : all)
    values.push_back(one.*value);
  return bench::Median(values);
}

void Measure(int users, int rounds, bench::Table& table) {
  const test::PlantServer server("operators=" + std::to_string(users));
  const drive::UserStoreFolder store(server.Rules());
  store.Provision(L"admin", L"Acht Pumpen");
  std::vector<Opened> all;
  for (int i = 0; i < rounds; ++i)
    all.push_back(RunClient(users));
  std::vector<std::string> row{std::to_string(users)};
  for (const auto value : {&Opened::First, &Opened::Users, &Opened::Answered, &Opened::Meanwhile,
                           &Opened::AllRead, &Opened::Again})
    row.push_back(Decimal(MedianOf(all, value)));
  table.Add(row);
}

void Run(int rounds) {
  std::printf("Medians of %d clients, in ms.\n", rounds);
  bench::Table table({"users of the directory", "first log-on by list painted", "user management",
                      "first one closed", "painted while users are read", "all users read",
                      "painted then"});
  for (const int users : {10, 1000, 10'000})
    Measure(users, rounds, table);
  table.Print();
}

}  // namespace

int main(int count, char** arguments) {
  try {
    if (count > 2 && std::strcmp(arguments[1], "--open") == 0) {
      const Opened opened = Client(std::atoi(arguments[2])).Run();
      std::printf("%.3f %.3f %.3f %.3f %.3f %.3f\n", opened.First, opened.Users, opened.Answered,
                  opened.Meanwhile, opened.AllRead, opened.Again);
    } else {
      Run(std::max(count > 1 ? std::atoi(arguments[1]) : 10, 1));
    }
    return 0;
  } catch (const std::exception& error) {
    std::printf("%s\n", error.what());
    return 1;
  }
}
