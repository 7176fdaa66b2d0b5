#include "ui/EditBoxes.h"

#include <algorithm>
#include <utility>

#include "ui/Form.h"
#include "ui/Platform.h"

namespace krx::ui {

EditBox::EditBox(Form& parent, String name, ui::Kind kind)
    : Control(parent, std::move(name), kind) {
  BackColor = kWindowBackground;
  ForeColor = kWindowText;
  TabStop = true;
}

void EditBox::Changed(Aspect aspect) {
  if (aspect == Aspect::Bounds || aspect == Aspect::Font) {
    const Twips smallest = Parent().ThePlatform().TextBoxHeight(Font());
    if (Height() < smallest) Height.Adopt(smallest);
  }
  Control::Changed(aspect);
  if (aspect == Aspect::Text) Change();
}

TextBox::TextBox(Form& parent, String name) : EditBox(parent, std::move(name), Kind::TextBox) {}

void TextBox::Edited(std::size_t start, std::size_t length, StringView replacement) {
  String text = Text();
  text.replace(std::min(start, text.size()), length, replacement);
  Edited(std::move(text));
}

void TextBox::Edited(String text) {
  if (Text.Adopt(std::move(text))) Change();
}

PasswordBox::PasswordBox(Form& parent, String name)
    : EditBox(parent, std::move(name), Kind::PasswordBox) {
  LeftToRight = true;
}

void PasswordBox::Edited(std::size_t start, std::size_t length, StringView replacement) {
  Edited(Text().With(start, length, replacement));
}

void PasswordBox::Edited(Password text) {
  if (Text.Adopt(std::move(text))) Change();
}

}  // namespace krx::ui
