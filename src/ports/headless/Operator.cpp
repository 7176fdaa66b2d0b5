#include "ports/headless/Operator.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

#include "ui/Keyboard.h"

namespace krx::headless {

namespace {

// The key of a character; 0 for those that no key of every keyboard has.
int KeyOf(char16_t character) {
  const char16_t key = AsciiUpper(character);
  const bool plain = key == u' ' || (key >= u'0' && key <= u'9') || (key >= u'A' && key <= u'Z');
  return plain ? key : 0;
}

}  // namespace

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
  button.Press();
  Rest();
}

void Operator::Hold(StringView key) {
  auto& button = dynamic_cast<ui::KRXKey&>(Reachable(key));
  if (button.TabStop()) button.SetFocus();
  held_ = &button;
  button.MouseDown(ui::kLeftButton, 0, 0, 0);
  Rest();
}

void Operator::LetGo(StringView key) {
  auto& button = dynamic_cast<ui::KRXKey&>(Reachable(key));
  button.MouseUp(ui::kLeftButton, 0, 0, 0);
  if (std::exchange(held_, nullptr) == &button) button.Press();
  Rest();
}

void Operator::Rest() {
  if (form_.Visible() && form_.Beside) form_.Beside->Settle();
}

void Operator::Touch(StringView name) {
  ui::Control& control = Reachable(name);
  if (form_.Beside) form_.Beside->Pressed(control, true);
  if (control.Kind() == ui::Kind::Key) return Click(name);
  control.SetFocus();
  Rest();
}

ui::BoardKey* Operator::BoardKey(StringView caption) {
  const ui::Form* const board = platform_.Attached;
  if (!board || !board->Visible() || board->Attached != &form_) return nullptr;
  for (ui::Control* const control : board->TabOrder()) {
    if (control->Visible() && control->DisplayedText() == caption)
      return static_cast<ui::BoardKey*>(control);
  }
  return nullptr;
}

void Operator::Tap(StringView caption, std::chrono::milliseconds time) {
  ui::BoardKey* const key = BoardKey(caption);
  if (!key) throw std::logic_error("no key of the keyboard says " + ToUtf8(caption));
  key->MouseDown(ui::kLeftButton, 0, 0, 0);
  Wait(time);
  key->MouseUp(ui::kLeftButton, 0, 0, 0);
  Rest();
}

void Operator::Type(StringView text) {
  NeedOpenForm();
  ui::Control* const focused = form_.ActiveControl();
  if (focused && focused->Kind() == ui::Kind::RowList) {
    LookUp(static_cast<ui::RowList&>(*focused), text);
  } else {
    for (const char16_t character : text)
      TypeCharacter(character);
  }
  Rest();
}

// Handlers hear of the key going down, of its character, and of its release.
bool Operator::HearsOf(char16_t& character) {
  NeedOpenForm();
  ui::Control& focused = *form_.ActiveControl();
  int key = KeyOf(character);
  const bool known = key != 0;
  if (known) focused.KeyDown(key, 0);
  if ((known && key == 0) || !form_.Visible()) return false;
  focused.KeyPress(character);
  return character != 0 && form_.Visible();
}

void Operator::TypeCharacter(char16_t character) {
  NeedOpenForm();
  auto* const box = dynamic_cast<ui::EditBox*>(form_.ActiveControl());
  if (!box) throw std::logic_error("nothing takes text");
  const int key = KeyOf(character);
  if (HearsOf(character) && character >= u' ' && !box->Locked()) {
    const int start = box->SelStart();
    const auto length = static_cast<std::size_t>(box->SelLength());
    box->SelStart = start + 1;
    box->SelLength = 0;
    box->Edited(static_cast<std::size_t>(start), length, StringView(&character, 1));
  }
  if (key != 0) KeyUp(key);
}

void Operator::Press(int key, int shift) {
  KeyDown(key, shift);
  KeyUp(key, shift);
}

void Operator::KeyDown(int key, int shift) {
  NeedOpenForm();
  if (!ui::DispatchKey(form_, key, shift)) PressFocused(key, shift);
  Rest();
}

// The release goes to whichever control has the focus by then.
void Operator::KeyUp(int key, int shift) {
  ui::Control* const focused = UsableFocus();
  const bool pressed = key == ui::kKeySpace && std::exchange(space_down_, nullptr) == focused;
  if (!focused) return;
  focused->KeyUp(key, shift);
  if (pressed && UsableFocus() == focused) static_cast<ui::KRXKey*>(focused)->Press();
}

