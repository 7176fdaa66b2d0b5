#include "files/FSelectDirectory.h"

#include <algorithm>

namespace krx::files {

namespace {

constexpr Twips kNarrowest = 5160;          // between the margins, in twips
constexpr Twips kWidthInFieldHeights = 18;  // wider for large fonts

}  // namespace

FSelectDirectory::FSelectDirectory(service::Apartment& apartment)
    : MouseForm(apartment, u"FSelectDirectory", PathField::Shown) {
  lbl[0].Tag = u"SelectedDirectory";
  lbl[1].Tag = u"Drive";
  lbl[2].Tag = u"Directories";
  OrderTabs(std::array<ui::Control*, 6>{&lbl[0], &txtDirectory, &lbl[1], &drvSelect, &lbl[2],
                                        &dirSelect});
  txtDirectory.LeftToRight = true;
  OnEnter(txtDirectory, [this] { PressOK(); });
  FocusControl = &dirSelect;
}

String FSelectDirectory::SelectDirectory(const service::DirectoryRequest& request) {
  BeginStart(request.StartDirectory);
  SetFonts();
  SetTexts(request.StartDirectory, request.Title);
  CalcPositions();
  txtDirectory.Locked = !request.AllowChangeUp;
  ShowUsable(txtDirectory, request.AllowChangeUp);
  Confine(!request.AllowChangeUp);
  ShowModal();
  return Result;
}

void FSelectDirectory::SetFonts() {
  LoadLook(std::array<ui::Control*, 3>{&dirSelect, &drvSelect, &txtDirectory}, {});
}

void FSelectDirectory::SetTexts(const String& start_directory, const String& title) {
  SetTitle(title, u"TitleSelectDirectory");
  LoadTexts(u"OK");
  OpenStart(start_directory);
  txtDirectory.Text = dirSelect.Path();
}

void FSelectDirectory::CalcPositions() {
  SizeCaption();
  SizeKeys();
  const Twips field = ThePlatform().TextBoxHeight(txtDirectory.Font());
  const Twips width = InnerWidth(std::max(kNarrowest, kWidthInFieldHeights * field));
  const Rect column{service::kMargin, 0, width, 0};
  Twips end = Stack(lbl[0], txtDirectory, column, idxCaption.Height());
  end = Stack(lbl[1], drvSelect, column, end);
  end = Stack(lbl[2], dirSelect, {column.Left, 0, width, DirectoryHeight()}, end);
  PlaceNoticeAndButtons(width, end);
}

}  // namespace krx::files
