#pragma once

#include "ui/Control.h"

namespace krx::ui {

// The cross of a close button: a square drawn in one of the sizes 8, 16 ... 64 pixels; 0 is none.
struct CrossPicture {
  int Pixels = 0;
  bool operator==(const CrossPicture&) const = default;
};

// The push button of the runtime's controls.
class KRXKey : public FontClassControl {
 public:
  KRXKey(Form& parent, String name);

  Property<String> Caption{*this, Aspect::Text};
  Property<CrossPicture> Picture{*this, Aspect::Picture};

  Event<> Click;
  // The operator's press, by whatever means: a click, once his form takes answers.
  void Press();

  String DisplayedText() const override { return NormalizeLineBreaks(WithoutAccessKey(Caption())); }
  char16_t AccessKey() const override { return AccessKeyOf(Caption()); }

 protected:
  KRXKey(Form& parent, String name, ui::Kind kind);
};

}  // namespace krx::ui
