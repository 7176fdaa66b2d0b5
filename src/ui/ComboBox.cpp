#include "ui/ComboBox.h"

#include <utility>

#include "base/Error.h"
#include "ui/Form.h"
#include "ui/Keyboard.h"
#include "ui/Platform.h"

namespace krx::ui {

ComboBox::ComboBox(Form& parent, String name)
    : FontClassControl(parent, std::move(name), Kind::ComboBox) {
  BackColor = kWindowBackground;
  ForeColor = kWindowText;
  TabStop = true;
}

void ComboBox::AddItem(String text, int position) {
  const int count = static_cast<int>(items_.size());
  const int at = position < 0 || position > count ? count : position;
  items_.insert(items_.begin() + at, std::move(text));
  if (at <= selected_) ++selected_;
  Control::Changed(Aspect::Items);
}

void ComboBox::SetItem(int index, String text) {
  items_.at(static_cast<std::size_t>(index)) = std::move(text);
  if (index == selected_) Text.Adopt(items_[static_cast<std::size_t>(index)]);
  Control::Changed(Aspect::Items);
}

void ComboBox::Clear() {
  items_.clear();
  selected_ = -1;
  Control::Changed(Aspect::Items);
}

void ComboBox::Select(int index) {
  if (index < 0 || index >= static_cast<int>(items_.size())) {
    throw RuntimeError(381, u"Invalid list index");
  }
  selected_ = index;
  Text = items_[static_cast<std::size_t>(index)];
  Control::Changed(Aspect::Selection);
  SelectionChanged();
}

bool ComboBox::UsesKey(int key) const {
  return DroppedDown && (key == kKeyEnter || key == kKeyEscape);
}

void ComboBox::Changed(Aspect aspect) {
  if (aspect == Aspect::Bounds || aspect == Aspect::Font) {
    const Twips smallest = Parent().ThePlatform().TextBoxHeight(Font());
    if (Height() < smallest) Height.Adopt(smallest);
  }
  if (aspect == Aspect::Text && selected_ >= 0) {
    // A text of its own deselects the entry.
    if (items_[static_cast<std::size_t>(selected_)] != Text()) selected_ = -1;
  }
  Control::Changed(aspect);
  if (aspect == Aspect::Text) Change();
}

}  // namespace krx::ui
