#include "panel/ScreenKeyboard.h"

#include <algorithm>
#include <utility>

#include "base/Error.h"
#include "ui/ComboBox.h"
#include "ui/EditBoxes.h"
#include "ui/Platform.h"

namespace krx::panel {

namespace {

constexpr StringView kEnglish = u"en";
constexpr StringView kOtherPages[] = {u"symbols", u"accents"};
constexpr std::size_t kLongestName = 32;

bool IsTextField(const ui::Control& control) {
  if (control.Kind() != ui::Kind::TextBox && control.Kind() != ui::Kind::PasswordBox) return false;
  return control.Visible() && control.Enabled() &&
         !static_cast<const ui::EditBox&>(control).Locked();
}

bool IsAnswer(const ui::Form& form, const ui::Control& control) {
  return control.Kind() == ui::Kind::Key && control.Visible() && &control != form.CancelKey;
}

Rect Around(const Rect& one, const Rect& other) {
  const Twips left = std::min(one.Left, other.Left);
  const Twips top = std::min(one.Top, other.Top);
  return {left, top, std::max(one.Left + one.Width, other.Left + other.Width) - left,
          std::max(one.Top + one.Height, other.Top + other.Height) - top};
}

// Names come from a text of the runtime and become parts of file names.
bool IsName(StringView name) {
  return !name.empty() && name.size() <= kLongestName &&
         std::all_of(name.begin(), name.end(), [](char16_t unit) {
           const char16_t lower = AsciiLower(unit);
           return (lower >= u'a' && lower <= u'z') || (unit >= u'0' && unit <= u'9') ||
                  unit == u'-';
         });
}

// A layout by its name; what is wrong with it is added to the fault.
std::optional<KeyboardLayout> Read(ui::Platform& platform, StringView name, String& fault) {
  const std::string text = platform.KeyboardLayout(name);
  if (text.empty()) return std::nullopt;
  try {
    return ParseLayout(text);
  } catch (const LayoutError& error) {
    const std::string words = error.what();
    fault = u"KRXKeyboard." + String(name) + u".txt, " + String(words.begin(), words.end());
    return std::nullopt;
  }
}

}  // namespace

std::vector<KeyboardLayout> PagesFor(ui::Platform& platform, StringView name) {
  std::vector<KeyboardLayout> pages;
  String fault;
  const auto add = [&](StringView layout) {
    auto page = Read(platform, layout, fault);
    if (page) pages.push_back(std::move(*page));
    return page.has_value();
  };
  if (!IsName(name) || !add(name)) add(kEnglish);
  if (pages.empty()) return pages;
  for (const StringView other : kOtherPages)
    add(other);
  if (!fault.empty()) pages.front().Names[String(NameOf(Act::Space))] = fault;
  return pages;
}

ScreenKeyboard::ScreenKeyboard(ui::Form& dialog, Source source)
    : dialog_(dialog), source_(std::move(source)) {}

void ScreenKeyboard::Pressed(const ui::Control& control, bool by_finger) {
  if (!IsTextField(control)) return;
  by_finger_ = by_finger;
  put_away_in_ = nullptr;
}

const ui::Control* ScreenKeyboard::Field() const {
  const ui::Control* const active = dialog_.ActiveControl();
  return active && IsTextField(*active) ? active : nullptr;
}

bool ScreenKeyboard::Wanted(const ui::Control& field) const {
  if (&field == put_away_in_) return false;
  return dialog_.Panel.Keyboard == KeyboardUse::Always ||
         (dialog_.Panel.Keyboard == KeyboardUse::Touch && by_finger_);
}

// An open list hangs where its field is, so the form stays there until it is closed.
bool ScreenKeyboard::Settle() {
  const ui::Control* const active = dialog_.ActiveControl();
  if (active && active->Kind() == ui::Kind::ComboBox &&
      static_cast<const ui::ComboBox*>(active)->DroppedDown)
    return false;
  const ui::Control* const field = Field();
  if (field != put_away_in_) put_away_in_ = nullptr;
  if (!dialog_.Visible() || !field || !Wanted(*field)) {
    Leave();
  } else {
    Show(*field);
  }
  return true;
}

void ScreenKeyboard::Leave() {
  if (board_ && board_->Visible()) {
    board_->Rest();
    board_->Hide();
  }
  MoveBack();
}

void ScreenKeyboard::Drop() {
  board_.reset();
}

void ScreenKeyboard::Make() {
  String name;
  krx::Font font;
  try {
    name = source_.LayoutName();
  } catch (const Error&) {
    name = kEnglish;
  }
  try {
    font = source_.KeyFont();
  } catch (const Error&) {
    font = {};
  }
  std::vector<KeyboardLayout> pages = PagesFor(dialog_.ThePlatform(), name);
  if (pages.empty()) return;
  board_ = std::make_unique<FKeyboard>(dialog_, std::move(pages), std::move(font));
  board_->HidePressed = [this] {
    by_finger_ = false;
    put_away_in_ = Field();
    Leave();
  };
}

void ScreenKeyboard::Show(const ui::Control& field) {
  const Rect area = dialog_.ThePlatform().WorkArea();
  if (board_ && area != area_) Drop();  // its windows are made for another screen
  area_ = area;
  if (!board_) Make();
  if (!board_) return;
  const Situation situation = Look();
  const Shape shape = ShapeFor(situation);
  board_->SetDiscreet(field.Kind() == ui::Kind::PasswordBox);
  if (shape != shape_ || !board_->Visible()) board_->Arrange(shape);
  shape_ = shape;
  MoveForm(situation, field);
  board_->ShowBeside();
}

// The form as it stands without a keyboard: where it was, or where the operator has moved it to
// since.
Situation ScreenKeyboard::Look() const {
  const bool ours = moved_ && moved_->Now == dialog_.Top();
  const Twips home = ours ? moved_->Home : dialog_.Top();
  Situation situation;
  situation.Area = area_;
  situation.Pixel = dialog_.ThePlatform().TwipsPerPixel();
  situation.Form = {dialog_.Left(), home, dialog_.Width() + kEdges, dialog_.Height() + kEdges};
  for (const ui::Control* const control : dialog_.TabOrder()) {
    Rect place = control->Bounds();
    place.Left += dialog_.Left() + kEdges / 2;
    place.Top += home + kEdges / 2;
    if (IsTextField(*control)) situation.Fields.push_back(place);
    if (!IsAnswer(dialog_, *control)) continue;
    situation.Buttons = situation.Buttons ? Around(*situation.Buttons, place) : place;
  }
  const KeyboardLayout& letters = board_->Letters();
  situation.KeysPerRow = letters.Width;
  situation.Rows = static_cast<int>(letters.RowCount(false));
  situation.SpareRows = static_cast<int>(letters.RowCount(true)) - situation.Rows;
  return situation;
}

void ScreenKeyboard::MoveForm(const Situation& situation, const ui::Control& field) {
  Rect place = field.Bounds();
  place.Top += situation.Form.Top + kEdges / 2;
  const Twips home = situation.Form.Top;
  const Twips top = TopFor(situation, shape_, place);
  if (top == home && !moved_) return;
  dialog_.KeptInReach = Inside(situation, top);
  dialog_.Move(dialog_.Left(), top);
  moved_ = Moved{home, dialog_.Top()};
}

// A form that the operator has moved himself stays where it is.
void ScreenKeyboard::MoveBack() {
  if (!moved_) return;
  const Moved moved = *std::exchange(moved_, std::nullopt);
  dialog_.KeptInReach = true;
  if (dialog_.Top() == moved.Now) dialog_.Move(dialog_.Left(), moved.Home);
}

}  // namespace krx::panel
