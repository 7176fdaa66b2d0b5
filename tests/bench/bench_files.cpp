// Time from the call of a file dialog to its first rows painted and to its complete list, over
// folders of more and more files: against a bare enumeration and against both styles of the
// platform's own file dialog on the same folder, in one process and run. Prints medians and ratios.
// usage: bench_files [--own] FOLDER... ; each holds only files. With --own the platform's dialogs
// stay closed.

#include <windows.h>

#include <commctrl.h>  // builds on the one above
#include <commdlg.h>   // so does this

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdio>
#include <cwchar>
#include <exception>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "PaintWatch.h"
#include "Table.h"
#include "client/Dialogs.h"
#include "ports/win32/MachineFiles.h"
#include "ports/win32/System.h"

namespace {

using namespace krx;
using bench::Clock;
using bench::Decimal;
using bench::Median;
using bench::Since;
using bench::Table;
using bench::Time;

constexpr UINT kLook = WM_APP + 0x123;  // posted to the dialog, to look at its list
constexpr int kRounds = 50;
constexpr int kWarmUp = 5;
// The platform's dialogs take seconds for a large folder, so there are fewer rounds with them.
constexpr int kFilesPerRun = 200000;  // over all rounds
constexpr int kFewestRounds = 3;

// When one dialog showed its first rows and all of them, from its call on, in milliseconds.
struct Run {
  double First = 0;
  double Complete = 0;
};

// The list of files in one of the three dialogs.
struct List {
  HWND Window = nullptr;
  UINT CountMessage = LVM_GETITEMCOUNT;

  int Rows() const { return static_cast<int>(SendMessageW(Window, CountMessage, 0, 0)); }
};

BOOL CALLBACK FindList(HWND window, LPARAM data) {
  auto& list = *reinterpret_cast<List*>(data);
  constexpr int kOldList = 0x460;  // hidden in the other style
  if (!IsWindowVisible(window)) return TRUE;
  std::array<wchar_t, 32> name{};
  const auto atom = static_cast<ATOM>(reinterpret_cast<ULONG_PTR>(GetPropW(window, L"KRXName")));
  GlobalGetAtomNameW(atom, name.data(), static_cast<int>(name.size()));
  std::array<wchar_t, 32> parent{};
  GetClassNameW(GetParent(window), parent.data(), static_cast<int>(parent.size()));
  std::array<wchar_t, 32> kind{};
  GetClassNameW(window, kind.data(), static_cast<int>(kind.size()));
  const bool view = std::wcscmp(parent.data(), L"SHELLDLL_DefView") == 0 &&
                    std::wcscmp(kind.data(), WC_LISTVIEWW) == 0;
  const bool old = std::wcscmp(kind.data(), L"ListBox") == 0 && GetDlgCtrlID(window) == kOldList;
  if (!view && !old && std::wcscmp(name.data(), L"filSelect") != 0) return TRUE;
  list.Window = window;
  if (old) list.CountMessage = LB_GETCOUNT;
  return FALSE;
}

// Follows one dialog until its list is complete, and closes it then.
class Stages {
 public:
  explicit Stages(int files) : files_(files) {}

  void Handled(HWND dialog, UINT message) {
    const bool look = message == WM_PAINT || message == kLook;
    if (done_ || (!look && message != LVM_SETITEMCOUNT)) return;
    // The platform's dialog shows another folder before this one, in a list of its own.
    if (!IsChild(dialog, list_.Window)) {
      list_ = {};
      EnumChildWindows(dialog, FindList, reinterpret_cast<LPARAM>(&list_));
      if (!list_.Window) return;
      PostMessageW(dialog, kLook, 0, 0);
    }
    const int rows = list_.Rows();
    // Rows behind the visible part need no paint.
    if (rows >= files_ && !looking_) looking_ = PostMessageW(dialog, kLook, 0, 0);
    if (!look) return;
    if (rows == 0 || bench::AnyPaintPending()) return;
    if (Result.First == 0) Result.First = Since(called_);
    if (rows < files_) return;
    Result.Complete = Since(called_);
    done_ = true;
    PostMessageW(dialog, WM_KEYDOWN, VK_ESCAPE, 0x00010001);
    PostMessageW(dialog, WM_COMMAND, IDCANCEL, 0);
  }

  Run Result;

