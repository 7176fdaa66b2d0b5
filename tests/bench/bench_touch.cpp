// Time from opening the touch directory dialog on 10,000 folders to its first painted rows and to
// its last marker, against a bare enumeration with an early-exit look into each folder, in one run.
//   bench_touch [ROUNDS]
#include <windows.h>

#include <commctrl.h>  // builds on the one above

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

#include "BareRuntime.h"
#include "Table.h"
#include "Times.h"
#include "files/FDirectorySelectTouch.h"
#include "ports/win32/System.h"
#include "ports/win32/Win32Platform.h"
#include "service/KRXDialog.h"

namespace {

using krx::String;
using krx::bench::Clock;
using krx::bench::Median;
using krx::bench::Since;
using krx::bench::Time;

constexpr int kWarmUp = 2;  // each round takes a second
constexpr int kFolders = 10000;
constexpr int kWithSubfolder = 3;  // each third folder has one

// The folders to be listed; gone with the object.
class Tree {
 public:
  Tree() : root_(std::filesystem::temp_directory_path() / "krx-bench-touch") {
    std::filesystem::remove_all(root_);
    for (int i = 0; i < kFolders; ++i) {
      const auto folder = root_ / ("folder" + std::to_string(100000 + i));
      std::filesystem::create_directories(i % kWithSubfolder == 0 ? folder / "inside" : folder);
    }
  }
  ~Tree() {
    std::error_code ignored;
    std::filesystem::remove_all(root_, ignored);
  }
  Tree(const Tree&) = delete;
  Tree& operator=(const Tree&) = delete;

  std::wstring Root() const { return root_.wstring(); }

 private:
  std::filesystem::path root_;
};

bool IsFolder(const WIN32_FIND_DATAW& found) {
  if ((found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) == 0) return false;
  return std::wstring(found.cFileName) != L"." && std::wstring(found.cFileName) != L"..";
}

// Calls `visit` for each folder until it says that this is enough.
template <class Visit>
void EachFolder(const std::wstring& path, Visit visit) {
  WIN32_FIND_DATAW found;
  const HANDLE search = FindFirstFileExW((path + L"\\*").c_str(), FindExInfoBasic, &found,
                                         FindExSearchNameMatch, nullptr, FIND_FIRST_EX_LARGE_FETCH);
  if (search == INVALID_HANDLE_VALUE) return;
  do {
    if (IsFolder(found) && visit(found.cFileName)) break;
  } while (FindNextFileW(search, &found));
  FindClose(search);
}

// The bare work: the names, and for each whether there is a folder in it.
double Enumerate(const std::wstring& root, int& marked) {
  const auto start = Clock::now();
  std::vector<std::wstring> names;
  EachFolder(root, [&](const wchar_t* name) {
    names.emplace_back(name);
    return false;
  });
  marked = 0;
  for (const std::wstring& name : names) {
    EachFolder(root + L'\\' + name, [&](const wchar_t*) {
      ++marked;
      return true;
    });
  }
  return Since(start);
}

class Bench : public krx::files::FDirectorySelectTouch {
 public:
  explicit Bench(krx::service::Apartment& apartment) : FDirectorySelectTouch(apartment) {
    tmrWatch_.Interval = 10;
    tmrWatch_.Enabled = true;
    tmrWatch_.Tick = [this] { Watch(); };
    const auto paint_step = Paint;
    Paint = [this, paint_step] {
      paint_step();
      if (FirstRows > 0) return;
      UpdateWindow(FindWindowExW(GetActiveWindow(), nullptr, WC_LISTVIEWW, nullptr));
      FirstRows = Since(start_);
    };
  }

  void Run(const std::wstring& root) {
    start_ = Clock::now();
    SelectDirectory({String(root.begin(), root.end()) + u"\\folder100000", true, u"bench"});
  }

  double FirstRows = 0;
  double Complete = 0;
  int Marked = 0;

 private:
  // The last folder with a marker is the sign that all have theirs.
  void Watch() {
    const int last = grdFolders.RowCount() - 1;
    const int marked = last - (kFolders - 1) % kWithSubfolder;
    if (FirstRows == 0 || last < kFolders || grdFolders.Cell(marked, 0).empty()) return;
    Complete = Since(start_);
    tmrWatch_.Enabled = false;
    for (int row = 0; row <= last; ++row)
      Marked += grdFolders.Cell(row, 0).empty() ? 0 : 1;
    Hide();
  }

  Time start_;
  krx::ui::Timer tmrWatch_{*this, u"tmrWatch"};
};

}  // namespace

int main(int count, char** arguments) {
  const int rounds = std::max(count > 1 ? std::atoi(arguments[1]) : 50, 1);
  const Tree tree;
  krx::win32::Win32Platform platform;
  krx::bench::BareRuntime runtime;
  krx::service::Apartment apartment(platform, runtime);
  const auto dialog = krx::service::KRXDialog::Create(apartment);
  std::vector<double> bare;
  std::vector<double> first;
  std::vector<double> complete;
  for (int i = -kWarmUp; i < rounds; ++i) {
    int expected = 0;
    const double enumerated = Enumerate(tree.Root(), expected);
    Bench bench(apartment);
    bench.Run(tree.Root());
    if (bench.Marked != expected) {
      std::printf("%d markers instead of %d\n", bench.Marked, expected);
      return 1;
    }
    if (i < 0) continue;
    bare.push_back(enumerated);
    first.push_back(bench.FirstRows);
    complete.push_back(bench.Complete);
  }
  const double unit = Median(bare);
  std::printf("Medians of %d, in ms, over %d folders.\n", rounds, kFolders);
  krx::bench::Table table({"touch dialog", "ms", "to bare"});
  const auto add = [&](const char* what, double time) {
    table.Add({what, krx::bench::Decimal(time), krx::bench::Decimal(time / unit)});
  };
  add("bare enumeration and look into each", unit);
  add("first rows painted", Median(first));
  add("the last marker", Median(complete));
  table.Print();
  return 0;
}
