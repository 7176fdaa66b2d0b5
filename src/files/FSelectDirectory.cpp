#include "files/FSelectDirectory.h"

#include <algorithm>

namespace krx::files {

namespace {

constexpr Twips kNarrowest = 5160;          // between the margins, in twips
constexpr Twips kWidthInFieldHeights = 18;  // wider for large fonts

}  // namespace

FSelectDirectory::FSelectDirectory(service::Apartment& apartment)
    : SelectForm(apartment, u"FSelectDirectory", PathField::Shown) {
  // Each heading stands before its field, so that its access key leads there.
  int position = 0;
  for (ui::Control* const control : std::initializer_list<ui::Control*>{
           &lbl[0], &txtDirectory, &lbl[1], &drvSelect, &lbl[2], &dirSelect}) {
    control->TabIndex = position++;
  }
  OnEnter(txtDirectory, [this] { PressOK(); });
  ScreenChanged = [this] { CalcPositions(); };
  FocusControl = &dirSelect;
}

std::array<SelectForm::Heading, 3> FSelectDirectory::Rows() {
  return {{{lbl[0], u"SelectedDirectory"}, {lbl[1], u"Drive"}, {lbl[2], u"Directories"}}};
}

void FSelectDirectory::SetFonts() {
  const std::array<ui::Control*, 3> controls{&dirSelect, &drvSelect, &txtDirectory};
  LoadFonts(Rows(), controls);
}

void FSelectDirectory::SetTexts(const String& start_directory, const String& title) {
  LoadTitle(title, u"TitleSelectDirectory");
  LoadTexts(Rows(), u"OK");
  OpenStart(start_directory);
  txtDirectory.Text = dirSelect.Path();
}

void FSelectDirectory::CalcPositions() {
  SizeCaption(service::kCaptionPadding);
  SizeKeys();
  const Twips field = ThePlatform().TextBoxHeight(txtDirectory.Font());
  const Twips width = InnerWidth(std::max(kNarrowest, kWidthInFieldHeights * field), Rows());
  const Rect column{kMargin, 0, width, 0};
  Twips end = Stack(lbl[0], txtDirectory, column, idxCaption.Height());
  end = Stack(lbl[1], drvSelect, column, end);
  end = Stack(lbl[2], dirSelect, {kMargin, 0, width, DirectoryHeight()}, end);
  Finish(width, end);
}

}  // namespace krx::files
