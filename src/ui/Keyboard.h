#pragma once

#include <vector>

#include "base/String.h"

namespace krx::ui {

class Control;
class Form;

// Key codes that the forms know by name; letters and digits are their upper-case characters.
enum Key : int {
  kKeyBack = 8,
  kKeyTab = 9,
  kKeyEnter = 13,
  kKeyEscape = 27,
  kKeySpace = 32,
  kKeyPageUp = 33,
  kKeyPageDown = 34,
  kKeyEnd = 35,
  kKeyHome = 36,
  kKeyLeft = 37,
  kKeyUp = 38,
  kKeyRight = 39,
  kKeyDown = 40,
  kKeyInsert = 45,
  kKeyDelete = 46,
  kKeyF1 = 112,
};

inline constexpr int kShift = 1;
inline constexpr int kControl = 2;
inline constexpr int kAlt = 4;

// The keyboard behaviour that every form shares. Each function tells whether it used the key; a key
// that is not used goes on to the focused control.

// Tab and Shift+Tab walk the tab order, Esc presses the form's cancel key, Enter presses the
// focused button, arrows walk from button to button, and a text that can be scrolled follows the
// page keys, Home and End, and the arrows while it has the focus. Ctrl+C copies what the form as a
// whole has to say. Enter does nothing as long as the form takes no answers.
bool DispatchKey(Form& form, int key, int shift);

// An access key: presses the button or leads to the field that it marks; where several controls
// share it, the focus walks through them. Without Alt it counts only while the focused control
// takes no text.
bool DispatchAccessKey(Form& form, char16_t character, bool alt);

// The key as the control's handlers understand it: in the lists of a mirrored form, whose folders
// open to the left, the arrows to the sides change places.
int KeyInDirection(const Control& focused, int key);

// What the operator is told while the control has the focus: the form's words for Caps Lock in a
// password field as long as it is on, else nothing.
String CapsLockHint(const Control& focused, bool caps_lock);

// A keystroke to be sent: a character to be typed, or a named key (Code not 0).
struct Keystroke {
  int Code = 0;
  char16_t Character = 0;
  int Shift = 0;
  bool operator==(const Keystroke&) const = default;
};

// Notation of keystrokes: characters stand for themselves; {NAME} is a named key (ENTER, ESC, TAB,
// F1 ... F16 and so on) or an escaped character ({+}); {NAME 3} repeats; +, ^ and % hold Shift,
// Control and Alt for the next key or for a group in parentheses; ~ is Enter. A malformed notation
// is runtime error 5.
std::vector<Keystroke> ParseKeystrokes(StringView notation);

}  // namespace krx::ui
