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
  list_.Change = [this] { dialog_.Show(list_.Path()); };
  list_.Highlighted = [this] { dialog_.Show(Entry()); };
  list_.KeyDown = [this](int& key, int) { KeyDown(key); };
  list_.KeyUp = [this](int&, int) { KeyUp(); };
  list_.RowClick = [this](int) { Click(); };
  list_.RowDoubleClick = [this](int) { DoubleClick(); };
  list_.GotFocus = [this] { pressed_here_ = false; };
}

void ConfinedNavigation::Start(String directory) {
  start_ = std::move(directory);
  const String levels = start_ + u'\\';
  for (std::size_t end = 0; (end = levels.find(u'\\', end)) != String::npos; ++end) {
    const StringView level = StringView(levels).substr(0, end);
    // One separator at the end is tried; more of them name nothing else.
    if (!level.ends_with(u"\\\\")) Open(level);
  }
  opened_ = list_.Path();
}

bool ConfinedNavigation::Open(StringView path) {
  return Skip([&] { list_.Path = path; });
}

bool ConfinedNavigation::ContainsStart(const String& entry) const {
  return Contains(entry, start_);
}

// True when the start directory is open again. Where it is gone, the list goes back to where it
// was at the beginning.
bool ConfinedNavigation::TurnBack() {
  const bool back = Open(start_);
  if (!back) Open(opened_);
  Skip([&] { list_.ListIndex = ui::DirListBox::kOpenEntry; });
  return back;
}

// Runs before the list's own handling, so the entry shown is the one before an arrow moves on; the
// key's release shows the new one.
void ConfinedNavigation::KeyDown(int& key) {
  pressed_here_ = true;
  const bool stop = key == ui::kKeyUp && dialog_.Confined() && Entry() == start_;
  if (key == ui::kKeyRight) Open(Entry());
  if (key == ui::kKeyLeft) GoLeft();
  if (stop || key == ui::kKeyRight || key == ui::kKeyLeft) key = 0;
  list_.Parent().ThePlatform().ProcessEvents();
  dialog_.Show(Entry());
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
  if (dialog_.Confined() && entry == start_) Open(entry);
  list_.Highlight(entry);
}

// A key that went down elsewhere, as Tab on its way in does, is no key of this list and leaves a
// typed path alone.
void ConfinedNavigation::KeyUp() {
  if (!pressed_here_) return;
  if (dialog_.Confined() && !ContainsStart(Entry())) TurnBack();
  dialog_.Show(Entry());
}

// The path field counts as it was before the click.
void ConfinedNavigation::Click() {
  String entry = Entry();
  const std::optional<String> field = dialog_.PathField();
  const bool inside =
      !dialog_.Confined() || ContainsStart(entry) || (field && Contains(entry, *field));
  moved_ = Open(entry) || !inside;
  if (!inside) entry = TurnBack() ? start_ : Entry();
  dialog_.Show(entry);
}

// The first click has opened an entry; the second one fell on whatever came to lie there.
void ConfinedNavigation::DoubleClick() {
  if (moved_) Skip([&] { list_.ListIndex = ui::DirListBox::kOpenEntry; });
  dialog_.Show(Entry());
}

}  // namespace krx::files
