#include "service/DialogForm.h"

#include <algorithm>
#include <map>
#include <optional>
#include <utility>

#include "base/Error.h"
#include "panel/ScreenKeyboard.h"
#include "service/MKRXDialog.h"
#include "ui/Keyboard.h"

namespace krx::service {

namespace {

constexpr Twips kCaptionIndent = 90;
constexpr Twips kCaptionShare = 3;   // of the work area's height is the caption line's at most
constexpr Twips kBesideTitle = 450;  // the widest margins of any dialog and the form's edges
constexpr Size kUnmeasuredKey{1215, 375};

}  // namespace

DialogForm::DialogForm(Apartment& apartment, String name, std::int32_t text_group)
    : Form(apartment.Platform, std::move(name)), apartment_(apartment), text_group_(text_group) {
  lblSize.Visible = false;
  lblSize.UseMnemonic = false;  // it measures texts as they are shown
  keyClose.TabStop = false;     // Esc presses it; Tab stays with the dialog's own controls
  CancelKey = &keyClose;
  idxCaption.BackColor = ui::kActiveCaption;
  idxCaption.ForeColor = ui::kActiveCaptionText;
  idxCaption.Indent = kCaptionIndent;
  idxCaption.Height = kSmallestCaption;  // should its text not be measurable

  Skip([this] { Panel = apartment_.Runtime.ReadPanelSettings(); });
  if (Panel.Keyboard != KeyboardUse::Never) PutKeyboardBeside();
  ScreenChanged = [this] { CalcPositions(); };
  AsksRightToLeft = [this] { return AsciiUpper(OptionalText(u"TextDirection")) == u"RTL"; };
  CapsLockWords = [this, known = std::optional<String>()]() mutable {
    if (!known) known = OptionalText(u"CapsLockOn");
    return *known;
  };
  FontClassResolver = [this](StringView font_class) { return ClassFont(font_class); };
  UnloadStep = [this] {
    texts_.reset();
    fonts_.reset();
  };
  Paint = [this] { PaintStep(); };
  idxCaption.MouseDown = [this](int button, int, Twips x, Twips y) {
    if (button != ui::kLeftButton) return;
    drag_from_ = Point{x, y};
  };
  idxCaption.MouseMove = [this](int button, int, Twips x, Twips y) {
    CaptionMouseMove(button, x, y);
  };
  idxCaption.MouseUp = [this](int button, int, Twips, Twips) {
    if (button == ui::kLeftButton) drag_from_.reset();
  };
}

void DialogForm::PutKeyboardBeside() {
  Beside = std::make_unique<panel::ScreenKeyboard>(
      *this, panel::ScreenKeyboard::Source{
                 [this] { return Texts().GetText(u"KeyboardLayout", host::kDialogTexts); },
                 [this] { return ClassFont(Shared().FontClassButton); }});
}

String DialogForm::Text(StringView key) {
  return Texts().GetText(key, text_group_);
}

String DialogForm::OptionalText(StringView key) {
  String text(key);
  Skip([&] { text = Texts().GetText(key, host::kDialogTexts); });
  return text == key ? String() : text;
}

String DialogForm::Resolved(const String& text) {
  return text.starts_with(u'@') ? Texts().ResolveText(text) : text;
}

host::TextService& DialogForm::Texts() {
  if (!texts_) texts_ = apartment_.Runtime.CreateTextService();
  return *texts_;
}

host::FontService& DialogForm::Fonts() {
  if (!fonts_) fonts_ = apartment_.Runtime.CreateFontService();
  return *fonts_;
}

krx::Font DialogForm::ClassFont(StringView font_class) {
  Fonts().SelectFontClass(font_class);
  return Fonts().GetFont();
}

void DialogForm::LoadFonts(Keys keys, Controls texts, Controls inputs) {
  // Asked once for each class; what it could not say then it is not asked again.
  std::map<String, std::optional<krx::Font>> known;
  const auto load = [&](ui::Control& control, const String& font_class) {
    const bool asked = known.contains(font_class);
    std::optional<krx::Font>& font = known[font_class];
    if (!asked) Skip([&] { font = ClassFont(font_class); });
    if (font) Skip([&] { control.Font = *font; });
  };
  load(idxCaption, Shared().FontClassCaption);
  for (ui::KRXKey* const key : keys)
    load(*key, Shared().FontClassButton);
  for (ui::Control* const control : texts)
    load(*control, Shared().FontClassText);
  for (ui::Control* const control : inputs)
    load(*control, Shared().FontClassInput);
}

void DialogForm::OrderTabs(Controls controls) {
  int position = 0;
  for (ui::Control* const control : controls)
    control->TabIndex = position++;
}

void DialogForm::OnEnter(ui::Control& control, std::function<void()> next) {
  control.KeyPress = [next = std::move(next)](char16_t& key) {
    if (key != ui::kKeyEnter) return;
    key = 0;
    next();
  };
}

KRXDialog& DialogForm::DialogService() const {
  if (!Shared().DialogService) throw ObjectNotSet();
  return *Shared().DialogService;
}

void DialogForm::SetCaption(String encoded) {
  idxCaption.Text = std::move(encoded);
  Caption = ReplaceAll(idxCaption.WholeText(), u"\n", u" ");
}

void DialogForm::SetTitle(const String& title, StringView key) {
  if (!title.empty() || !key.empty()) SetCaption(title.empty() ? Text(key) : title);
}

// No title is longer than the screen is wide, nor so high that nothing is left for the dialog.
void DialogForm::SizeCaption(Twips padding) {
  const Rect area = ThePlatform().WorkArea();
  const Twips highest = area.Height / kCaptionShare;
  idxCaption.Room = Size{area.Width, highest};
  idxCaption.Height =
      CaptionHeight(MeasureTextHeight(idxCaption), Shared().CaptionMinHeight, padding);
  SizeCloseKey();
  idxCaption.Room = Size{area.Width - keyClose.Width() - kBesideTitle, highest};
}

void DialogForm::SizeCaptionAnyway(Twips padding) {
  if (!Skip([&] { SizeCaption(padding); })) SizeCloseKey();
}

void DialogForm::SizeCloseKey() {
  keyClose.Height = idxCaption.Height() - kCloseKeyInset;
  keyClose.Width = keyClose.Height();
  keyClose.Picture = CrossFor(keyClose.Height(), ThePlatform().TwipsPerPixel());
}

void DialogForm::SizeKey(ui::KRXKey& key) {
  const Twips minimum = Shared().ButtonMinHeight;
  key.Place({0, 0, kUnmeasuredKey.Width, kUnmeasuredKey.Height});
  Skip([&] { key.Height = ButtonHeight(MeasureTextHeight(key), minimum); });
  Skip([&] { key.Width = ButtonWidth(MeasureTextWidth(key), minimum); });
}

Size DialogForm::SizeAlike(Keys keys) {
  Size largest{};
  for (ui::KRXKey* const key : keys) {
    SizeKey(*key);
    largest = {std::max(largest.Width, key->Width()), std::max(largest.Height, key->Height())};
  }
  for (ui::KRXKey* const key : keys)
    key->Place({0, 0, largest.Width, largest.Height});
  return largest;
}

Twips DialogForm::WidthOfTitle() const {
  return MeasureTextWidth(idxCaption) + 2 * idxCaption.Indent() + keyClose.Width() +
         kCloseKeyMargin;
}

void DialogForm::PlaceCaption() {
  idxCaption.Place({0, 0, Width(), idxCaption.Height()});
  const Twips edge = Width() - kCloseKeyMargin;
  keyClose.Left = edge - keyClose.Width();
  keyClose.Top = (idxCaption.Height() - keyClose.Height()) / 2;
  // A dialog of a width of its own may be narrower than its title.
  const Twips room = keyClose.Left() - idxCaption.Indent();
  const Size known = idxCaption.Room();
  idxCaption.Room = Size{known.Width > 0 ? std::min(known.Width, room) : room, known.Height};
}

void DialogForm::CaptionMouseMove(int button, Twips x, Twips y) {
  // A release that went elsewhere shows in the next movement without the button.
  if ((button & ui::kLeftButton) == 0) drag_from_.reset();
  if (button != ui::kLeftButton || !drag_from_) return;
  Move(Left() + x - drag_from_->X, Top() + y - drag_from_->Y);
}

void DialogForm::PaintStep() {
  if (ui::Control* const control = std::exchange(FocusControl, nullptr)) control->SetFocus();
}

}  // namespace krx::service
