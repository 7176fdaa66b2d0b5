#include "panel/FKeyboard.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "ui/Keyboard.h"
#include "ui/Platform.h"

namespace krx::panel {

namespace {

constexpr std::size_t kMostAccents = 13;  // more would not fit beside each other
constexpr float kTextShare = 0.42f;       // of a key's height is its text's
constexpr float kTextWidth = 0.9f;        // of a key's width is a text's at most
constexpr Twips kPerPoint = 20;

struct SignedAct {
  panel::Act Act;
  ui::KeySign Sign;
  int Key;  // that it presses
};
constexpr SignedAct kSigned[] = {
    {Act::Shift, ui::KeySign::Shift, 0},
    {Act::CapsLock, ui::KeySign::CapsLock, 0},
    {Act::Hide, ui::KeySign::Hide, 0},
    {Act::Backspace, ui::KeySign::Backspace, ui::kKeyBack},
    {Act::Delete, ui::KeySign::Delete, ui::kKeyDelete},
    {Act::Enter, ui::KeySign::Enter, ui::kKeyEnter},
    {Act::Tab, ui::KeySign::Tab, ui::kKeyTab},
    {Act::Left, ui::KeySign::Left, ui::kKeyLeft},
    {Act::Right, ui::KeySign::Right, ui::kKeyRight},
    {Act::Up, ui::KeySign::Up, ui::kKeyUp},
    {Act::Down, ui::KeySign::Down, ui::kKeyDown},
    {Act::Home, ui::KeySign::Home, ui::kKeyHome},
    {Act::End, ui::KeySign::End, ui::kKeyEnd},
};

const SignedAct* SignedBy(Act act) {
  const auto* const found = std::find_if(std::begin(kSigned), std::end(kSigned),
                                         [&](const SignedAct& entry) { return entry.Act == act; });
  return found == std::end(kSigned) ? nullptr : found;
}

ui::KeySign SignOf(Act act) {
  const SignedAct* const found = SignedBy(act);
  return found ? found->Sign : ui::KeySign::None;
}

}  // namespace

int FKeyboard::KeyOf(Act act) {
  const SignedAct* const found = SignedBy(act);
  return found ? found->Key : 0;
}

FKeyboard::FKeyboard(ui::Form& dialog, std::vector<KeyboardLayout> pages, krx::Font font)
    : Form(dialog.ThePlatform(), u"FKeyboard"), pages_(std::move(pages)), font_(std::move(font)) {
  Attached = &dialog;
  Panel = dialog.Panel;
  const auto name = Letters().Names.find(u"keyboard");
  if (name != Letters().Names.end()) Caption = name->second;
  tmrHeld.Tick = [this] { HeldOn(); };
  MakeKeys();
}

void FKeyboard::MakeKeys() {
  for (std::size_t i = 0; i < kMostAccents; ++i) {
    accents_.push_back(std::make_unique<ui::BoardKey>(
        *this, u"keyAccent(" + ToString(static_cast<std::int32_t>(i)) + u")"));
    accents_.back()->Visible = false;
    // Tapped when the held key was let go without choosing.
    accents_.back()->MouseUp = [this, key = accents_.back().get()](int, int, Twips x, Twips y) {
      const bool inside = x >= 0 && y >= 0 && x < key->Width() && y < key->Height();
      const String text = key->DisplayedText();
      CloseAccents();
      if (inside) TypeText(text);
    };
  }
}

FKeyboard::Slot& FKeyboard::NextSlot() {
  if (used_ == slots_.size()) {
    auto slot = std::make_unique<Slot>();
    slot->Key = std::make_unique<ui::BoardKey>(
        *this, u"key(" + ToString(static_cast<std::int32_t>(used_)) + u")");
    slot->Key->MouseDown = [this, one = slot.get()](int button, int, Twips, Twips) {
      if (button == ui::kLeftButton) Pressed(*one);
    };
    slot->Key->MouseUp = [this, one = slot.get()](int button, int, Twips x, Twips y) {
      if (button == ui::kLeftButton) LetGo(*one, x, y);
    };
    slot->Key->Discreet = discreet_;
    slot->Key->Visible = false;  // until it has its place
    slots_.push_back(std::move(slot));
  }
  return *slots_[used_++];
}

// Layout

void FKeyboard::Arrange(const Shape& shape) {
  Rest();
  page_ = 0;
  shift_ = false;
  shape_ = shape;
  Left.Adopt(shape.Bounds.Left);
  Top.Adopt(shape.Bounds.Top);
  Width.Adopt(shape.Bounds.Width - kEdges);
  Height.Adopt(shape.Bounds.Height - kEdges);
  Changed(ui::Aspect::Bounds);
  LayOut();
}

void FKeyboard::LayOut() {
  used_ = 0;
  const auto rows = static_cast<float>(Page().RowCount(shape_.Spare));
  const Twips pixel = ThePlatform().TwipsPerPixel();
  const Twips step = (Height() - shape_.Gap) / rows;
  float at = 0;
  for (const LayoutRow& row : Page().Rows) {
    if (row.Spare && !shape_.Spare) continue;
    const auto top = [&](float index) {
      return shape_.Gap + std::round(index * step / pixel) * pixel;
    };
    LayOutRow(row, top(at), top(at + 1) - top(at) - shape_.Gap);
    ++at;
  }
  for (std::size_t i = used_; i < slots_.size(); ++i) {
    slots_[i]->Does = nullptr;
    slots_[i]->Key->Visible = false;
  }
}

void FKeyboard::LayOutRow(const LayoutRow& row, Twips top, Twips height) {
  const Twips pixel = ThePlatform().TwipsPerPixel();
  const Twips unit = (Width() - shape_.Gap) / Page().Width;
  const auto left = [&](float at) { return shape_.Gap + std::round(at * unit / pixel) * pixel; };
  float at = 0;
  for (const LayoutKey& key : row.Keys) {
    Slot& slot = NextSlot();
    slot.Does = &key;
    slot.Key->Place({left(at), top, left(at + key.Width) - left(at) - shape_.Gap, height});
    Dress(slot);
    slot.Key->Visible = true;
    at += key.Width;
  }
}

// What the key shows in the present state of Shift and Caps Lock.
void FKeyboard::Dress(Slot& slot) {
  const LayoutKey& does = *slot.Does;
  ui::BoardKey& key = *slot.Key;
  const String caption = CaptionOf(does);
  key.Types = does.Act == Act::Type || does.Act == Act::Space;
  key.Sign = SignOf(does.Act);
  key.Font = FontFor(caption, key.Bounds());
  key.Caption = ReplaceAll(caption, u"&", u"&&");
  key.Latched = (does.Act == Act::Shift && shift_) || (does.Act == Act::CapsLock && caps_lock_);
}

void FKeyboard::Redress() {
  for (std::size_t i = 0; i < used_; ++i)
    Dress(*slots_[i]);
}

String FKeyboard::CaptionOf(const LayoutKey& key) const {
  if (key.Act == Act::Type) return CharactersOf(key).Own;
  if (key.Act == Act::Page) return NextPage().Page;
  const String name(NameOf(key.Act));
  const auto found = Letters().Names.find(name);
  return found == Letters().Names.end() ? name : found->second;
}

krx::Font FKeyboard::FontFor(StringView caption, const Rect& place) const {
  krx::Font font = font_;
  font.Size = std::round(place.Height * kTextShare / kPerPoint);
  // One or two characters fit always; nothing is measured for them.
  if (caption.size() <= 2) return font;
  const Twips width = ThePlatform().MeasureText(font, caption).Width;
  const Twips most = place.Width * kTextWidth;
  if (width > most) font.Size = std::floor(font.Size * most / width);
  return font;
}

void FKeyboard::SetDiscreet(bool discreet) {
  if (std::exchange(discreet_, discreet) == discreet) return;
  CloseAccents();
  for (const auto& slot : slots_)
    slot->Key->Discreet = discreet;
}

}  // namespace krx::panel
