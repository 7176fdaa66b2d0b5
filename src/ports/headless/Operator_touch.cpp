// A finger on a list.

#include <algorithm>

#include "ports/headless/Operator.h"

namespace krx::headless {

namespace {

constexpr Twips kRowPadding = 60;

Twips RowHeight(const ui::RowList& list) {
  const Size text = list.Parent().ThePlatform().MeasureText(list.Font(), StringView());
  return std::max(list.RowMinHeight(), text.Height + kRowPadding);
}

ui::DragScroll::List Dragged(const ui::RowList& list) {
  const Twips row = RowHeight(list);
  return {row, list.RowCount(), static_cast<int>(list.Height() / row)};
}

int RowUnder(const ui::RowList& list, double rows) {
  const int row = list.TopRow() + static_cast<int>(rows);
  return row < list.RowCount() ? row : ui::RowList::kNoRow;
}

}  // namespace

ui::RowList& Operator::Touched(StringView list) {
  return dynamic_cast<ui::RowList&>(Reachable(list));
}

void Operator::TouchDown(StringView name, double rows) {
  ui::RowList& list = Touched(name);
  Finger& finger = fingers_[&list];
  const double now = platform_.Ticks();
  const int under = RowUnder(list, rows);
  finger.Down = PressOn(list);
  if (!finger.Down) return;
  finger.Row = under;
  finger.Twice = finger.Touches.IsSecond(under, now);
  finger.Began = now;
  const auto y = static_cast<Twips>(rows) * RowHeight(list);
  finger.Drag.Begin(Dragged(list), list.TopRow(), y, now);
}

void Operator::TouchMove(StringView name, double rows) {
  ui::RowList& list = Touched(name);
  Finger& finger = fingers_[&list];
  if (!finger.Down) return;
  list.TopRow = finger.Drag.Move(static_cast<Twips>(rows) * RowHeight(list), platform_.Ticks());
}

void Operator::TouchUp(StringView name, double rows) {
  ui::RowList& list = Touched(name);
  Finger& finger = fingers_[&list];
  if (!std::exchange(finger.Down, false)) return;
  const int row = finger.Row;
  const bool short_touch = finger.Drag.End(platform_.Ticks());
  const bool click = short_touch && row >= 0 && RowUnder(list, rows) == row;
  const int rows_of_click = finger.Twice ? finger.Rows : list.Replacements();
  finger.Rows = list.Replacements();
  finger.Touches.Forget();
  if (click && !finger.Twice) finger.Touches.Clicked(row, finger.Began);
  if (click && !finger.Twice) list.OperatorSelected(row);
  list.MouseUp(ui::kLeftButton, 0, 0, 0);
  const bool there = form_.Visible() && list.Replacements() == rows_of_click;
  if (!click || !there || list.SelectedRow() != row) return;
  finger.Twice ? list.OperatorDoubleClicked(row) : list.OperatorClicked(row);
}

void Operator::TouchCancelled(StringView name) {
  Finger& finger = fingers_[&Touched(name)];
  finger.Down = false;
  finger.Drag.Stop();
}

void Operator::Wait(std::chrono::milliseconds time) {
  platform_.Advance(time);
  for (auto& [list, finger] : fingers_) {
    if (finger.Drag.Gliding()) list->TopRow = finger.Drag.Glide(platform_.Ticks());
  }
}

}  // namespace krx::headless
