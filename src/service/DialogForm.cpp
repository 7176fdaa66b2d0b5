#include "service/DialogForm.h"

#include <algorithm>
#include <utility>

#include "base/Error.h"
#include "service/Layout.h"
#include "service/MKRXDialog.h"

namespace krx::service {

namespace {

constexpr Twips kCaptionIndent = 90;
constexpr Twips kCaptionShare = 3;   // of the work area's height is the caption line's at most
constexpr Twips kBesideTitle = 450;  // the widest margins of any dialog and the form's edges

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

String DialogForm::Text(StringView key) {
  return Texts().GetText(key, text_group_);
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

KRXDialog& DialogForm::DialogService() const {
  if (!Shared().DialogService) throw ObjectNotSet();
  return *Shared().DialogService;
}

void DialogForm::SetCaption(String encoded) {
  idxCaption.Text = std::move(encoded);
  Caption = ReplaceAll(idxCaption.WholeText(), u"\n", u" ");
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

void DialogForm::SizeCloseKey() {
  keyClose.Height = idxCaption.Height() - kCloseKeyInset;
  keyClose.Width = keyClose.Height();
  keyClose.Picture = CrossFor(keyClose.Height(), ThePlatform().TwipsPerPixel());
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
