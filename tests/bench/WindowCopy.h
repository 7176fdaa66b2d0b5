#pragma once

#include <windows.h>

#include <commctrl.h>  // builds on the one above

#include <string>
#include <vector>

namespace krx::bench {

// What can be read off a window that is shown, enough to make one that looks alike.
struct WindowCopy {
  std::wstring Class;
  std::wstring Text;
  DWORD Style = 0;
  DWORD ExStyle = 0;
  RECT Place{};  // on the screen; for a child in its parent
  LOGFONTW Font{};
  bool Focused = false;

  std::vector<std::wstring> Entries;  // of a combo box
  int Entry = -1;

  struct Column {
    std::wstring Title;
    int Width;
  };
  std::vector<Column> Columns;  // of a list
  struct Row {
    std::vector<std::wstring> Cells;
    int Image;
    int Indent;
  };
  std::vector<Row> Rows;  // those in sight
  int RowCount = 0;
  int Selected = -1;  // among those in sight
  DWORD ListStyle = 0;
  HIMAGELIST Images = nullptr;  // belongs to whoever has the copy

  bool Is(const wchar_t* window_class) const;
};

// A dialog that is shown, first, and the windows in it, the topmost first. What a control makes for
// itself is not among them.
std::vector<WindowCopy> CopyWindows(HWND dialog);

}  // namespace krx::bench
