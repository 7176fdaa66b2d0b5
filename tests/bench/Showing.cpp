#include "Showing.h"

#include <commctrl.h>  // builds on <windows.h>

#include <algorithm>
#include <array>
#include <cwchar>
#include <numeric>
#include <stdexcept>
#include <utility>

#include "PaintWatch.h"
#include "Times.h"

namespace krx::bench {

namespace {

constexpr UINT kLook = WM_APP + 0x123;  // posted to the dialog, to look at it
constexpr UINT kRest = 1000;            // milliseconds until nothing comes any more

int RowsOf(HWND list) {
  return static_cast<int>(SendMessageW(list, LVM_GETITEMCOUNT, 0, 0));
}

bool IsOf(const wchar_t* window_class, HWND window) {
  std::array<wchar_t, 32> name{};
  GetClassNameW(window, name.data(), static_cast<int>(name.size()));
  return _wcsicmp(name.data(), window_class) == 0 && IsWindowVisible(window);
}

bool IsList(HWND window) {
  return IsOf(WC_LISTVIEWW, window);
}

int ChoicesIn(const std::vector<HWND>& windows) {
  return std::accumulate(windows.begin(), windows.end(), 0, [](int sum, HWND window) {
    const bool is_box = IsOf(WC_COMBOBOXW, window);
    return sum + (is_box ? static_cast<int>(SendMessageW(window, CB_GETCOUNT, 0, 0)) : 0);
  });
}

bool IsCancel(HWND window) {
  const auto name = reinterpret_cast<ULONG_PTR>(GetPropW(window, L"KRXName"));
  return name != 0 && name == GlobalFindAtomW(L"keyCancel") && IsWindowVisible(window);
}

void Close(const std::vector<HWND>& windows, const Acquaintance& known) {
  if (known.Cancel) {
    const HWND key = windows.at(*known.Cancel);
    PostMessageW(windows.front(), WM_COMMAND, MAKEWPARAM(0, BN_CLICKED),
                 reinterpret_cast<LPARAM>(key));
    return;
  }
  PostMessageW(windows.front(), WM_KEYDOWN, VK_ESCAPE, 0x00010001);
  PostMessageW(windows.front(), WM_KEYUP, VK_ESCAPE, static_cast<LPARAM>(0xC0010001));
}

// Follows one dialog until it is painted.
class Painting {
 public:
  Painting(const Acquaintance& known, std::function<void()> done)
      : known_(known),
        done_(std::move(done)),
        watch_([this](HWND dialog, HWND, UINT message) { Handled(dialog, message); }) {}

  double Painted = 0;
  int Choices = 0;
  const std::vector<HWND>& Windows() const { return watch_.Windows(); }
  double SinceCall() const { return Since(called_); }

 private:
  void Handled(HWND dialog, UINT message) {
    const bool counted = message == LVM_SETITEMCOUNT;
    if (Painted != 0 || (message != WM_PAINT && message != kLook && !counted)) return;
    if (!Filled()) return;
    // Rows behind the visible part need no paint.
    if (counted && !looking_) looking_ = PostMessageW(dialog, kLook, 0, 0);
    if (counted || AnyPaintPending()) return;
    Painted = SinceCall();
    Choices = ChoicesIn(Windows());
    done_();
  }
  bool Filled() const {
    return std::all_of(known_.Lists.begin(), known_.Lists.end(), [this](const auto& list) {
      return list.Window < Windows().size() && RowsOf(Windows()[list.Window]) >= list.Rows;
    });
  }

  const Acquaintance& known_;
  const std::function<void()> done_;
  bool looking_ = false;
  const PaintWatch watch_;
  const Time called_ = Clock::now();
};

std::function<void()> rested;  // the dialog that is being looked at has come to rest

void CALLBACK Rested(HWND, UINT, UINT_PTR timer, DWORD) {
  KillTimer(nullptr, timer);
  rested();
}

Acquaintance Describe(const std::vector<HWND>& windows) {
  Acquaintance known;
  for (std::size_t i = 0; i < windows.size(); ++i) {
    if (IsCancel(windows[i])) known.Cancel = i;
    if (IsList(windows[i]) && RowsOf(windows[i]) > 0)
      known.Lists.push_back({i, RowsOf(windows[i])});
  }
  return known;
}

}  // namespace

int Acquaintance::MostRows() const {
  int most = 0;
  for (const List& list : Lists)
    most = std::max(most, list.Rows);
  return most;
}

Acquaintance GetToKnow(const Call& call, const std::function<void(HWND dialog)>& look) {
  Acquaintance known;
  const Acquaintance nothing;
  Painting painting(nothing, [] { SetTimer(nullptr, 0, kRest, Rested); });
  rested = [&] {
    known = Describe(painting.Windows());
    look(painting.Windows().front());
    Close(painting.Windows(), known);
  };
  call();
  if (painting.Painted == 0) throw std::runtime_error("a dialog was never seen painted");
  return known;
}

Showing Measure(const Call& call, const Acquaintance& known) {
  Painting painting(known, [&] { Close(painting.Windows(), known); });
  call();
  return {painting.Painted, painting.SinceCall(), painting.Choices};
}

}  // namespace krx::bench
