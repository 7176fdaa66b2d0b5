#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "Disk.h"
#include "base/String.h"
#include "ui/Controls.h"
#include "ui/Platform.h"

namespace krx::test {

// A recorded touch of a list: each act so many milliseconds after the one before, at a height in
// rows from the first one in sight.
struct TouchAct {
  enum class What { Down, Move, Up, Cancel };
  What Act;
  double After = 0;
  double Rows = 0;
};
using Touching = std::vector<TouchAct>;
// As the system tells of it: by messages of a pointer, or, on some panels, by those of the mouse.
enum class ToldAs { Pointer, Mouse };

// The layout "contract" of the keyboard on the screen, and the page that follows it.
inline constexpr std::string_view kContractLayout =
    "title = ABC\n"
    "row: aA bB cC dD eE:\u00e9\u00e8 fF {backspace}\n"
    "row: {shift} {capslock} {left} {right} {up} {down} {hide}\n"
    "row: {page} {space*4} {enter*2}\n";
inline constexpr std::string_view kContractSymbols =
    "title = 123\n"
    "row: 1 2 3 4 5 6 {backspace}\n"
    "row: {page} {hide} {space*3} {enter*2}\n";
// A layout of the contract by its name; empty for all others.
inline std::string ContractLayout(StringView name) {
  if (name == u"contract") return std::string(kContractLayout);
  return name == u"symbols" ? std::string(kContractSymbols) : std::string();
}

class Hand;
using HandScript = std::function<void(Hand&)>;

// Whoever works with a form that is shown: by script in one port, with real input in another. What
// cannot be done, or does not come about, fails the test.
class Hand {
 public:
  virtual ~Hand() = default;

  virtual void Press(int key, int shift = 0) = 0;
  virtual void Type(StringView letters) = 0;  // lower case, into the focused control
  virtual void AccessKey(char16_t letter) = 0;
  virtual void Click(StringView key) = 0;
  // Presses a button and keeps it down while another form comes up, in which the script works.
  virtual void HoldWhile(StringView key, StringView form, const HandScript& script) = 0;
  // Lets go over a button of this form, wherever the press was.
  virtual void LetGo(StringView key) = 0;
  virtual void ClickRow(StringView list, int row) = 0;
  virtual void DoubleClickRow(StringView list, int row) = 0;
  // Presses on a row and lets go outside the list.
  virtual void PressRowAndLeave(StringView list, int row) = 0;
  // Plays a touch by its own clock, which stands still between such acts.
  virtual void Touch(StringView list, ToldAs told, const Touching& acts) = 0;
  // Presses a key of the keyboard on the screen by its caption; holds it until another one is in
  // sight, and lets go there.
  virtual void Tap(StringView caption) = 0;
  virtual void HoldFor(StringView caption, StringView choice) = 0;
  virtual void TouchField(StringView control) = 0;  // with a finger
  virtual void AwaitBoard(bool in_sight) = 0;
  virtual Rect Board() = 0;  // where the keyboard in sight stands, as forms count
  virtual void PassTime(double milliseconds) = 0;
  // Clicks a button whose handler shows another form, in which the script works until it is gone.
  virtual void Open(StringView key, StringView form, const HandScript& script) = 0;
  virtual void AwaitFocus(StringView control) = 0;
  virtual void Await(const std::function<bool()>& condition) = 0;
};

// A port as the contract tests see it.
class Port {
 public:
  virtual ~Port() = default;
  virtual ui::Platform& Platform() = 0;
  virtual std::unique_ptr<Disk> MakeDisk() = 0;
  // From here on time passes as the hand says and not by itself.
  virtual void StopClock() = 0;
  // Shows the form modally; the script works with it and must close it.
  virtual void Show(ui::Form& form, const HandScript& script) = 0;
};

// Each test program that contains the contract tests has its own port.
std::unique_ptr<Port> MakePort();

}  // namespace krx::test
