// The layout that the touch dialogs share.

#include <algorithm>

#include "files/TouchForm.h"
#include "service/MKRXDialog.h"
#include "service/Skip.h"

namespace krx::files {

namespace {

using service::Skip;

// Lengths of these forms in twips.
constexpr Twips kHighestRow = 600;  // rows grow with the buttons, but no further
constexpr Twips kMarkerPadding = 240;
constexpr Twips kPictureInRow = 0.95f;  // of a row's height, with what is around the picture
constexpr Twips kGridRows = 9;          // in sight where the screen has room
constexpr Twips kFewestRows = 3;

}  // namespace

void TouchForm::CalcPositions() {
  Skip([this] { LayOut(); });
}

void TouchForm::SizeParts(std::span<ui::Label* const> headings,
                          std::span<ui::KRXComboBox* const> combos,
                          std::span<ui::KRXGrid* const> grids) {
  SizeCaptionAnyway();
  SizeAlike(keys_);
  for (ui::Label* const heading : headings) {
    Twips height = service::kUnmeasuredLine;
    Skip([&] { height = service::MeasureTextHeight(*heading); });
    heading->Height = height;
  }
  const Twips minimum = Shared().ButtonMinHeight;
  for (ui::KRXComboBox* const combo : combos)
    combo->Height = std::max(minimum, 0.0f);  // no less than its font needs
  for (ui::KRXGrid* const grid : grids)
    grid->RowMinHeight = std::clamp(minimum, ui::KRXGrid::kLowestRow, kHighestRow);
  Skip([this] {
    const Twips marker = ThePlatform().MeasureText(grdFolders.Font(), u" +").Width;
    grdFolders.SetColumnWidth(
        0, std::max(marker + kMarkerPadding, kPictureInRow * grdFolders.RowMinHeight()));
  });
}

void TouchForm::SizeField(ui::TextBox& field) const {
  Skip([&] {
    field.Height = 0;
    field.Height = std::max(field.Height(), std::min(Shared().ButtonMinHeight, ui::kFingerRow));
  });
}

Twips TouchForm::FormWidth(Twips wanted) const {
  return std::min(wanted, ThePlatform().WorkArea().Width);
}

Twips TouchForm::GridHeight(Twips top) const {
  const Twips below = kAboveButtons + keyOK.Height() + service::kMargin;
  const Twips room = ThePlatform().WorkArea().Height - top - below;
  const Twips row = grdFolders.RowMinHeight();
  return std::max(std::min(kGridRows * row, room), kFewestRows * row);
}

}  // namespace krx::files
