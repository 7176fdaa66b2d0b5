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

Frame::Frame(Form& parent, String name) : Control(parent, std::move(name), Kind::Frame) {}

PictureBox::PictureBox(Form& parent, String name)
    : Control(parent, std::move(name), Kind::PictureBox) {}

}  // namespace krx::ui
