#include "ui/RowList.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <utility>

#include "base/CaseFolding.h"
#include "base/Error.h"
#include "ui/Form.h"
#include "ui/Platform.h"

namespace krx::ui {

namespace {

// Room beside a text in its column, in twips.
constexpr Twips kCellPadding = 180;
constexpr Twips kTitlePadding = 240;
// In the order of their telling: a row can be selected or scrolled to once the port knows it.
constexpr std::array kOfRows{Aspect::Items, Aspect::MoreItems, Aspect::Selection, Aspect::Scroll,
                             Aspect::RowInView};

// A beginning that texts are asked for in any case, letter by letter: most differ in the first
// ones.
class Beginning {
 public:
  Beginning(const CaseFolding& folding, StringView text)
      : folding_(folding), folded_(folding(text)) {
    for (std::size_t i = 0; i < ascii_.size(); ++i)
      ascii_[i] = folding(static_cast<char16_t>(i));
  }

  bool IsOf(StringView text) const {
    if (text.size() < folded_.size()) return false;
    for (std::size_t i = 0; i < folded_.size(); ++i) {
      const char16_t unit = text[i];
      // Both halves of a pair make up one letter.
      if (IsSurrogate(unit) && IsSurrogate(folded_[i]))
        return folding_(text.substr(0, folded_.size())) == folded_;
      if (Folded(unit) != folded_[i]) return false;
    }
    return true;
  }

 private:
  static bool IsSurrogate(char16_t unit) { return (unit & 0xF800) == 0xD800; }
  char16_t Folded(char16_t unit) const {
    return unit < ascii_.size() ? ascii_[unit] : folding_(unit);
  }

  const CaseFolding& folding_;
  const String folded_;
  std::array<char16_t, 128> ascii_{};
};

}  // namespace

RowList::RowList(Form& parent, String name)
    : FontClassControl(parent, std::move(name), Kind::RowList) {
  BackColor = kWindowBackground;
  ForeColor = kWindowText;
  TabStop = true;
}

void RowList::Adopt(int row) {
  if (std::exchange(selected_, row) != row) SelectionChanged();
}

void RowList::SelectRow(int row) {
  if (row < kNoRow || row >= RowCount()) throw RuntimeError(381, u"Invalid row");
  if (row == selected_) return;
  selected_ = row;
  Changed(Aspect::Selection);
  SelectionChanged();
}

void RowList::EnsureVisible(int row) {
  if (row < 0 || row >= RowCount()) throw RuntimeError(381, u"Invalid row");
  in_view_ = row;
  Changed(Aspect::RowInView);
}

int RowList::FindRow(StringView beginning, int start) const {
  const int found = FindBeginning(beginning, start);
  if (found != kNoRow || beginning.size() < 2) return found;
  // One letter typed again and again walks from row to row.
  const bool one_letter = std::all_of(beginning.begin(), beginning.end(),
                                      [&](char16_t c) { return c == beginning.front(); });
  return one_letter ? FindBeginning(beginning.substr(0, 1), start + 1) : kNoRow;
}

int RowList::FindBeginning(StringView beginning, int start) const {
  const Beginning wanted(Parent().ThePlatform().Folding(), beginning);
  const int count = RowCount();
  const int column = MainColumn();
  for (int i = 0, row = std::max(start, 0); i < count; ++i, ++row) {
    if (row >= count) row %= count;
    if (wanted.IsOf(Cell(row, column))) return row;
  }
  return kNoRow;
}

Twips RowList::TitleWidth(int column) const {
  const String& title = Columns()[static_cast<std::size_t>(column)].Title;
  return Parent().ThePlatform().MeasureText(Font(), title).Width + kTitlePadding;
}

Twips RowList::ContentWidth(int column) const {
  const auto rows = static_cast<std::size_t>(RowCount());
  const auto text = [&](std::size_t row) { return Cell(static_cast<int>(row), column); };
  return Parent().ThePlatform().WidestText(Font(), rows, text) + kCellPadding;
}

void RowList::SetColumnWidth(int column, Twips width) {
  std::vector<Column> columns = Columns();
  columns.at(static_cast<std::size_t>(column)).Width = width;
  Columns = std::move(columns);
}

void RowList::ResumeDrawing() {
  if (--suspended_ > 0) return;
  if (changed_.contains(Aspect::Items)) changed_.erase(Aspect::MoreItems);
  for (const Aspect aspect : kOfRows) {
    if (changed_.erase(aspect) > 0) Changed(aspect);
  }
}

void RowList::Changed(Aspect aspect) {
  const bool of_rows = std::find(kOfRows.begin(), kOfRows.end(), aspect) != kOfRows.end();
  if (of_rows && suspended_ > 0) {
    changed_.insert(aspect);
  } else {
    FontClassControl::Changed(aspect);
  }
}

void RowList::OperatorSelected(int row) {
  if (row < RowCount()) Adopt(std::max(row, kNoRow));
}

void RowList::OperatorClicked(int row) {
  OperatorSelected(row);
  if (row >= 0 && row < RowCount()) RowClick(row);
}

void RowList::OperatorDoubleClicked(int row) {
  if (row >= 0 && row < RowCount() && Parent().TakesAnswers()) RowDoubleClick(row);
}

void RowList::RowsChanged() {
  Changed(Aspect::Items);
}

void RowList::RowsAdded() {
  Changed(Aspect::MoreItems);
}

void RowList::RowsReplaced() {
  const bool lost = std::exchange(selected_, kNoRow) != kNoRow;
  in_view_ = kNoRow;
  ++replacements_;
  RowsChanged();
  if (lost) SelectionChanged();
}

StringView StoredRows::Cell(int row, int column) const {
  const std::vector<String>& cells = rows_[static_cast<std::size_t>(row)];
  const auto at = static_cast<std::size_t>(column);
  return at < cells.size() ? StringView(cells[at]) : StringView();
}

void StoredRows::AddRow(std::vector<String> cells) {
  rows_.push_back(std::move(cells));
  RowsAdded();
}

void StoredRows::AddRows(std::vector<std::vector<String>> rows) {
  std::move(rows.begin(), rows.end(), std::back_inserter(rows_));
  RowsAdded();
}

void StoredRows::SetCell(int row, int column, String text) {
  if (row < 0 || row >= RowCount()) throw RuntimeError(381, u"Invalid row");
  std::vector<String>& cells = rows_[static_cast<std::size_t>(row)];
  const auto at = static_cast<std::size_t>(column);
  if (at >= cells.size()) cells.resize(at + 1);
  cells[at] = std::move(text);
  RowsChanged();
}

void StoredRows::SetRows(std::vector<std::vector<String>> rows) {
  rows_ = std::move(rows);
  RowsReplaced();
}

KRXGrid::KRXGrid(Form& parent, String name) : StoredRows(parent, std::move(name)) {
  RowMinHeight = kLowestRow;
  DragScrolls = true;
}

}  // namespace krx::ui