ui::Control* Operator::UsableFocus() const {
  ui::Control* const focused = form_.Visible() ? form_.ActiveControl() : nullptr;
  return focused && focused->Enabled() && focused->Visible() ? focused : nullptr;
}

void Operator::PressFocused(int key, int shift) {
  ui::Control* const focused = UsableFocus();
  if (!focused) return;
  key = ui::KeyInDirection(*focused, key);
  focused->KeyDown(key, shift);
  if (key == ui::kKeySpace && focused->Kind() == ui::Kind::Key) {
    char16_t character = u' ';
    focused->KeyPress(character);
    space_down_ = focused;
  } else if (key == ui::kKeyEnter) {
    char16_t character = ui::kKeyEnter;
    focused->KeyPress(character);
  } else if (focused->Kind() == ui::Kind::RowList) {
    MoveSelection(static_cast<ui::RowList&>(*focused), key);
  } else if (auto* const box = dynamic_cast<ui::EditBox*>(focused)) {
    EditByKey(*box, key);
  }
}

void Operator::EditByKey(ui::EditBox& box, int key) {
  const int start = box.SelStart();
  const int length = box.SelLength();
  const int step = key == ui::kKeyLeft || key == ui::kKeyBack ? -1 : 1;
  const int end = static_cast<int>(box.TextLength());
  if (key == ui::kKeyLeft || key == ui::kKeyRight) {
    box.SelLength = 0;
    box.SelStart = std::clamp(start + step, 0, end);
  } else if ((key == ui::kKeyBack || key == ui::kKeyDelete) && !box.Locked()) {
    const int from = length > 0 || step > 0 ? start : std::max(start - 1, 0);
    const int to = length > 0 ? start + length : step > 0 ? std::min(start + 1, end) : start;
    box.SelStart = from;
    box.SelLength = 0;
    if (to > from)
      box.Edited(static_cast<std::size_t>(from), static_cast<std::size_t>(to - from), u"");
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
void Operator::LookUp(ui::RowList& list, StringView beginning) {
  for (std::size_t length = 1; length <= beginning.size(); ++length) {
    char16_t character = beginning[length - 1];
    const int key = KeyOf(character);
    if (HearsOf(character)) {
      const int start = list.SelectedRow() + (length == 1 ? 1 : 0);
      const int row = list.FindRow(beginning.substr(0, length), start);
      if (row != ui::RowList::kNoRow) list.OperatorSelected(row);
    }
    if (key != 0) KeyUp(key);
  }
}

ui::RowList& Operator::RowsWith(StringView list, int row) {
  auto& rows = dynamic_cast<ui::RowList&>(Reachable(list));
  if (row < 0 || row >= rows.RowCount()) throw std::logic_error("no such row in " + ToUtf8(list));
  return rows;
}

bool Operator::PressOn(ui::RowList& list) {
  const int rows = list.Replacements();
  list.MouseDown(ui::kLeftButton, 0, 0, 0);
  if (form_.Visible()) list.SetFocus();
  return form_.Visible() && list.Replacements() == rows;
}

bool Operator::Release(ui::RowList& list, int row) {
  const int rows = list.Replacements();
  list.MouseUp(ui::kLeftButton, 0, 0, 0);
  return form_.Visible() && list.Replacements() == rows && list.SelectedRow() == row;
}

void Operator::PressRow(StringView list, int row) {
  ui::RowList& rows = RowsWith(list, row);
  if (PressOn(rows)) rows.OperatorSelected(row);
}

void Operator::ReleaseElsewhere(StringView list) {
  auto& rows = dynamic_cast<ui::RowList&>(Reachable(list));
  rows.MouseUp(ui::kLeftButton, 0, 0, 0);
  if (form_.Visible()) rows.OperatorLeftRow();
}

void Operator::ClickRow(StringView list, int row) {
  ui::RowList& rows = RowsWith(list, row);
  if (!PressOn(rows)) return;
  rows.OperatorSelected(row);
  if (Release(rows, row)) rows.OperatorClicked(row);
}

// The second press belongs to the row of the first, whatever lies under it by then.
void Operator::DoubleClickRow(StringView list, int row) {
  const int rows = RowsWith(list, row).Replacements();
  ClickRow(list, row);
  if (!form_.Visible()) return;
  auto& again = Get<ui::RowList>(list);
  const bool clicked = PressOn(again) && Release(again, row);
  if (clicked && again.Replacements() == rows) again.OperatorDoubleClicked(row);
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

void Operator::MouseUp(StringView control, int button, Twips x, Twips y) {
  Reachable(control).MouseUp(button, 0, x, y);
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
