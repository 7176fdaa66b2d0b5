// Users in the reference runtime's database: what the first and the ten-thousandth cost to add,
// also behind many audit records, and how long the user overview takes to show all of them anew,
// with everything that the runtime does for it.
//   bench_stored [ROUNDS]
#include <windows.h>

#include <commctrl.h>  // builds on the one above

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <filesystem>
#include <fstream>
#include <vector>

#include "BareRuntime.h"
#include "StoredUsers.h"
#include "Table.h"
#include "Times.h"
#include "ports/win32/Win32Platform.h"
#include "runtime/users/administration/ClassDirectory.h"
#include "service/KRXDialog.h"
#include "ui/Timer.h"
#include "users/FUser.h"

namespace {

using krx::bench::Decimal;
using krx::bench::Median;
using krx::bench::StoredUsers;

constexpr int kAdded = 50;  // one by one, at either end

class Runtime : public krx::bench::BareRuntime {
 public:
  explicit Runtime(StoredUsers& users) : users_(users) {}
  std::unique_ptr<krx::host::UserAdministration> CreateUserAdministration() override {
    return std::make_unique<krx::runtime::UserDirectory>(users_.Management);
  }
  std::unique_ptr<krx::host::UserClassAdministration> CreateUserClassAdministration() override {
    return std::make_unique<krx::runtime::ClassDirectory>(users_.Management);
  }

 private:
  StoredUsers& users_;
};

// The overview, refreshed again and again as soon as it is up.
class Overview : public krx::users::FUser {
 public:
  Overview(krx::service::Apartment& apartment, StoredUsers& users, int rounds)
      : FUser(apartment), users_(users), rounds_(rounds) {
    tmrStart_.Interval = 10;
    tmrStart_.Enabled = true;
    tmrStart_.Tick = [this] {
      tmrStart_.Enabled = false;
      Run();
      Unload();
    };
  }

  std::vector<double> Refreshed;
  std::vector<double> RefreshedAfterChange;

 private:
  void Run() {
    const HWND list = FindWindowExW(GetActiveWindow(), nullptr, WC_LISTVIEWW, nullptr);
    for (int i = 0; i < rounds_; ++i) {
      Refreshed.push_back(Refresh(list));
      krx::runtime::UserDirectory(users_.Management).SetUserActive(u"operator1", i % 2);
      RefreshedAfterChange.push_back(Refresh(list));
    }
  }
  double Refresh(HWND list) {
    const auto begin = krx::bench::Clock::now();
    RefreshUsers();
    UpdateWindow(list);
    return krx::bench::Since(begin);
  }

  StoredUsers& users_;
  const int rounds_;
  krx::ui::Timer tmrStart_{*this, u"tmrStart"};
};

double MedianOfCreating(StoredUsers& users, int first) {
  std::vector<double> times;
  for (int i = 0; i < kAdded; ++i)
    times.push_back(users.Create(first + i));
  return Median(times);
}

// A folder with rules that were not written just now: as in a plant, a look at the file's time
// tells that.
void MakeFolder(const std::filesystem::path& folder) {
  std::filesystem::create_directories(folder);
  std::ofstream(folder / "users.conf", std::ios::binary) << "hash-iterations = 1000\n";
  std::filesystem::last_write_time(
      folder / "users.conf",
      std::filesystem::last_write_time(folder / "users.conf") - std::chrono::hours(1));
}

// Each batch of additions stands behind so many more audit records.
void MeasureAudit(const std::filesystem::path& folder) {
  MakeFolder(folder);
  StoredUsers users(folder);
  users.ProvisionAndLogOn();
  krx::bench::Table table({"audit records", "adding a user", "ratio to the first"});
  double first = 0;
  int records = 0;
  int added = 0;
  for (const int wanted : {0, 10'000, 90'000}) {
    users.FillAudit(wanted - records);
    records = wanted;
    const double median = MedianOfCreating(users, added);
    added += kAdded;
    if (first == 0) first = median;
    table.Add({std::to_string(records), Decimal(median), Decimal(median / first)});
  }
  table.Print();
}

void Measure(const std::filesystem::path& folder, int count, int rounds, krx::bench::Table& table) {
  MakeFolder(folder);
  StoredUsers users(folder);
  users.ProvisionAndLogOn();
  const double first = MedianOfCreating(users, 0);
  users.Fill(kAdded, count - kAdded);
  const double last = MedianOfCreating(users, count - kAdded);
  krx::win32::Win32Platform platform;
  Runtime runtime(users);
  krx::service::Apartment apartment(platform, runtime);
  const auto dialog = krx::service::KRXDialog::Create(apartment);
  Overview overview(apartment, users, rounds);
  overview.ShowUsers();
  table.Add({std::to_string(count), Decimal(first), Decimal(last), Decimal(last / first),
             Decimal(Median(overview.Refreshed)), Decimal(Median(overview.RefreshedAfterChange))});
}

void Run(int rounds) {
  const auto root = std::filesystem::temp_directory_path() /
                    ("krx-stored-" + std::to_string(GetCurrentProcessId()));
  std::printf("Medians of %d additions and %d refreshings, in ms.\n", kAdded, rounds);
  krx::bench::Table table({"stored users", "adding one of the first", "adding one of the last",
                           "ratio", "overview filled anew", "the same after a change"});
  for (const int count : {500, 10'000})
    Measure(root / std::to_string(count), count, rounds, table);
  table.Print();
  MeasureAudit(root / "audit");
  std::error_code ignored;
  std::filesystem::remove_all(root, ignored);
}

}  // namespace

int main(int count, char** arguments) {
  try {
    Run(std::max(count > 1 ? std::atoi(arguments[1]) : 10, 1));
    return 0;
  } catch (const std::exception& error) {
    std::printf("%s\n", error.what());
    return 1;
  }
}
