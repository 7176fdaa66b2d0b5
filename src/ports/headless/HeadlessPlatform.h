#pragma once

#include <chrono>
#include <deque>
#include <functional>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "ports/headless/SimulatedFiles.h"
#include "ui/Controls.h"
#include "ui/Platform.h"
#include "ui/Timer.h"

namespace krx::headless {

class Operator;
class TimerPeer;

// A port without windows, for tests: a form that is shown modally is handled by the operator's
// script. Nothing depends on the machine.
//
// Text metrics, for a font of s points: a character (code point) is 10 s twips wide, 11 s in a
// weight of 600 and above; a line is 24 s twips high; a text is as wide as its widest line. A
// one-line input box adds 90 twips to the height of a line; a scroll bar is 255 wide. So 8 points
// give 80 twips a character (88 bold) and 192 a line. A font whose name is listed in `Unmeasurable`
// fails to measure.
class HeadlessPlatform : public ui::Platform {
 public:
  using Script = std::function<void(Operator&)>;
  using Milliseconds = std::chrono::milliseconds;

  // Queues what the operator does when the next form is shown; the form must have this name.
  void Expect(String form, Script script);
  // What the operator does with a form of such a name when it comes without being expected next.
  std::map<String, Script> Always;
  // What went against the expectations: a form that nobody expected, one that stayed open when its
  // script ended, an expected one that never came.
  std::vector<std::string> Complaints() const;
  // Drops what is expected and complained of; for a call that a failure cut short.
  void Forget() {
    expected_.clear();
    complaints_.clear();
  }

  // The answer that the platform's own message box gets, and the boxes shown so far.
  struct Box {
    String Text;
    int Style = 0;
    String Title;
    bool operator==(const Box&) const = default;
  };
  int BoxAnswer = 1;
  std::vector<Box> Boxes;
  std::vector<String> SentKeys;
  std::vector<ui::Pointer> Pointers;
  int EventsProcessed = 0;
  Twips PixelSize = 15;
  Rect Area{0, 0, 15360, 11520};  // 1024 x 768 pixels of 15 twips
  std::set<String> Unmeasurable;
  SimulatedFiles Machine;

  Milliseconds Now() const { return now_; }
  // Moves the clock on; timers of shown forms tick at their exact times, in order.
  void Advance(Milliseconds time);

  char32_t FoldCase(char32_t character) override;
  Size MeasureText(const Font& font, StringView text) override;
  Twips WidestText(const Font& font, std::size_t count,
                   const std::function<StringView(std::size_t)>& text) override;
  Twips TextBoxHeight(const Font& font) override;
  Twips ScrollBarWidth() override { return 255; }
  Twips TwipsPerPixel() override { return PixelSize; }
  Rect WorkArea() override { return Area; }
  std::unique_ptr<ui::Peer> CreatePeer(ui::Form& form) override;
  std::unique_ptr<ui::Peer> CreatePeer(ui::Component& component) override;
  void RunModal(ui::Form& form) override;
  folders::FileSystem& Files() override { return Machine; }
  void ProcessEvents() override { ++EventsProcessed; }
  ui::StockIcon LoadStockIcon(int id) override { return {id}; }
  void SetPointer(ui::Pointer pointer) override { Pointers.push_back(pointer); }
  ui::Color ResolveColor(ui::Color color) override;
  void SendKeys(StringView keys) override;
  int ShowMessageBox(StringView text, int style, StringView title) override;

 private:
  friend class TimerPeer;

  struct Expectation {
    String Form;
    Script Run;
  };
  std::optional<Script> TakeScript(const String& form);

  std::deque<Expectation> expected_;
  std::vector<std::string> complaints_;
  std::vector<TimerPeer*> timers_;  // in the order of their start
  Milliseconds now_{0};
};

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
  void Wait(std::chrono::milliseconds time) { platform_.Advance(time); }
  // Another window covered the form and went away.
  void Uncover();
  String Focus() const;  // name of the focused control, empty without one

 private:
  ui::Control& Find(StringView name);
  ui::Control& Reachable(StringView name);
  void NeedOpenForm() const;
  // The control that hears of keys; null when nothing does.
  ui::Control* UsableFocus() const;
  void PressFocused(int key, int shift);
  ui::RowList& RowsWith(StringView list, int row);
  // False when that closes the form or puts other rows in place.
  bool PressOn(ui::RowList& list);
  // False when that closes the form, puts other rows in place or selects another one.
  bool Release(ui::RowList& list, int row);
  static void MoveSelection(ui::RowList& list, int key);
  void LookUp(ui::RowList& list, StringView beginning);
  // Tells the focused control of a key and its character; false when a handler takes it.
  bool HearsOf(char16_t& character);
  void TypeCharacter(char16_t character);

  HeadlessPlatform& platform_;
  ui::Form& form_;
  const ui::Control* space_down_ = nullptr;  // the button that Space holds down
};

}  // namespace krx::headless
