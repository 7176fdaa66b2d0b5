// A list of a million rows: scrolling, selecting and looking rows up. What the windows do is
// measured beside the system's own list with as many rows; the difference is our own time. usage:
// bench_rows [ROUNDS]

#include <windows.h>

#include <commctrl.h>  // builds on the one above

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "Table.h"
#include "Times.h"
#include "ports/win32/Win32Platform.h"
#include "ui/Form.h"
#include "ui/RowList.h"
#include "ui/Timer.h"

namespace {

using krx::String;
using krx::bench::Decimal;
using krx::bench::Table;

constexpr int kRows = 1'000'000;
constexpr int kWarmUp = 5;
constexpr krx::Twips kWidth = 5400;
constexpr krx::Twips kHeight = 6000;
constexpr krx::Twips kMargin = 120;

// "Recipe 0000000" and so on; the last one is another.
String TextOf(int row) {
  if (row == kRows - 1) return u"Zone";
  String text = u"Recipe 0000000";
  for (std::size_t at = text.size(); row > 0; row /= 10)
    text[--at] = static_cast<char16_t>(u'0' + row % 10);
  return text;
}

double Milliseconds(const std::function<void()>& work) {
  const auto start = krx::bench::Clock::now();
  work();
  return krx::bench::Since(start);
}

// The system's list by itself, with the same rows, size, font and row height as another one. It
// lies beside that one, for what is covered is not painted.
class PlainList {
 public:
  explicit PlainList(HWND model) {
    WNDCLASSW wanted{};
    wanted.lpfnWndProc = OnParent;
    wanted.hInstance = GetModuleHandleW(nullptr);
    wanted.lpszClassName = L"KRXPlainParent";
    RegisterClassW(&wanted);
    RECT place;
    GetWindowRect(model, &place);
    const int width = place.right - place.left;
    const int height = place.bottom - place.top;
    parent_ = CreateWindowExW(WS_EX_NOACTIVATE, wanted.lpszClassName, L"", WS_POPUP | WS_VISIBLE, 0,
                              0, width, height, nullptr, nullptr, wanted.hInstance, nullptr);
    const auto style = static_cast<DWORD>(GetWindowLongW(model, GWL_STYLE));
    const auto ex_style = static_cast<DWORD>(GetWindowLongW(model, GWL_EXSTYLE));
    Window = CreateWindowExW(ex_style, WC_LISTVIEWW, L"", style, 0, 0, width, height, parent_,
                             nullptr, wanted.hInstance, nullptr);
    ListView_SetExtendedListViewStyle(Window, ListView_GetExtendedListViewStyle(model));
    SendMessageW(Window, WM_SETFONT, static_cast<WPARAM>(SendMessageW(model, WM_GETFONT, 0, 0)), 0);
    ListView_SetImageList(Window, ListView_GetImageList(model, LVSIL_SMALL), LVSIL_SMALL);
    LVCOLUMNW column{};
    column.mask = LVCF_WIDTH;
    column.cx = ListView_GetColumnWidth(model, 0);
    SendMessageW(Window, LVM_INSERTCOLUMNW, 0, reinterpret_cast<LPARAM>(&column));
    ListView_SetItemCount(Window, kRows);
    UpdateWindow(Window);
  }
  ~PlainList() { DestroyWindow(parent_); }
  PlainList(const PlainList&) = delete;
  PlainList& operator=(const PlainList&) = delete;

  HWND Window;

 private:
  static LRESULT CALLBACK OnParent(HWND window, UINT message, WPARAM w, LPARAM l) {
    if (message == WM_NOTIFY && reinterpret_cast<const NMHDR*>(l)->code == LVN_GETDISPINFOW) {
      static String text;
      LVITEMW& item = reinterpret_cast<NMLVDISPINFOW*>(l)->item;
      if ((item.mask & LVIF_IMAGE) != 0) item.iImage = I_IMAGENONE;
      if ((item.mask & LVIF_TEXT) == 0) return 0;
      text = TextOf(item.iItem);
      item.pszText = reinterpret_cast<wchar_t*>(text.data());
      return 0;
    }
    return DefWindowProcW(window, message, w, l);
  }

