#pragma once

#include <algorithm>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "base/String.h"
#include "ui/Keyboard.h"

namespace krx::test {

// A machine's folders as the model of the random operator knows them: full paths and the names
// below each.
struct Tree {
  std::map<String, std::vector<String>> Below;
  std::set<String> Closed;  // exist, but may not be read

  bool CanOpen(const String& path) const { return Below.contains(path) && !Closed.contains(path); }
  static String In(const String& folder, const String& name) {
    return folder + (folder.ends_with(u'\\') ? u"" : u"\\") + name;
  }
};

// What the directory list of a selection dialog must do, written from the rules: `Shown` is what
// stands in the path field, or whose files are listed.
class NavigationModel {
 public:
  NavigationModel(const Tree& tree, bool confined, bool path_field)
      : tree_(tree), confined_(confined), path_field_(path_field) {}

  String Open;
  String Entry;
  String Shown;

  void Start(const String& current, const String& start) {
    OpenFolder(current);
    start_ = start;
    String levels = start + u'\\';
    for (std::size_t end = levels.find(u'\\'); end != String::npos;
         end = levels.find(u'\\', end + 1))
      OpenFolder(Normal(levels.substr(0, end)));
    at_start_ = Open;
    Shown = Open;
  }

  void Press(int key) {
    bool used = true;
    if (key == ui::kKeyRight) {
      OpenFolder(Entry);
    } else if (key == ui::kKeyLeft) {
      Left();
    } else {
      used = key == ui::kKeyUp && confined_ && Entry == start_;
    }
    if (!used) Walk(key);
    if (confined_ && !Contains(Entry, start_)) TurnBack();
    Shown = Entry;
  }

  void Click(std::size_t row) {
    Entry = Rows()[row];
    const String entry = Entry;
    const bool inside =
        !confined_ || Contains(entry, start_) || (path_field_ && Contains(entry, Shown));
    OpenFolder(entry);
    if (inside) {
      Shown = entry;
    } else {
      Shown = TurnBack() ? start_ : Entry;
    }
  }

  // Returns whether the drive is ready.
  bool Drive(const String& drive, const String& root) {
    const bool ready = OpenFolder(root);
    Shown = path_field_ ? drive : Open;
    return ready;
  }

  std::vector<String> Rows() const {
    std::vector<String> rows;
    for (std::size_t end = 3; end < Open.size();
         end = std::min(Open.find(u'\\', end + 1), Open.size()))
      rows.push_back(Open.substr(0, end));
    rows.push_back(Open);
    for (const String& name : below_)
      rows.push_back(Tree::In(Open, name));
    return rows;
  }

 private:
  static bool Contains(const String& text, const String& part) {
    return text.find(part) != String::npos;
  }
  // Of the paths that come up here: a bare drive is its root, no separator ends a path else.
  static String Normal(String path) {
    if (path.size() == 2) return path + u'\\';
    if (path.size() > 3 && path.ends_with(u'\\')) path.pop_back();
    return path;
  }

  bool OpenFolder(const String& path) {
    if (!tree_.CanOpen(path)) return false;
    Open = Entry = path;
    below_ = tree_.Below.at(path);
    return true;
  }
  bool TurnBack() {
    const bool back = OpenFolder(Normal(start_));
    if (!back) OpenFolder(at_start_);
    Entry = Open;
    return back;
  }
  void Left() {
    const std::vector<String> rows = Rows();
    const auto at = std::find(rows.begin(), rows.end(), Entry);
    const auto open = std::find(rows.begin(), rows.end(), Open);
    if (at > open) {
      Entry = Open;
    } else if (at < open) {
      OpenFolder(Entry);
    } else if (at != rows.begin()) {
      const String left = Entry;
      if (!OpenFolder(*(at - 1))) return;
      if (confined_ && left == start_) OpenFolder(left);
      const std::vector<String> now = Rows();
      if (std::find(now.begin(), now.end(), left) != now.end()) Entry = left;
    }
  }
  void Walk(int key) {
    const std::vector<String> rows = Rows();
    const auto at = std::find(rows.begin(), rows.end(), Entry) - rows.begin();
    const auto last = static_cast<std::ptrdiff_t>(rows.size()) - 1;
    std::ptrdiff_t to = at;
    if (key == ui::kKeyUp) to = std::max<std::ptrdiff_t>(at - 1, 0);
    if (key == ui::kKeyDown) to = std::min(at + 1, last);
    if (key == ui::kKeyHome) to = 0;
    if (key == ui::kKeyEnd) to = last;
    Entry = rows[static_cast<std::size_t>(to)];
  }

  const Tree& tree_;
  const bool confined_;
  const bool path_field_;
  String start_;
  String at_start_;
  std::vector<String> below_;  // as it was when the folder was opened
};

}  // namespace krx::test
