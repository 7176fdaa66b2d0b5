#pragma once

#include <functional>
#include <optional>

#include "ui/DirListBox.h"

namespace krx::files {

// Keyboard and mouse in a directory list: keys open and leave directories, a click opens, and an
// operator who is confined to the start directory is turned back whenever he has left it. What
// cannot be opened stays closed without a word.
class ConfinedNavigation {
 public:
  // What the dialogs do differently.
  struct Dialog {
    std::function<bool()> Confined;
    // Shows an entry as the one that the operator is at.
    std::function<void(const String&)> Show;
    // The path field, if there is one: an entry clicked on that contains its text is not turned
    // back, though it does not contain the start directory.
    std::function<std::optional<String>()> PathField;
  };

  // Binds the list's handlers.
  ConfinedNavigation(ui::DirListBox& list, Dialog dialog);

  // Opens the start directory level by level; of one that does not exist the deepest ancestor that
  // does. The text is kept as it is and compared case-sensitively.
  void Start(String directory);

 private:
  String Entry() const { return list_.List(list_.ListIndex()); }
  bool Open(StringView path);
  bool ContainsStart(const String& entry) const;
  bool TurnBack();

  void KeyDown(int& key);
  void GoLeft();
  void KeyUp();
  void Click();
  void DoubleClick();

  ui::DirListBox& list_;
  const Dialog dialog_;
  String start_;
  String opened_;              // what the start directory came to
  bool pressed_here_ = false;  // a key went down while the list had the focus
  bool moved_ = false;         // the last click made other rows of the list
};

}  // namespace krx::files
