#pragma once

#include <optional>

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
  // Room for a text whose lines are not wrapped: what goes beyond is left out, for an ellipsis.
  // Without a room lines are wrapped.
  Property<Size> Room{*this, Aspect::Text};

  // The text as shown: encoded breaks as line feeds, and lines that would grow wider than 60 % of
  // the work area broken at blanks, or inside a word that is too long by itself.
  String DisplayedText() const override;
  // The text with nothing left out, its encoded breaks as line feeds.
  String WholeText() const;

  // Whether a text that is higher than the control is scrolled; its lines in sight begin with
  // TopLine.
  Property<bool> Scrolls{*this, Aspect::Scroll, false};
  Property<int> TopLine{*this, Aspect::Scroll};
  Twips LineHeight() const;
  int LineCount() const;
  int LinesInSight() const;
  // Scrolls to a line, or as far as there are lines.
  void ScrollTo(int line);
  // Whether the key scrolls; arrows do where `arrows` says so.
  bool ScrollByKey(int key, bool arrows);

  bool LiesBelow() const override { return true; }

 protected:
  void Changed(Aspect aspect) override;

 private:
  // What was shown last, and what it depends on besides the control's own properties.
  struct Shown {
    Twips Widest;
    Twips Pixel;
    String Lines;
    int Count;
  };
  const Shown& Show() const;

  mutable std::optional<Shown> shown_;
};

// The text of a form that the operator can scroll; null without one.
KRXIndex* ScrollingText(const Form& form);

// Breaks every line of `text` so that `fits` accepts each piece; at least one character stays on
// a line, surrogate pairs stay whole. Asks `fits` for about as much as a line holds, so the cost
// grows with the text.
String WrapLines(StringView text, const std::function<bool(StringView)>& fits);

// Ends every line that `fits` does not accept with an ellipsis.
String CutLines(StringView text, const std::function<bool(StringView)>& fits);

}  // namespace krx::ui
