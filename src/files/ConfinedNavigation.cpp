#include "files/ConfinedNavigation.h"

#include <algorithm>
#include <utility>

#include "folders/FolderPath.h"
#include "service/Skip.h"
#include "ui/Form.h"
#include "ui/Keyboard.h"

namespace krx::files {

using service::Skip;

namespace {

bool Contains(const String& text, StringView part) {
  return text.find(part) != String::npos;
}

}  // namespace

ConfinedNavigation::ConfinedNavigation(ui::DirListBox& list, Dialog dialog)
    : list_(list), dialog_(std::move(dialog)) {
  list_.Change = [this] { Show(list_.Path()); };
  list_.FellBack = [this] { Started(); };
  list_.Highlighted = [this] { Show(Entry()); };
  list_.KeyDown = [this](int& key, int) { KeyDown(key); };
  list_.KeyUp = [this](int&, int) { KeyUp(); };
  list_.MouseDown = [this](int, int, Twips, Twips) { Settle(); };
  list_.RowClick = [this](int) { Click(); };
  list_.RowLeft = [this] { ShowInside(); };
  list_.GotFocus = [this] { pressed_here_ = false; };
  list_.LostFocus = [this] { Settle(); };
}

std::vector<String> ConfinedNavigation::Beginnings(const String& whole,
                                                   folders::FileSystem& files) {
  std::vector<String> paths;
  const auto add = [&](StringView path) {
    Skip([&] {
      String full = folders::FullPath(path, files);
      if (paths.empty() || paths.back() != full) paths.push_back(std::move(full));
    });
  };
  Skip([&] { add(files.CurrentDirectory()); });
  const String levels = whole + u'\\';
  for (std::size_t end = 0; (end = levels.find(u'\\', end)) != String::npos; ++end) {
    const StringView level = StringView(levels).substr(0, end);
    // One separator at the end is tried; more of them name nothing else.
    if (!level.ends_with(u"\\\\")) add(level);
  }
  std::reverse(paths.begin(), paths.end());
  return paths;
}

void ConfinedNavigation::Start(String directory, String whole,
                               const ui::FolderReadings::Listing& begun) {
  start_ = std::move(directory);
  whole_ = std::move(whole);
  if (begun) Skip([&] { list_.OpenBegun(begun); });
  Started();
}

void ConfinedNavigation::Started() {
  opened_ = list_.Path();
  shown_ = opened_;
  Settled();
  dialog_.Started();
}

bool ConfinedNavigation::Open(StringView path) {
  return Skip([&] { list_.Path = path; });
}

void ConfinedNavigation::Show(const String& entry) {
  shown_ = entry;
  dialog_.Show(entry);
}

bool ConfinedNavigation::ContainsStart(const String& entry) const {
  return Contains(entry, start_);
}

// True when the start directory is open again, as far as is known yet. Where it is gone, the list
// goes back to where it was at the beginning.
bool ConfinedNavigation::TurnBack() {
  bool back = false;
  Skip([&] {
    const String whole = folders::FullPath(whole_, list_.Parent().ThePlatform().Files());
    std::vector<String> paths{whole};
    if (!opened_.empty() && opened_ != whole) paths.push_back(opened_);
    list_.OpenFirst(std::move(paths));
    back = list_.Path() == whole;
  });
  Skip([&] { list_.ListIndex = ui::DirListBox::kOpenEntry; });
  return back;
}

// Where not even the place of the beginning can be opened any more, at least its name is shown.
void ConfinedNavigation::ShowInside() {
  const bool outside = dialog_.Confined && !ContainsStart(Entry());
  const bool lost = outside && !TurnBack() && list_.Path() != opened_;
  Show(lost ? opened_ : Entry());
  Settled();
}

// The list has gone back to what was open before. Opening once more what has just kept its answer
// would make the operator wait for ever.
void ConfinedNavigation::Refused() {
  if (list_.Path().empty()) return Started();
  const bool outside = dialog_.Confined && !ContainsStart(Entry());
  Show(outside ? opened_ : Entry());
  Settled();
}

void ConfinedNavigation::Settled() {
  settled_entry_ = Entry();
  settled_ = shown_;
}

void ConfinedNavigation::Settle() {
  if (!dialog_.Confined || (Entry() == settled_entry_ && shown_ == settled_)) return;
  ShowInside();
}

// Runs before the list's own handling, so the entry shown is the one before an arrow moves on; the
// key's release shows the new one.
void ConfinedNavigation::KeyDown(int& key) {
  pressed_here_ = true;
  const bool stop = key == ui::kKeyUp && dialog_.Confined && Entry() == start_;
  if (key == ui::kKeyRight) Open(Entry());
  if (key == ui::kKeyLeft) GoLeft();
  if (stop || key == ui::kKeyRight || key == ui::kKeyLeft) key = 0;
  list_.Parent().ThePlatform().ProcessEvents();
  Show(Entry());
}

void ConfinedNavigation::GoLeft() {
  const String entry = Entry();
  const String open = list_.Path();
  if (entry > open) {
    Skip([&] { list_.ListIndex = ui::DirListBox::kOpenEntry; });
    return;
  }
  if (entry != open) {
    Open(entry);
    return;
  }
  if (!Open(list_.List(list_.ListIndex() - 1))) return;
  if (dialog_.Confined && entry == start_) Open(entry);
  list_.Highlight(entry);
}

// A key that went down elsewhere, as Tab on its way in does, is no key of this list and leaves a
// typed path alone.
void ConfinedNavigation::KeyUp() {
  if (pressed_here_) ShowInside();
}

// The path field counts as it was before the click, and before any key that is still down.
void ConfinedNavigation::Click() {
  const String entry = Entry();
  const bool named = dialog_.HasPathField && Contains(entry, settled_);
  const bool inside = !dialog_.Confined || ContainsStart(entry) || named;
  Open(entry);
  if (!inside && !TurnBack()) return ShowInside();
  Show(inside ? entry : start_);
  Settled();
}

}  // namespace krx::files
