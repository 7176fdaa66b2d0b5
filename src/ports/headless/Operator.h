#pragma once

#include "ports/headless/HeadlessPlatform.h"
#include "ui/BoardKey.h"
#include "ui/Controls.h"
#include "ui/DoubleTouch.h"
#include "ui/DragScroll.h"
#include "ui/RowList.h"

namespace krx::headless {

// What an operator can do with the form on the screen. Every act on a control fails with a
// complaint (std::logic_error) when a real operator could not do it: the control does not exist, is
// hidden or is disabled.
class Operator {
 public:
  Operator(HeadlessPlatform& platform, ui::Form& form) : platform_(platform), form_(form) {}

  ui::Form& Form() { return form_; }
  template <class T = ui::Control>
  T& Get(StringView name) {
    return dynamic_cast<T&>(Find(name));
  }

  void Click(StringView key);
  // The two halves of a click; both have to come on the same button of the same form.
  void Hold(StringView key);
  void LetGo(StringView key);
  // Into the focused control, character by character; a list looks rows up by what is typed.
  void Type(StringView text);
  void Press(int key, int shift = 0);  // a list that has the focus follows the arrow keys
  // The two halves of Press, which need not both come, nor reach the same control.
  void KeyDown(int key, int shift = 0);
  void KeyUp(int key, int shift = 0);
  void ClickRow(StringView list, int row);
  void DoubleClickRow(StringView list, int row);
  // Presses the left button on a row of a list that is not dragged; released anywhere else that is
  // no click.
  void PressRow(StringView list, int row);
  void ReleaseElsewhere(StringView list);
  void AccessKey(char16_t character, bool alt = true);
  void MouseDown(StringView control, int button, Twips x, Twips y);
  void MouseMove(StringView control, int button, Twips x, Twips y);
  void MouseUp(StringView control, int button, Twips x, Twips y);
  // Touches a control with a finger; a button is clicked by it.
  void Touch(StringView control);
  // On the keyboard that stands beside the form: presses the key that bears this caption, and holds
  // it for so long. Fails when there is no such key in sight.
  void Tap(StringView caption, std::chrono::milliseconds time = {});
  ui::BoardKey* BoardKey(StringView caption);  // null when it is not in sight
  // A finger on a list, at heights in rows from the first one in sight.
  void TouchDown(StringView list, double rows);
  void TouchMove(StringView list, double rows);
  void TouchUp(StringView list, double rows);
  void TouchCancelled(StringView list);
  // What glides goes on meanwhile.
  void Wait(std::chrono::milliseconds time);
  // Another window covered the form and went away.
  void Uncover();
  String Focus() const;  // name of the focused control, empty without one

 private:
  ui::Control& Find(StringView name);
  ui::Control& Reachable(StringView name);
  void NeedOpenForm() const;
  // The operator is done with an act, and the form's companion follows.
  void Rest();
  // The control that hears of keys; null when nothing does.
  ui::Control* UsableFocus() const;
  void PressFocused(int key, int shift);
  ui::RowList& RowsWith(StringView list, int row);
  // False when that closes the form or puts other rows in place.
  bool PressOn(ui::RowList& list);
  // False when that closes the form, puts other rows in place or selects another one.
  bool Release(ui::RowList& list, int row);
  static void MoveSelection(ui::RowList& list, int key);
  static void EditByKey(ui::EditBox& box, int key);
  void LookUp(ui::RowList& list, StringView beginning);
  // Tells the focused control of a key and its character; false when a handler takes it.
  bool HearsOf(char16_t& character);
  void TypeCharacter(char16_t character);

  struct Finger {
    ui::DragScroll Drag;
    ui::DoubleTouch Touches;
    bool Down = false;
    int Row = ui::RowList::kNoRow;
    bool Twice = false;
    double Began = 0;
    int Rows = 0;  // RowList::Replacements of the touch before
  };
  ui::RowList& Touched(StringView list);

  HeadlessPlatform& platform_;
  ui::Form& form_;
  std::map<ui::RowList*, Finger> fingers_;
  const ui::Control* held_ = nullptr;        // the button that the mouse holds down
  const ui::Control* space_down_ = nullptr;  // the button that Space holds down
};

}  // namespace krx::headless
