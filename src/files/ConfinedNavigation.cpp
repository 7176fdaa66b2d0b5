#include "files/ConfinedNavigation.h"

#include <utility>

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
  list_.Highlighted = [this] { Show(Entry()); };
  list_.KeyDown = [this](int& key, int) { KeyDown(key); };
  list_.KeyUp = [this](int&, int) { KeyUp(); };
  list_.MouseDown = [this](int, int, Twips, Twips) { Settle(); };
  list_.RowClick = [this](int) { Click(); };
  list_.RowLeft = [this] { ShowInside(); };
  list_.GotFocus = [this] { pressed_here_ = false; };
  list_.LostFocus = [this] { Settle(); };
}

void ConfinedNavigation::Start(String directory, String whole) {
  start_ = std::move(directory);
  whole_ = std::move(whole);
  const String levels = whole_ + u'\\';
  for (std::size_t end = 0; (end = levels.find(u'\\', end)) != String::npos; ++end) {
    const StringView level = StringView(levels).substr(0, end);
    // One separator at the end is tried; more of them name nothing else.
    if (!level.ends_with(u"\\\\")) Open(level);
  }
  opened_ = list_.Path();
  shown_ = opened_;
  Settled();
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

// True when the start directory is open again. Where it is gone, the list goes back to where it
// was at the beginning.
bool ConfinedNavigation::TurnBack() {
  const bool back = Open(whole_);
  if (!back) Open(opened_);
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
  if (!inside && !Open(whole_)) return ShowInside();
  Show(inside ? entry : start_);
  Settled();
}

}  // namespace krx::files
