#include <algorithm>
#include <utility>

#include "panel/FKeyboard.h"
#include "ui/Keyboard.h"
#include "ui/Platform.h"

namespace krx::panel {

namespace {

// Milliseconds for which a key is held until it repeats, then between two times, and until it
// offers its accents.
constexpr int kUntilRepeat = 400;
constexpr int kRepeat = 60;
constexpr int kUntilAccents = 500;

// These act as soon as they are pressed, and again while they are held.
bool Repeats(Act act) {
  return act == Act::Backspace || act == Act::Delete || act == Act::Left || act == Act::Right ||
         act == Act::Up || act == Act::Down;
}

bool Holds(const Rect& rect, Twips x, Twips y) {
  return x >= rect.Left && y >= rect.Top && x < rect.Left + rect.Width &&
         y < rect.Top + rect.Height;
}

}  // namespace

// A second finger comes before the first has gone when somebody types quickly.
void FKeyboard::Pressed(Slot& slot) {
  Slot* const before = std::exchange(held_, nullptr);
  tmrHeld.Enabled = false;
  const bool chosen = offered_ == 0;
  CloseAccents();
  if (before && before != &slot && chosen && before->Does && !Repeats(before->Does->Act))
    Perform(*before->Does);
  if (!slot.Does) return;
  held_ = &slot;
  const bool repeats = Repeats(slot.Does->Act);
  if (repeats) Perform(*slot.Does);
  tmrHeld.Interval = repeats ? kUntilRepeat : kUntilAccents;
  tmrHeld.Enabled = true;
}

void FKeyboard::HeldOn() {
  if (!held_ || !held_->Does) return Rest();
  if (Repeats(held_->Does->Act)) {
    tmrHeld.Interval = kRepeat;
    return Perform(*held_->Does);
  }
  tmrHeld.Enabled = false;
  OpenAccents(*held_);
}

void FKeyboard::LetGo(Slot& slot, Twips x, Twips y) {
  if (held_ != &slot || !slot.Does) return;
  held_ = nullptr;
  tmrHeld.Enabled = false;
  const Rect place = slot.Key->Bounds();
  const bool inside = Holds({0, 0, place.Width, place.Height}, x, y);
  if (offered_ > 0) {
    const ui::BoardKey* const accent = AccentAt(place.Left + x, place.Top + y);
    const String text = accent ? accent->DisplayedText() : String();
    if (accent || !inside) CloseAccents();
    if (accent) TypeText(text);
  } else if (inside && !Repeats(slot.Does->Act)) {
    Perform(*slot.Does);
  }
}

void FKeyboard::Rest() {
  held_ = nullptr;
  tmrHeld.Enabled = false;
  CloseAccents();
}

void FKeyboard::Perform(const LayoutKey& key) {
  switch (key.Act) {
    case Act::Type:
      return TypeText(CharactersOf(key).Own);
    case Act::Space:
      return TypeText(u" ");
    case Act::Shift:
      shift_ = !shift_;
      return Redress();
    case Act::CapsLock:
      caps_lock_ = !caps_lock_;
      return Redress();
    case Act::Page:
      page_ = (page_ + 1) % pages_.size();
      shift_ = false;
      return LayOut();
    case Act::Hide:
      return HidePressed();
    default:
      return ThePlatform().PressKey({KeyOf(key.Act), 0, 0});
  }
}

// Shift holds for one character.
void FKeyboard::TypeText(StringView text) {
  for (const char16_t unit : text)
    ThePlatform().PressKey({0, unit, 0});
  if (std::exchange(shift_, false)) Redress();
}

// Caps Lock is for letters: for two characters that differ in nothing but their case.
const Characters& FKeyboard::CharactersOf(const LayoutKey& key) const {
  const String& plain = key.Plain.Own;
  const String& shifted = key.Shifted.Own;
  const CaseFolding& fold = ThePlatform().Folding();
  const bool letter = plain != shifted && plain.size() == 1 && shifted.size() == 1 &&
                      fold(plain[0]) == fold(shifted[0]);
  const bool upper = shift_ != (caps_lock_ && letter);
  return upper ? key.Shifted : key.Plain;
}

// What holding a key offers

// In a row above the key; that of the first row hangs below it.
void FKeyboard::OpenAccents(const Slot& slot) {
  if (discreet_ || slot.Does->Act != Act::Type) return;
  const std::vector<String>& held = CharactersOf(*slot.Does).Held;
  const Rect place = slot.Key->Bounds();
  const Twips step = place.Width + shape_.Gap;
  const Twips down = place.Height + shape_.Gap;
  const Twips top = place.Top - down >= 0 ? place.Top - down : place.Top + down;
  offered_ = std::min(held.size(), accents_.size());
  const Twips width = step * static_cast<float>(offered_);
  const Twips last = Width() - width;
  const Twips middle = place.Left + place.Width / 2 - width / 2;
  Twips left = std::clamp(place.Left, shape_.Gap, std::max(last, shape_.Gap));
  if (offered_ % 2 == 1) left = std::clamp(middle, shape_.Gap, std::max(last, shape_.Gap));
  for (std::size_t i = 0; i < offered_; ++i, left += step) {
    ui::BoardKey& key = *accents_[i];
    key.Place({left, top, place.Width, place.Height});
    key.Font = slot.Key->Font();
    key.Caption = ReplaceAll(held[i], u"&", u"&&");
    key.Latched = true;  // so that they stand out from the keys around them
    key.Visible = true;
  }
}

void FKeyboard::CloseAccents() {
  for (std::size_t open = std::exchange(offered_, 0); open > 0; --open)
    accents_[open - 1]->Visible = false;
}

ui::BoardKey* FKeyboard::AccentAt(Twips x, Twips y) const {
  const auto end = accents_.begin() + static_cast<std::ptrdiff_t>(offered_);
  const auto found = std::find_if(accents_.begin(), end,
                                  [&](const auto& key) { return Holds(key->Bounds(), x, y); });
  return found == end ? nullptr : found->get();
}

}  // namespace krx::panel
