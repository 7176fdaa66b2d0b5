// Texts, fonts and layout that the touch dialogs share.

#include <algorithm>

#include "files/TouchForm.h"
#include "service/Layout.h"
#include "service/MKRXDialog.h"
#include "service/Skip.h"

namespace krx::files {

namespace {

using service::MaxValue;
using service::MeasureTextHeight;
using service::MeasureTextWidth;
using service::Skip;

// Lengths of these forms in twips.
constexpr Twips kAboveHeading = 60;
constexpr Twips kHeadingToField = 30;
constexpr Twips kAboveButtons = 120;
constexpr Twips kButtonGap = 60;
constexpr Twips kHighestRow = 600;  // rows grow with the buttons, but no further
constexpr Twips kMarkerPadding = 240;
constexpr Twips kGridRows = 9;  // in sight where the screen has room
constexpr Twips kFewestRows = 3;

}  // namespace

void TouchForm::LoadText(ui::KRXKey& key, StringView text_key) {
  Skip([&] { key.Caption = Text(text_key); });
}

void TouchForm::LoadText(ui::Label& label, StringView text_key) {
  Skip([&] { label.Caption = Text(text_key); });
}

void TouchForm::LoadFonts(std::span<ui::Control* const> texts,
                          std::span<ui::Control* const> inputs) {
  Skip([&] { idxCaption.FontClass = Shared().FontClassCaption; });
  for (ui::KRXKey* const key : {&keyOK, &keyCancel})
    Skip([&] { key->FontClass = Shared().FontClassButton; });
  for (ui::Control* const control : texts)
    Skip([&] { control->Font = ClassFont(Shared().FontClassText); });
  for (ui::Control* const control : inputs)
    Skip([&] { control->Font = ClassFont(Shared().FontClassInput); });
}

void TouchForm::SizeParts(std::span<ui::KRXComboBox* const> combos,
                          std::span<ui::KRXGrid* const> grids) {
  if (!Skip([this] { SizeCaption(service::kCaptionPadding); })) {
    idxCaption.Height = service::kSmallestCaption;
    SizeCloseKey();
  }
  const Twips minimum = Shared().ButtonMinHeight;
  Size key{};
  for (const ui::KRXKey* const each : {&keyOK, &keyCancel}) {
    Skip([&] {
      key = {std::max(key.Width, service::ButtonWidth(MeasureTextWidth(*each), minimum)),
             std::max(key.Height, service::ButtonHeight(MeasureTextHeight(*each), minimum))};
    });
  }
  keyOK.Place({0, 0, key.Width, key.Height});
  keyCancel.Place(keyOK.Bounds());
  for (ui::KRXComboBox* const combo : combos)
    combo->Height = std::max(minimum, 0.0f);  // no less than its font needs
  for (ui::KRXGrid* const grid : grids)
    grid->RowMinHeight = std::clamp(minimum, ui::KRXGrid::kFingerRow, kHighestRow);
  Skip([this] {
    const Twips marker = ThePlatform().MeasureText(grdFolders.Font(), u" +").Width;
    grdFolders.SetColumnWidth(0, marker + kMarkerPadding);
  });
}

Twips TouchForm::Stack(ui::Label& heading, ui::Control& field, Twips left, Twips width, Twips top) {
  Twips height = service::kUnmeasuredLine;
  Skip([&] { height = MeasureTextHeight(heading); });
  heading.Place({left, top + kAboveHeading, width, height});
  field.Place({left, heading.Top() + height + kHeadingToField, width, field.Height()});
  return field.Top() + field.Height();
}

Twips TouchForm::FormWidth(Twips wanted) const {
  return std::min(wanted, ThePlatform().WorkArea().Width);
}

Twips TouchForm::GridHeight(Twips top) const {
  const Twips below = kAboveButtons + keyOK.Height() + kTouchMargin;
  const Twips room = ThePlatform().WorkArea().Height - top - below;
  const Twips row = grdFolders.RowMinHeight();
  return std::max(std::min(kGridRows * row, room), kFewestRows * row);
}

void TouchForm::Finish(Twips width, Twips bottom) {
  keyOK.Top = bottom + kAboveButtons;
  keyCancel.Top = keyOK.Top();
  keyCancel.Left = width - kTouchMargin - keyCancel.Width();
  keyOK.Left = keyCancel.Left() - kButtonGap - keyOK.Width();
  Width = width;
  Height = keyOK.Top() + keyOK.Height() + kTouchMargin;
  PlaceCaption();
}

}  // namespace krx::files
