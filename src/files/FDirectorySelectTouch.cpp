#include "files/FDirectorySelectTouch.h"

#include "service/Skip.h"

namespace krx::files {

namespace {

constexpr Twips kWidth = 7200;  // where the screen has room

}  // namespace

FDirectorySelectTouch::FDirectorySelectTouch(service::Apartment& apartment)
    : TouchForm(apartment, u"FDirectorySelectTouch", u"cboDrives", u"txtDirectory") {
  // Each heading stands before its field, so that its access key leads there.
  int position = 0;
  for (ui::Control* const control : std::initializer_list<ui::Control*>{
           &lbl[0], &txtDirectory, &lbl[1], &cboDrives, &lbl[2], &grdFolders}) {
    control->TabIndex = position++;
  }
  FocusControl = &grdFolders;
  ScreenChanged = [this] { service::Skip([this] { CalcPositions(); }); };
  LoadStep = [this] {
    LoadTexts();
    ScreenChanged();
    GetDrives();
    EndStart();
  };
  keyOK.Click = [this] {
    Confirmed = true;
    Hide();
  };
  keyCancel.Click = [this] { Hide(); };
}

String FDirectorySelectTouch::SelectDirectory(const String& start_directory, bool allow_change_up,
                                              const String& title) {
  Confirmed = false;
  StartDirectory = start_directory;
  AllowChangeUp = allow_change_up;
  SetCaption(title.empty() ? Text(u"TitleSelectDirectory") : Resolved(title));
  Load();
  ShowModal();
  String result = Confirmed ? txtDirectory.Text() : String();
  Unload();
  return result;
}

void FDirectorySelectTouch::LoadTexts() {
  const std::array<ui::Control*, 5> texts{&lbl[0], &lbl[1], &lbl[2], &cboDrives, &grdFolders};
  const std::array<ui::Control*, 1> inputs{&txtDirectory};
  LoadFonts(texts, inputs);
  LoadText(lbl[0], u"SelectedDirectory");
  LoadText(lbl[1], u"Drive");
  LoadText(lbl[2], u"Directories");
  LoadText(keyOK, u"Open");
  LoadText(keyCancel, u"Cancel");
}

void FDirectorySelectTouch::CalcPositions() {
  const std::array combos{&cboDrives};
  const std::array grids{&grdFolders};
  SizeParts(combos, grids);
  const Twips width = FormWidth(kWidth);
  const Twips inner = width - 2 * kTouchMargin;
  service::Skip([this] { txtDirectory.Height = 0; });
  Twips end = Stack(lbl[0], txtDirectory, kTouchMargin, inner, idxCaption.Height());
  end = Stack(lbl[1], cboDrives, kTouchMargin, inner, end);
  grdFolders.Height = 0;
  const Twips top = Stack(lbl[2], grdFolders, kTouchMargin, inner, end);
  grdFolders.Height = GridHeight(top);
  Finish(width, top + grdFolders.Height());
}

void FDirectorySelectTouch::DriveNotReady() {
  String notice;
  service::Skip([&] { notice = Text(u"DriveNotReady"); });
  grdFolders.AddRow({u" !", notice});
  grdFolders.Enabled = false;
}

}  // namespace krx::files
