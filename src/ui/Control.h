#pragma once

#include <cstdint>

#include "base/Font.h"
#include "base/Geometry.h"
#include "ui/Color.h"
#include "ui/Component.h"

namespace krx::ui {

// Mouse buttons as the mouse events report them.
inline constexpr int kLeftButton = 1;
inline constexpr int kRightButton = 2;

// Height in twips of a row that a finger hits without looking: 9 millimetres, rounded up to pixels
// of every resolution.
inline constexpr Twips kFingerRow = 525;

// A visible part of a form: placement in twips relative to the form, colours, font, focus and the
// events of mouse and keyboard.
class Control : public Component {
  void MoveInTabOrder(int index);
  int PositionInTabOrder() const;

 public:
  Property<Twips> Left{*this, Aspect::Bounds};
  Property<Twips> Top{*this, Aspect::Bounds};
  Property<Twips> Width{*this, Aspect::Bounds};
  Property<Twips> Height{*this, Aspect::Bounds};
  Property<bool> Visible{*this, Aspect::Visible, true};
  Property<bool> Enabled{*this, Aspect::Enabled, true};
  Property<krx::Font> Font{*this, Aspect::Font};
  Property<Color> BackColor{*this, Aspect::Colors, kButtonFace};
  Property<Color> ForeColor{*this, Aspect::Colors, kButtonText};
  Property<bool> TabStop{*this, Aspect::TabStop, false};
  // Position in the form's tab order; setting it moves the control there and the controls behind it
  // up, so two controls never share a position.
  Accessor<Control, &Control::MoveInTabOrder, &Control::PositionInTabOrder> TabIndex{*this};
  String Tag;

  Event<> GotFocus;
  Event<> LostFocus;
  // Key code and shift state (1 Shift, 2 Control, 4 Alt); a handler consumes the key by setting it
  // to 0. What the dialog does with a key itself (Tab, Esc) never goes down here: a walk through a
  // control is no action on it.
  Event<int&, int> KeyDown;
  Event<int&, int> KeyUp;
  Event<char16_t&> KeyPress;
  // Button (MouseMove: the buttons held), shift state, position in twips relative to the control.
  Event<int, int, Twips, Twips> MouseDown;
  Event<int, int, Twips, Twips> MouseMove;
  Event<int, int, Twips, Twips> MouseUp;

  // The text as the operator sees it: no access-key marks, line breaks as line feeds.
  virtual String DisplayedText() const { return {}; }
  // The character that reaches the control together with Alt, in either case; 0 without one.
  virtual char16_t AccessKey() const { return 0; }
  // Whether typed characters are the control's own input, so that they are no access keys.
  virtual bool TakesText() const { return false; }

  // Whether other controls may lie on top of this one, like the fields in a frame.
  virtual bool LiesBelow() const { return false; }

  // Whether the control itself uses a key that otherwise belongs to the form.
  virtual bool UsesKey(int /*key*/) const { return false; }

  bool CanFocus() const { return Visible() && Enabled() && TabStop(); }
  // Moves the focus here; does nothing when the control is hidden or disabled.
  void SetFocus();

  Rect Bounds() const { return {Left(), Top(), Width(), Height()}; }
  void Place(const Rect& bounds);

 protected:
  Control(Form& parent, String name, ui::Kind kind);
  bool WantsPeer() const override { return Visible(); }
};

// A control whose look is set by a font class of the runtime, not by a font. The form resolves the
// class, so a failing font service reaches whoever sets it.
class FontClassControl : public Control {
  void SetFontClass(StringView name);

 public:
  Accessor<FontClassControl, &FontClassControl::SetFontClass> FontClass{*this};

 protected:
  using Control::Control;
};

// Captions mark their access key with "&"; "&&" shows one "&".
String WithoutAccessKey(StringView caption);
char16_t AccessKeyOf(StringView caption);

// The text with every line break (CR LF, LF, CR) as one line feed.
String NormalizeLineBreaks(StringView text);

}  // namespace krx::ui
