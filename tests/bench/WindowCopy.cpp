#include "WindowCopy.h"

#include <algorithm>
#include <array>
#include <cwchar>
#include <utility>

namespace krx::bench {

namespace {

template <class Get>
std::wstring TextOf(std::size_t length, Get get) {
  std::wstring text(length + 1, L'\0');
  get(text.data());
  text.resize(std::wcslen(text.c_str()));
  return text;
}

void ReadCombo(HWND window, WindowCopy& copy) {
  const auto count = SendMessageW(window, CB_GETCOUNT, 0, 0);
  for (LRESULT i = 0; i < count; ++i) {
    const auto at = static_cast<WPARAM>(i);
    const auto length = static_cast<std::size_t>(SendMessageW(window, CB_GETLBTEXTLEN, at, 0));
    copy.Entries.push_back(TextOf(length, [&](wchar_t* text) {
      SendMessageW(window, CB_GETLBTEXT, at, reinterpret_cast<LPARAM>(text));
    }));
  }
  copy.Entry = static_cast<int>(SendMessageW(window, CB_GETCURSEL, 0, 0));
}

void ReadColumns(HWND window, WindowCopy& copy) {
  const HWND header = ListView_GetHeader(window);
  for (int i = 0; i < Header_GetItemCount(header); ++i) {
    std::array<wchar_t, 256> title{};
    LVCOLUMNW column{};
    column.mask = LVCF_TEXT | LVCF_WIDTH;
    column.pszText = title.data();
    column.cchTextMax = static_cast<int>(title.size());
    SendMessageW(window, LVM_GETCOLUMNW, static_cast<WPARAM>(i), reinterpret_cast<LPARAM>(&column));
    copy.Columns.push_back({title.data(), column.cx});
  }
}

WindowCopy::Row ReadRow(HWND window, int at, std::size_t columns) {
  LVITEMW look{};
  look.mask = LVIF_IMAGE | LVIF_INDENT;
  look.iItem = at;
  SendMessageW(window, LVM_GETITEMW, 0, reinterpret_cast<LPARAM>(&look));
  WindowCopy::Row row{{}, look.iImage, look.iIndent};
  for (std::size_t column = 0; column < columns; ++column) {
    std::array<wchar_t, 256> text{};
    LVITEMW item{};
    item.iSubItem = static_cast<int>(column);
    item.pszText = text.data();
    item.cchTextMax = static_cast<int>(text.size());
    SendMessageW(window, LVM_GETITEMTEXTW, static_cast<WPARAM>(at),
                 reinterpret_cast<LPARAM>(&item));
    row.Cells.emplace_back(text.data());
  }
  return row;
}

void ReadList(HWND window, WindowCopy& copy) {
  copy.RowCount = ListView_GetItemCount(window);
  copy.ListStyle = ListView_GetExtendedListViewStyle(window);
  copy.Images = ImageList_Duplicate(ListView_GetImageList(window, LVSIL_SMALL));
  ReadColumns(window, copy);
  const int top = ListView_GetTopIndex(window);
  const int end = std::min(copy.RowCount, top + ListView_GetCountPerPage(window) + 1);
  for (int row = top; row < end; ++row)
    copy.Rows.push_back(ReadRow(window, row, copy.Columns.size()));
  const int selected = ListView_GetNextItem(window, -1, LVNI_SELECTED);
  if (selected >= top && selected < end) copy.Selected = selected - top;
}

WindowCopy Copy(HWND window) {
  WindowCopy copy;
  std::array<wchar_t, 64> name{};
  GetClassNameW(window, name.data(), static_cast<int>(name.size()));
  copy.Class = name.data();
  const int length = GetWindowTextLengthW(window);
  copy.Text = TextOf(static_cast<std::size_t>(length),
                     [&](wchar_t* text) { GetWindowTextW(window, text, length + 1); });
  copy.Style = static_cast<DWORD>(GetWindowLongW(window, GWL_STYLE));
  copy.ExStyle = static_cast<DWORD>(GetWindowLongW(window, GWL_EXSTYLE));
  GetWindowRect(window, &copy.Place);
  const auto font = reinterpret_cast<HFONT>(SendMessageW(window, WM_GETFONT, 0, 0));
  GetObjectW(font ? font : GetStockObject(DEFAULT_GUI_FONT), sizeof copy.Font, &copy.Font);
  copy.Focused = GetFocus() == window;
  if (copy.Is(WC_COMBOBOXW)) ReadCombo(window, copy);
  if (copy.Is(WC_LISTVIEWW)) ReadList(window, copy);
  return copy;
}

}  // namespace

bool WindowCopy::Is(const wchar_t* window_class) const {
  return CompareStringOrdinal(Class.c_str(), -1, window_class, -1, TRUE) == CSTR_EQUAL;
}

std::vector<WindowCopy> CopyWindows(HWND dialog) {
  std::vector<WindowCopy> copies{Copy(dialog)};
  for (HWND child = GetWindow(dialog, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT)) {
    WindowCopy copy = Copy(child);
    MapWindowPoints(nullptr, dialog, reinterpret_cast<POINT*>(&copy.Place), 2);
    copies.push_back(std::move(copy));
  }
  return copies;
}

}  // namespace krx::bench
