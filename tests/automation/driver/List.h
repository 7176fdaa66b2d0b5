#pragma once

#include <string>
#include <vector>

#include "driver/Window.h"

namespace krx::drive {

// A list of rows in another process of the same word size: read as a screen reader reads it,
// clicked with the real mouse.
class List {
 public:
  explicit List(const Window& window) : window_(window) {}
  // The list of this name on a form; throws when it does not come in time.
  List(const Window& form, const std::wstring& name) : window_(form.Child(name)) {}

  const Window& TheWindow() const { return window_; }

  int Count() const;
  int Columns() const;
  std::wstring Title(int column) const;
  std::wstring Cell(int row, int column) const;
  // The texts of one column, from the first row to the last.
  std::vector<std::wstring> Column(int column) const;
  // The first row with this text in the column; throws when none shows it in time.
  int Find(const std::wstring& text, int column = 0) const;

  // -1 without a selected row.
  int Selected() const;
  int Top() const;
  // Number of rows that are completely in sight when the list is full.
  int InSight() const;
  int ColumnWidth(int column) const;
  // Place of a row in pixels of the screen, whether it is in sight or not.
  RECT RowBounds(int row) const;

  // Scrolls the row into sight and clicks it.
  void Click(int row) const;
  void DoubleClick(int row) const;

  // Waits; both throw when it does not happen in time.
  void WaitForCount(int count) const;
  void WaitForSelected(int row) const;

 private:
  POINT Middle(int row) const;
  int Ask(UINT message, WPARAM w = 0, LPARAM l = 0) const;

  Window window_;
};

}  // namespace krx::drive
