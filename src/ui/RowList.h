#pragma once

#include <set>
#include <vector>

#include "ui/Control.h"

namespace krx::ui {

// A list of rows and columns of which one row may be selected. The port asks for the rows that it
// shows, so a list of any length costs no more than its visible part.
class RowList : public FontClassControl {
 public:
  struct Column {
    String Title;
    Twips Width = 0;
    String Tag = {};
    bool operator==(const Column&) const = default;
  };
  enum class Image { None, Drive, Folder, OpenFolder, File, Parent };
  static constexpr int kNoRow = -1;

  // Columns with at least one title make the port show titles.
  Property<std::vector<Column>> Columns{*this, Aspect::Columns, {Column{}}};
  // Least height of a row in twips; a row is never lower than its font needs.
  Property<Twips> RowMinHeight{*this, Aspect::Columns};
  // The row at the top of the visible part; the port corrects what is out of range.
  Property<int> TopRow{*this, Aspect::Scroll};
  // Whether a finger or the mouse drags the rows along; such a list takes a short touch as a click.
  bool DragScrolls = false;

  // The operator released the left button on a row, which is selected by then.
  Event<int> RowClick;
  // The second of two quick presses was released where the first one was clicked, on a list whose
  // rows and selection are still those of that click. It selects nothing itself.
  Event<int> RowDoubleClick;
  // A press that has selected a row ended without a click on it.
  Event<> RowLeft;
  // The selected row is another one, for whatever reason.
  Event<> SelectionChanged;

  virtual int RowCount() const = 0;
  // Text of a cell; valid until the list changes. Row and column are in range.
  virtual StringView Cell(int row, int column) const = 0;
  // Picture before the first column, and its distance from the edge in steps.
  virtual Image RowImage(int /*row*/) const { return Image::None; }
  virtual bool HasImages() const { return false; }
  virtual int Indent(int /*row*/) const { return 0; }
  // Whether there is more below a row, which is marked at its end.
  virtual bool LeadsOn(int /*row*/) const { return false; }
  // What of a cell is seen as text: not what a picture shows already.
  virtual StringView ShownCell(int row, int column) const { return Cell(row, column); }
  // The column that type-ahead goes by.
  virtual int MainColumn() const { return 0; }

  int SelectedRow() const { return selected_; }
  // Selects a row, or kNoRow for none; runtime error 381 when it does not exist.
  void SelectRow(int row);
  // Scrolls as little as needed to have the row in sight.
  void EnsureVisible(int row);
  int RowInView() const { return in_view_; }
  // Counts how often the rows became other ones, for who must not take one row for another.
  int Replacements() const { return replacements_; }

  // The next row at or behind `start` (around the end) whose main cell begins with the text, in any
  // case; kNoRow without one. A letter that is repeated leads to the row behind `start`.
  int FindRow(StringView beginning, int start) const;

  // Width of a column in twips for its title, or for its widest cell.
  Twips TitleWidth(int column) const;
  Twips ContentWidth(int column) const;
  void SetColumnWidth(int column, Twips width);

  // While drawing is suspended the port hears of no new rows and of nothing that is said about
  // them; resuming brings it up to date.
  void SuspendDrawing() { ++suspended_; }
  void ResumeDrawing();

  bool TakesText() const override { return true; }  // characters look rows up
  void Changed(Aspect aspect) override;

  // The port reports what the operator did: raises the events.
  void OperatorSelected(int row);
  void OperatorClicked(int row);
  void OperatorDoubleClicked(int row);
  void OperatorLeftRow() { RowLeft(); }

 protected:
  RowList(Form& parent, String name);
  // Rows show other texts.
  void RowsChanged();
  // Rows came behind the others.
  void RowsAdded();
  // The rows are other ones; none of them is selected.
  void RowsReplaced();

 private:
  void Adopt(int row);
  int FindBeginning(StringView beginning, int start) const;

  int selected_ = kNoRow;
  int in_view_ = kNoRow;
  int replacements_ = 0;
  int suspended_ = 0;
  std::set<Aspect> changed_;  // while drawing was suspended
};

// A list that keeps the texts of its rows.
class StoredRows : public RowList {
 public:
  int RowCount() const override { return static_cast<int>(rows_.size()); }
  StringView Cell(int row, int column) const override;

  // Cells beyond the columns are kept; missing ones are empty.
  void AddRow(std::vector<String> cells);
  void AddRows(std::vector<std::vector<String>> rows);
  // Runtime error 381 when the row does not exist.
  void SetCell(int row, int column, String text);
  // Removes all rows; nothing is selected then.
  void Clear() { SetRows({}); }
  // Puts these rows in the place of all others; nothing is selected then.
  void SetRows(std::vector<std::vector<String>> rows);

 protected:
  using RowList::RowList;

 private:
  std::vector<std::vector<String>> rows_;
};

// A report: titled columns whose widths the operator can change.
class ListView : public StoredRows {
 public:
  ListView(Form& parent, String name) : StoredRows(parent, std::move(name)) {}
};

// The touch grid: rows that a finger can hit and drag.
class KRXGrid : public StoredRows {
 public:
  static constexpr Twips kLowestRow = 400;  // 7 millimetres

  KRXGrid(Form& parent, String name);
  int MainColumn() const override { return static_cast<int>(Columns().size()) - 1; }
};

}  // namespace krx::ui
