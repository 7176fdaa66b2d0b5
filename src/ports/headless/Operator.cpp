#include <algorithm>
#include <stdexcept>

#include "ports/headless/HeadlessPlatform.h"
#include "ui/Keyboard.h"

namespace krx::headless {

ui::Control& Operator::Find(StringView name) {
  auto* const control = dynamic_cast<ui::Control*>(form_.Find(name));
  if (!control) throw std::logic_error("no control " + ToUtf8(name));
  return *control;
}

void Operator::NeedOpenForm() const {
  if (!form_.Visible()) throw std::logic_error("form is closed: " + ToUtf8(form_.Name()));
}

ui::Control& Operator::Reachable(StringView name) {
  ui::Control& control = Find(name);
  NeedOpenForm();
  if (!control.Visible()) throw std::logic_error("hidden: " + ToUtf8(name));
  if (!control.Enabled()) throw std::logic_error("disabled: " + ToUtf8(name));
  return control;
}

void Operator::Click(StringView key) {
  auto& button = dynamic_cast<ui::KRXKey&>(Reachable(key));
  if (button.TabStop()) button.SetFocus();
  button.Click();
}

void Operator::Type(StringView text) {
  NeedOpenForm();
  ui::Control* const focused = form_.ActiveControl();
  if (focused && focused->Kind() == ui::Kind::RowList)
    return LookUp(static_cast<ui::RowList&>(*focused), text);
  for (const char16_t character : text) {
    NeedOpenForm();
    auto* const box = dynamic_cast<ui::EditBox*>(form_.ActiveControl());
    if (!box) throw std::logic_error("nothing takes text");
    TypeCharacter(*box, character);
  }
}

void Operator::TypeCharacter(ui::EditBox& box, char16_t character) {
  box.KeyPress(character);
  if (character < u' ' || box.Locked()) return;
  const int start = box.SelStart();
  const auto length = static_cast<std::size_t>(box.SelLength());
  box.SelStart = start + 1;
  box.SelLength = 0;
  box.Edited(static_cast<std::size_t>(start), length, StringView(&character, 1));
}

// The release goes to whichever control has the focus by then.
void Operator::Press(int key, int shift) {
  NeedOpenForm();
  if (!ui::DispatchKey(form_, key, shift)) PressFocused(key, shift);
  if (ui::Control* const focused = UsableFocus()) focused->KeyUp(key, shift);
}

ui::Control* Operator::UsableFocus() const {
  ui::Control* const focused = form_.Visible() ? form_.ActiveControl() : nullptr;
  return focused && focused->Enabled() && focused->Visible() ? focused : nullptr;
}

void Operator::PressFocused(int key, int shift) {
  ui::Control* const focused = UsableFocus();
  if (!focused) return;
  focused->KeyDown(key, shift);
  const bool pressed = key == ui::kKeySpace && focused->Kind() == ui::Kind::Key;
  if (pressed) {
    static_cast<ui::KRXKey*>(focused)->Click();
  } else if (key == ui::kKeyEnter) {
    char16_t character = ui::kKeyEnter;
    focused->KeyPress(character);
  } else if (focused->Kind() == ui::Kind::RowList) {
    MoveSelection(static_cast<ui::RowList&>(*focused), key);
  }
}

void Operator::MoveSelection(ui::RowList& list, int key) {
  const int last = list.RowCount() - 1;
  const int row = list.SelectedRow();
  if (last < 0) return;
  // Without a selected row the walk begins at the top of what is shown.
  const bool begins = row == ui::RowList::kNoRow;
  switch (key) {
    case ui::kKeyUp:
      return list.OperatorSelected(std::clamp(begins ? list.TopRow() : row - 1, 0, last));
    case ui::kKeyDown:
      return list.OperatorSelected(std::clamp(begins ? list.TopRow() : row + 1, 0, last));
    case ui::kKeyHome:
      return list.OperatorSelected(0);
    case ui::kKeyEnd:
      return list.OperatorSelected(last);
    default:
      return;
  }
}

// The first letter looks behind the selected row, every further one at it.
void Operator::LookUp(ui::RowList& list, StringView beginning) const {
  for (std::size_t length = 1; length <= beginning.size(); ++length) {
    NeedOpenForm();
    char16_t character = beginning[length - 1];
    list.KeyPress(character);
    if (character == 0) continue;
    const int start = list.SelectedRow() + (length == 1 ? 1 : 0);
    const int row = list.FindRow(beginning.substr(0, length), start);
    if (row != ui::RowList::kNoRow) list.OperatorSelected(row);
  }
}

ui::RowList* Operator::PressRow(StringView list, int row) {
  auto& rows = dynamic_cast<ui::RowList&>(Reachable(list));
  if (row < 0 || row >= rows.RowCount()) throw std::logic_error("no such row in " + ToUtf8(list));
  rows.MouseDown(ui::kLeftButton, 0, 0, 0);
  if (!form_.Visible()) return nullptr;
  rows.SetFocus();
  rows.OperatorSelected(row);
  rows.MouseUp(ui::kLeftButton, 0, 0, 0);
  return form_.Visible() && rows.SelectedRow() == row ? &rows : nullptr;
}

void Operator::ClickRow(StringView list, int row) {
  if (ui::RowList* const rows = PressRow(list, row)) rows->OperatorClicked(row);
}

void Operator::DoubleClickRow(StringView list, int row) {
  ClickRow(list, row);
  // The first click may have changed the rows or closed the form; then the second one hits nothing.
  if (!form_.Visible() || row >= Get<ui::RowList>(list).RowCount()) return;
  if (ui::RowList* const rows = PressRow(list, row)) rows->OperatorDoubleClicked(row);
}

void Operator::AccessKey(char16_t character, bool alt) {
  NeedOpenForm();
  ui::DispatchAccessKey(form_, character, alt);
}

void Operator::MouseDown(StringView control, int button, Twips x, Twips y) {
  Reachable(control).MouseDown(button, 0, x, y);
}

void Operator::MouseMove(StringView control, int button, Twips x, Twips y) {
  Reachable(control).MouseMove(button, 0, x, y);
}

void Operator::Uncover() {
  NeedOpenForm();
  form_.Paint();
}

String Operator::Focus() const {
  const ui::Control* const focused = form_.ActiveControl();
  return focused ? focused->Name() : String();
}

}  // namespace krx::headless
