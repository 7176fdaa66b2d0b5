#pragma once

#include <functional>
#include <memory>
#include <optional>

#include "panel/FKeyboard.h"
#include "ui/Companion.h"

namespace krx::panel {

// Decides when the keyboard is there and where: it comes with the text fields of its form, as the
// plant has chosen, moves the form where it would cover what the operator needs, and moves it back.
// Before it is wanted for the first time nothing of it exists.
class ScreenKeyboard final : public ui::Companion {
 public:
  // What the keyboard needs of the runtime, asked when it is shown for the first time. Each may
  // fail: then the keyboard is an English one, and in the default font.
  struct Source {
    std::function<String()> LayoutName;
    std::function<krx::Font()> KeyFont;
  };
  ScreenKeyboard(ui::Form& dialog, Source source);

  void Pressed(const ui::Control& control, bool by_finger) override;
  bool Settle() override;
  void Leave() override;
  void Drop() override;

 private:
  // The text field that the operator is in; none where he cannot type.
  const ui::Control* Field() const;
  bool Wanted(const ui::Control& field) const;
  void Show(const ui::Control& field);
  void Make();
  Situation Look() const;
  void MoveForm(const Situation& situation, const ui::Control& field);
  void MoveBack();

  ui::Form& dialog_;
  const Source source_;
  std::unique_ptr<FKeyboard> board_;
  Shape shape_;
  Rect area_;                                 // for which the keyboard was made
  bool by_finger_ = false;                    // the last text field was entered so
  const ui::Control* put_away_in_ = nullptr;  // the field in which the operator hid it
  // The form's upper edge without and with a keyboard, while it is moved.
  struct Moved {
    Twips Home;
    Twips Now;
  };
  std::optional<Moved> moved_;
};

// The pages of a keyboard in a language: the plant's layout of this name or the dialogs' own, else
// the English one; then digits and symbols, then letters with accents. What is wrong with a layout
// is told on its space bar, where whoever has made it sees it and an operator can go on typing.
std::vector<KeyboardLayout> PagesFor(ui::Platform& platform, StringView name);

}  // namespace krx::panel