  HWND parent_;
};

class Bench : public krx::ui::Form {
 public:
  Bench(krx::ui::Platform& platform, int rounds) : Form(platform, u"Bench"), rounds_(rounds) {
    Width = kWidth;
    Height = kHeight;
    lvwRows.Place({kMargin, kMargin, kWidth - 2 * kMargin, kHeight - 2 * kMargin});
    std::vector<std::vector<String>> rows;
    rows.reserve(kRows);
    for (int row = 0; row < kRows; ++row)
      rows.push_back({TextOf(row)});
    lvwRows.SetRows(std::move(rows));
    tmrStart.Interval = 300;
    tmrStart.Enabled = true;
    tmrStart.Tick = [this] {
      tmrStart.Enabled = false;
      Run();
      Unload();
    };
  }

  bool Right = true;  // all rows were found where they are

 private:
  using Work = std::function<void(int round)>;

  double MedianOf(const Work& work) const {
    std::vector<double> times;
    for (int i = -kWarmUp; i < rounds_; ++i) {
      const double time = Milliseconds([&] { work(i + kWarmUp); });
      if (i >= 0) times.push_back(time);
    }
    return krx::bench::Median(times);
  }
  void Windows(const char* what, const Work& own, const Work& plain) {
    const double ours = MedianOf(own);
    const double theirs = MedianOf(plain);
    table_.Add({what, Decimal(ours, 3), Decimal(theirs, 3), Decimal(ours - theirs, 3)});
  }
  void Lookup(const char* what, krx::StringView beginning, int expected) {
    const double ours =
        MedianOf([&](int) { Right = lvwRows.FindRow(beginning, 0) == expected && Right; });
    table_.Add({what, Decimal(ours, 3), "", Decimal(ours, 3)});
  }

  void Run() {
    const HWND list = FindWindowExW(GetActiveWindow(), nullptr, WC_LISTVIEWW, nullptr);
    const PlainList plain(list);
    const auto page = [](HWND window) {
      SendMessageW(window, WM_VSCROLL, SB_PAGEDOWN, 0);
      UpdateWindow(window);
    };
    Windows(
        "a page is scrolled and painted", [&](int) { page(list); },
        [&](int) { page(plain.Window); });
    const auto distant = [](int round) {
      return round % 2 == 0 ? kRows - 1 - round : kRows / 2 + round;
    };
    Windows(
        "a row far away is selected, shown and painted",
        [&](int round) {
          lvwRows.SelectRow(distant(round));
          lvwRows.EnsureVisible(distant(round));
          UpdateWindow(list);
        },
        [&](int round) {
          constexpr UINT kBoth = LVIS_SELECTED | LVIS_FOCUSED;
          // Left to the system, the old selection takes it half a second to find.
          const int before = ListView_GetNextItem(plain.Window, -1, LVNI_SELECTED);
          if (before >= 0) ListView_SetItemState(plain.Window, before, 0, kBoth);
          ListView_SetItemState(plain.Window, distant(round), kBoth, kBoth);
          ListView_EnsureVisible(plain.Window, distant(round), FALSE);
          UpdateWindow(plain.Window);
        });
    Lookup("letters that begin the last row alone", u"z", kRows - 1);
    Lookup("letters that begin no row", u"q", krx::ui::RowList::kNoRow);
    Lookup("a beginning that all rows share but for its end", u"recipe 0999998", kRows - 2);
    Lookup("the same where no row has that end", u"recipe 099999x", krx::ui::RowList::kNoRow);
    std::printf("Medians of %d, in ms, over %d rows.\n", rounds_, kRows);
    table_.Print();
  }

  krx::ui::ListView lvwRows{*this, u"lvwRows"};
  krx::ui::Timer tmrStart{*this, u"tmrStart"};
  const int rounds_;
  Table table_{{"a million rows", "ours", "system's list", "our own time"}};
};

}  // namespace

int main(int count, char** arguments) {
  krx::win32::Win32Platform platform;
  Bench bench(platform, std::max(count > 1 ? std::atoi(arguments[1]) : 50, 1));
  bench.ShowModal();
  if (!bench.Right) std::puts("a row was not found where it is");
  return bench.Right ? 0 : 1;
}
