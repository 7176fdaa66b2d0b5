#pragma once

#include "ui/Control.h"

namespace krx::ui {

// The text-index control: shows a text in which the two characters backslash and "n" break the
// line, and wraps lines before they outgrow the screen.
class KRXIndex : public FontClassControl {
 public:
  KRXIndex(Form& parent, String name);

  Property<String> Text{*this, Aspect::Text};
  // Distance of the text from the control's left edge, in twips.
  Property<Twips> Indent{*this, Aspect::Text, 15};

  // The text as shown: encoded breaks as line feeds, and lines that would grow wider than 60 % of
  // the work area broken at blanks, or inside a word that is too long by itself.
  String DisplayedText() const override;
};

// Breaks every line of `text` so that `fits` accepts each piece; at least one character stays on
// a line, surrogate pairs stay whole.
String WrapLines(StringView text, const std::function<bool(StringView)>& fits);

}  // namespace krx::ui
