// Time from the call of a file dialog to its first rows painted and to its complete list, against a
// bare enumeration and against both styles of the platform's own file dialog on the same folder, in
// one process and run. Prints medians and ratios.
// usage: bench_files [--own] FOLDER... ; each holds only files. With --own the platform's dialogs
// stay closed.

#include <windows.h>

#include <commctrl.h>  // builds on the one above
#include <commdlg.h>   // so does this

#include <algorithm>
#include <array>
#include <cstdio>
#include <cwchar>
#include <vector>

#include "PaintWatch.h"
#include "client/Dialogs.h"
#include "ports/win32/MachineFiles.h"
#include "ports/win32/System.h"

namespace {

using namespace krx;
using bench::Clock;
using bench::Median;
using bench::Since;
using bench::Time;

constexpr UINT kLook = WM_APP + 0x123;  // posted to the dialog, to look at its list
constexpr int kRounds = 50;
constexpr int kWarmUp = 5;
// The platform's dialogs take seconds for a large folder, so there are fewer rounds of them.
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

void Print(const char* what, const std::vector<double>& times, double bare, double own_first,
           double own_complete) {
  const double median = Median(times);
  std::printf("  %-34s %9.2f %10.2f %12.3f %15.3f\n", what, median, median / bare,
              own_first / median, own_complete / median);
}

// False when a dialog was never seen complete.
bool Bench(client::Dialogs& dialogs, const wchar_t* folder, bool platforms) {
  const int files = Enumerate(folder);
  if (files == 0) return false;
  const int rounds = platforms ? std::clamp(kFilesPerRun / files, kFewestRounds, kRounds) : kRounds;
  const client::BasicString path(folder);
  std::vector<double> bare, read, first, complete, explorer, old;
  win32::MachineFiles machine;
  for (int i = -kWarmUp; i < rounds; ++i) {
    Time begin = Clock::now();
    Enumerate(folder);
    const double enumerated = Since(begin);
    begin = Clock::now();
    machine.ReadFolder(win32::Narrow(folder, std::wcslen(folder)))->Take(std::chrono::hours(1));
    const double read_ms = Since(begin);
    const Run own = Measure(files, [&] {
      BSTR result = nullptr;
      dialogs->KROpenFile(nullptr, path, nullptr, VARIANT_TRUE, nullptr, &result);
      SysFreeString(result);
    });
    if (own.Complete == 0) return false;
    if (i >= 0) {
      bare.push_back(enumerated);
      read.push_back(read_ms);
      first.push_back(own.First);
      complete.push_back(own.Complete);
    }
    if (!platforms) continue;
    const Run new_style = Measure(files, [&] { ShowPlatforms(folder, OFN_EXPLORER); });
    const Run old_style = Measure(files, [&] { ShowPlatforms(folder, 0); });
    if (new_style.Complete == 0 || old_style.Complete == 0) return false;
    if (i < 0) continue;
    explorer.push_back(new_style.First);
    old.push_back(old_style.First);
  }
  const double own_first = Median(first);
  const double own_complete = Median(complete);
  std::printf("%d files, median of %d            ms   to bare   KR first to  KR complete to\n",
              files, rounds);
  const double unit = Median(bare);
  Print("bare enumeration", bare, unit, own_first, own_complete);
  Print("read by the component alone", read, unit, own_first, own_complete);
  Print("KROpenFile, first rows painted", first, unit, own_first, own_complete);
  Print("KROpenFile, complete", complete, unit, own_first, own_complete);
  if (!platforms) return true;
  Print("platform's dialog, explorer style", explorer, unit, own_first, own_complete);
  Print("platform's dialog, old style", old, unit, own_first, own_complete);
  return true;
}

}  // namespace

int wmain(int count, wchar_t** arguments) {
  const client::Automation automation;
  client::Dialogs dialogs;
  const bool own = count > 1 && std::wcscmp(arguments[1], L"--own") == 0;
  if (!dialogs || count < 2) return 1;
  for (int i = own ? 2 : 1; i < count; ++i)
    if (!Bench(dialogs, arguments[i], !own)) return std::puts("a list was never seen complete"), 1;
  return 0;
}
