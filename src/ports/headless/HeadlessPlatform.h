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
  String Clipboard;
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
  double Ticks() override { return static_cast<double>(now_.count()); }
  ui::StockIcon LoadStockIcon(int id) override { return {id}; }
  void SetPointer(ui::Pointer pointer) override { Pointers.push_back(pointer); }
  ui::Color ResolveColor(ui::Color color) override;
  void SendKeys(StringView keys) override;
  // Reaches the focused control of the form in use.
  void PressKey(const ui::Keystroke& stroke) override;
  std::string KeyboardLayout(StringView name) override;
  void CopyText(StringView text) override { Clipboard = text; }
  int ShowMessageBox(StringView text, int style, StringView title) override;

  // Keyboard layouts by their names.
  std::map<String, std::string> Layouts;
  // The form that was shown last beside another one, until its windows are gone.
  ui::Form* Attached = nullptr;

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

}  // namespace krx::headless
