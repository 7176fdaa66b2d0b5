#include "files/FDirectorySelectTouch.h"

#include "service/Skip.h"

namespace krx::files {

namespace {

using service::kMargin;

constexpr Twips kDirectoryFormWidth = 7200;  // where the screen has room

}  // namespace

FDirectorySelectTouch::FDirectorySelectTouch(service::Apartment& apartment)
    : TouchForm(apartment, u"FDirectorySelectTouch", u"cboDrives", u"txtDirectory") {
  OrderTabs(std::array<ui::Control*, 6>{&lbl[0], &txtDirectory, &lbl[1], &cboDrives, &lbl[2],
                                        &grdFolders});
  keyOK.Click = [this] {
    Confirmed = true;
    Hide();
  };
  keyCancel.Click = [this] { Hide(); };
}

String FDirectorySelectTouch::SelectDirectory(const service::DirectoryRequest& request) {
  Confirmed = false;
  BeginStart(request.StartDirectory);
  AllowChangeUp = request.AllowChangeUp;
  SetTitle(Resolved(request.Title), u"TitleSelectDirectory");
  Load();
  ShowModal();
  String result = Confirmed ? txtDirectory.Text() : String();
  Unload();
  return result;
}

void FDirectorySelectTouch::LoadLook() {
  const std::array<ui::Control*, 5> texts{&lbl[0], &lbl[1], &lbl[2], &cboDrives, &grdFolders};
  const std::array<ui::Control*, 1> inputs{&txtDirectory};
  LoadFonts(keys_, texts, inputs);
  LoadText(lbl[0], u"SelectedDirectory");
  LoadText(lbl[1], u"Drive");
  LoadText(lbl[2], u"Directories");
  LoadText(keyOK, u"Open");
  LoadText(keyCancel, u"Cancel");
}

void FDirectorySelectTouch::LayOut() {
  const std::array headings{&lbl[0], &lbl[1], &lbl[2]};
  const std::array combos{&cboDrives};
  const std::array<ui::KRXGrid*, 1> grids{&grdFolders};
  SizeParts(headings, combos, grids);
  const Twips width = FormWidth(kDirectoryFormWidth);
  const Twips inner = width - 2 * kMargin;
  SizeField(txtDirectory);
  Twips end =
      Stack(lbl[0], txtDirectory, {kMargin, 0, inner, txtDirectory.Height()}, idxCaption.Height());
  end = Stack(lbl[1], cboDrives, {kMargin, 0, inner, cboDrives.Height()}, end);
  const Twips top = Stack(lbl[2], grdFolders, {kMargin, 0, inner, 0}, end);
  grdFolders.Height = GridHeight(top);
  PlaceButtons(width, top + grdFolders.Height());
}

void FDirectorySelectTouch::DriveNotReady() {
  String notice;
  service::Skip([&] { notice = Text(u"DriveNotReady"); });
  grdFolders.AddRow({u" !", notice});
  grdFolders.Enabled = false;
}

}  // namespace krx::files
