#include "ui/StandardControls.h"

#include <utility>

#include "ui/Form.h"
#include "ui/Platform.h"

namespace krx::ui {

Label::Label(Form& parent, String name) : Control(parent, std::move(name), Kind::Label) {}

String Label::DisplayedText() const {
  return NormalizeLineBreaks(UseMnemonic ? WithoutAccessKey(Caption()) : Caption());
}

void Label::Changed(Aspect aspect) {
  if (AutoSize() && (aspect == Aspect::Text || aspect == Aspect::Font)) {
    const Size size = Parent().ThePlatform().MeasureText(Font(), DisplayedText());
    Width = size.Width;
    Height = size.Height;
  }
  Control::Changed(aspect);
}

TextBox::TextBox(Form& parent, String name) : Control(parent, std::move(name), Kind::TextBox) {
  BackColor = kWindowBackground;
  ForeColor = kWindowText;
  TabStop = true;
}

void TextBox::Changed(Aspect aspect) {
  if (aspect == Aspect::Bounds || aspect == Aspect::Font) {
    const Twips smallest = Parent().ThePlatform().TextBoxHeight(Font());
    if (Height() < smallest) Height.Adopt(smallest);
  }
  Control::Changed(aspect);
  if (aspect == Aspect::Text) Change();
}

void TextBox::Edited(String text) {
  if (Text.Adopt(std::move(text))) Change();
}

Frame::Frame(Form& parent, String name) : Control(parent, std::move(name), Kind::Frame) {}

PictureBox::PictureBox(Form& parent, String name)
    : Control(parent, std::move(name), Kind::PictureBox) {}

}  // namespace krx::ui
