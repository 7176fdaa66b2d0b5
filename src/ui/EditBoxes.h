#pragma once

#include "base/Password.h"
#include "ui/Control.h"

namespace krx::ui {

// One line of input. A height below the smallest that its font allows becomes that smallest one.
class EditBox : public Control {
 public:
  Property<bool> Locked{*this, Aspect::Locked, false};
  Property<int> SelStart{*this, Aspect::Selection, 0};
  Property<int> SelLength{*this, Aspect::Selection, 0};

  // Whether what is entered is written from left to right in every language, as paths, numbers and
  // passwords are.
  bool LeftToRight = false;

  Event<> Change;

  bool TakesText() const override { return true; }
  void Changed(Aspect aspect) override;

  virtual std::size_t TextLength() const = 0;
  // The operator's own edit, as the port saw it: a part of the text was replaced.
  virtual void Edited(std::size_t start, std::size_t length, StringView replacement) = 0;

 protected:
  EditBox(Form& parent, String name, ui::Kind kind);
};

// Input in plain sight.
class TextBox : public EditBox {
 public:
  TextBox(Form& parent, String name);

  Property<String> Text{*this, Aspect::Text};

  String DisplayedText() const override { return Text(); }
  std::size_t TextLength() const override { return Text().size(); }
  void Edited(std::size_t start, std::size_t length, StringView replacement) override;
  void Edited(String text);  // the whole text after it
};

// Input of a secret: every character is shown as PasswordChar.
class PasswordBox : public EditBox {
 public:
  PasswordBox(Form& parent, String name);

  Property<Password> Text{*this, Aspect::Text};
  const char16_t PasswordChar = u'*';

  String DisplayedText() const override { return String(Text().Length(), PasswordChar); }
  std::size_t TextLength() const override { return Text().Length(); }
  void Edited(std::size_t start, std::size_t length, StringView replacement) override;
  void Edited(Password text);
};

}  // namespace krx::ui