 private:
  const int files_;
  const Time called_ = Clock::now();
  List list_;
  bool looking_ = false;
  bool done_ = false;
};

template <class Show>
Run Measure(int files, const Show& show) {
  Stages stages(files);
  const bench::PaintWatch watch(
      [&](HWND dialog, HWND, UINT message) { stages.Handled(dialog, message); });
  show();
  return stages.Result;
}

void ShowPlatforms(const wchar_t* folder, DWORD style) {
  std::array<wchar_t, MAX_PATH> name{};
  OPENFILENAMEW open{};
  open.lStructSize = sizeof open;
  open.lpstrFile = name.data();
  open.nMaxFile = static_cast<DWORD>(name.size());
  open.lpstrInitialDir = folder;
  open.lpstrFilter = L"All\0*.*\0";
  open.Flags = style | OFN_NOCHANGEDIR;
  GetOpenFileNameW(&open);
}

int Enumerate(const std::wstring& folder) {
  WIN32_FIND_DATAW data;
  const HANDLE search = FindFirstFileExW((folder + L"\\*").c_str(), FindExInfoBasic, &data,
                                         FindExSearchNameMatch, nullptr, FIND_FIRST_EX_LARGE_FETCH);
  int files = 0;
  if (search == INVALID_HANDLE_VALUE) return files;
  do {
    files += !(data.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY);
  } while (FindNextFileW(search, &data));
  FindClose(search);
  return files;
}

// What was measured with one folder, in milliseconds.
struct Times {
  std::vector<double> Bare, Read, First, Complete, Explorer, Old;
};

void TakeOwn(client::Dialogs& dialogs, const wchar_t* folder, int files, Times& times) {
  win32::MachineFiles machine;
  const client::BasicString path(folder);
  Time begin = Clock::now();
  Enumerate(folder);
  times.Bare.push_back(Since(begin));
  begin = Clock::now();
  machine.ReadFolder({String(win32::Narrow(folder, std::wcslen(folder)))})
      ->Take(std::chrono::hours(1));
  times.Read.push_back(Since(begin));
  const Run own = Measure(files, [&] {
    BSTR result = nullptr;
    dialogs->KROpenFile(nullptr, path, nullptr, VARIANT_TRUE, nullptr, &result);
    SysFreeString(result);
  });
  if (own.Complete == 0) throw std::runtime_error("our list was never seen complete");
  times.First.push_back(own.First);
  times.Complete.push_back(own.Complete);
}

void TakePlatforms(const wchar_t* folder, int files, Times& times) {
  const Run explorer = Measure(files, [&] { ShowPlatforms(folder, OFN_EXPLORER); });
  const Run old = Measure(files, [&] { ShowPlatforms(folder, 0); });
  if (explorer.Complete == 0 || old.Complete == 0)
    throw std::runtime_error("the platform's list was never seen complete");
  times.Explorer.push_back(explorer.First);
  times.Old.push_back(old.First);
}

void Bench(client::Dialogs& dialogs, const wchar_t* folder, bool platforms, Table& table) {
  const int files = Enumerate(folder);
  if (files == 0) throw std::runtime_error("a folder is empty");
  const int with_platforms =
      platforms ? std::clamp(kFilesPerRun / files, kFewestRounds, kRounds) : 0;
  const int warm_up = std::min(kWarmUp, with_platforms / 3);
  Times times;
  for (int i = -kWarmUp; i < kRounds; ++i) {
    if (i == 0) times = {};
    TakeOwn(dialogs, folder, files, times);
    if (i >= -warm_up && i < with_platforms) TakePlatforms(folder, files, times);
  }
  const double bare = Median(times.Bare);
  const double first = Median(times.First);
  const double complete = Median(times.Complete);
  Table::Row row{std::to_string(files),   Decimal(bare),     Decimal(Median(times.Read)),
                 Decimal(first),          Decimal(complete), Decimal(first / bare),
                 Decimal(complete / bare)};
  if (platforms)
    row.insert(row.end(), {Decimal(Median(times.Explorer)), Decimal(Median(times.Old)),
                           Decimal(complete / Median(times.Explorer))});
  table.Add(std::move(row));
}

Table TableFor(bool platforms) {
  Table::Row titles{"files",    "bare enumeration",   "read by the component", "first rows",
                    "complete", "first rows to bare", "complete to bare"};
  if (platforms)
    titles.insert(titles.end(),
                  {"platform's dialog, explorer style", "old style", "complete to explorer style"});
  return Table(std::move(titles));
}

}  // namespace

int wmain(int count, wchar_t** arguments) {
  const client::Automation automation;
  client::Dialogs dialogs;
  const bool own = count > 1 && std::wcscmp(arguments[1], L"--own") == 0;
  if (!dialogs || count < 2) return 1;
  try {
    Table table = TableFor(!own);
    for (int i = own ? 2 : 1; i < count; ++i)
      Bench(dialogs, arguments[i], !own, table);
    std::printf("Medians of %d, in ms.\n", kRounds);
    table.Print();
    return 0;
  } catch (const std::exception& error) {
    std::printf("%s\n", error.what());
    return 1;
  }
}
