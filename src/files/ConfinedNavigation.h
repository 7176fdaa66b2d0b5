#pragma once

#include <functional>
#include <vector>

#include "ui/DirListBox.h"

namespace krx::files {

// Keyboard and mouse in a directory list: keys open and leave directories, a click opens, and an
// operator who is confined to the start directory is turned back whenever he has left it. What
// cannot be opened stays closed without a word.
class ConfinedNavigation {
 public:
  // What the dialogs do differently.
  struct Dialog {
    const bool& Confined;
    // Shows an entry as the one that the operator is at.
    std::function<void(const String&)> Show;
    // Whether a path field shows it, which the operator may not write to while he is confined: an
    // entry clicked on that contains the field's text is not turned back, though it does not
    // contain the start directory.
    bool HasPathField;
    // The list has come to where it begins.
    std::function<void()> Started;
  };

  // Binds the list's handlers.
  ConfinedNavigation(ui::DirListBox& list, Dialog dialog);

  // The directories of which the first one that can be opened is where the list begins: the start
  // directory, whose whole path this is, its ancestors, and at last the current directory.
  static std::vector<String> Beginnings(const String& whole, folders::FileSystem& files);
  // Opens the start directory; `begun` is the reading of its beginnings. Its text is kept as it is
  // and compared case-sensitively.
  void Start(String directory, String whole, const ui::FolderReadings::Listing& begun);
  // A directory that counted as open has turned out to be none.
  void Refused();

  // Ends what the operator has left half done: an entry outside that a key still down, or a press
  // without its click, has led to is turned back. Runs before anybody takes what is shown.
  void Settle();

 private:
  String Entry() const { return list_.List(list_.ListIndex()); }
  void Show(const String& entry);
  void ShowInside();
  void Settled();
  bool Open(StringView path);
  bool ContainsStart(const String& entry) const;
  bool TurnBack();
  void Started();

  void KeyDown(int& key);
  void GoLeft();
  void KeyUp();
  void Click();

  ui::DirListBox& list_;
  const Dialog dialog_;
  String start_;
  String whole_;               // the same, wherever the process may go
  String opened_;              // what the start directory came to
  String shown_;               // what the dialog was told last
  String settled_;             // the same, when click or key had ended
  String settled_entry_;       // the highlighted entry at that time
  bool pressed_here_ = false;  // a key went down while the list had the focus
};

}  // namespace krx::files
