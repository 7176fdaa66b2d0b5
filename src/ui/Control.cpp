#include "ui/Control.h"

#include <utility>

#include "ui/Form.h"
#include "ui/Keyboard.h"

namespace krx::ui {

Control::Control(Form& parent, String name, ui::Kind kind)
    : Component(parent, std::move(name), kind) {
  parent.AddToTabOrder(*this);
}

void Control::MoveInTabOrder(int index) {
  Parent().MoveInTabOrder(*this, index);
}

int Control::PositionInTabOrder() const {
  return Parent().PositionInTabOrder(*this);
}

void Control::SetFocus() {
  if (!Visible() || !Enabled()) return;
  if (ThePeer()) {
    ThePeer()->SetFocus();
  } else {
    Parent().FocusMovedTo(this);
  }
}

void Control::Place(const Rect& bounds) {
  if (bounds == Bounds()) return;
  Left.Adopt(bounds.Left);
  Top.Adopt(bounds.Top);
  Width.Adopt(bounds.Width);
  Height.Adopt(bounds.Height);
  Changed(Aspect::Bounds);
}

void FontClassControl::SetFontClass(StringView name) {
  Font = Parent().FontOfClass(name);
}

String WithoutAccessKey(StringView caption) {
  String shown;
  for (std::size_t i = 0; i < caption.size(); ++i) {
    if (caption[i] == u'&' && ++i == caption.size()) break;
    shown += caption[i];
  }
  return shown;
}

char16_t AccessKeyOf(StringView caption) {
  for (std::size_t i = 0; i + 1 < caption.size(); ++i) {
    if (caption[i] != u'&') continue;
    if (caption[i + 1] != u'&') return caption[i + 1];
    ++i;
  }
  return 0;
}

String NormalizeLineBreaks(StringView text) {
  return ReplaceAll(ReplaceAll(String(text), u"\r\n", u"\n"), u"\r", u"\n");
}

}  // namespace krx::ui
