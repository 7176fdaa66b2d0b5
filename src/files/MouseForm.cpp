#include "files/MouseForm.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "folders/FolderPath.h"
#include "service/MKRXDialog.h"
#include "service/Skip.h"

namespace krx::files {

using service::kMargin;
using service::MaxValue;
using service::MeasureTextHeight;
using service::MeasureTextWidth;
using service::Skip;

namespace {

// Lengths of these forms in twips.
constexpr Twips kButtonWidthInHeights = 3.5f;
constexpr Twips kDirectoriesInDrives = 8;  // the directory list's height in drive lists

}  // namespace

MouseForm::MouseForm(service::Apartment& apartment, String name, PathField field)
    : SelectionForm(apartment, std::move(name)),
      navigation_(dirSelect, {Confined, [this](const String& path) { ShowEntry(path); },
                              field != PathField::None, [this] { StartShown(); }}) {
  idxFileListBox.Visible = false;
  LoadStep = [this] {
    Skip([this] { drvSelect.Refresh(); });
    drvSelect.Change = [this] { DriveChanged(); };
  };
  Appear = [this] { readings_.Refresh(); };
  dirSelect.Refused = [this](const String& path) { Refused(path); };
  keyOK.Click = [this] {
    navigation_.Settle();
    Result = Chosen();
    Unload();
  };
  keyCancel.Click = [this] { Unload(); };
  keyClose.Click = [this] { Unload(); };
}

// Drives and the start directory

// A drive that keeps its answer counts as ready meanwhile.
void MouseForm::DriveChanged() {
  const String drive = drvSelect.Drive();
  const bool ready = Skip([&] { dirSelect.Path = drive; });
  asked_drive_ = dirSelect.Opening() ? dirSelect.Path() : String();
  DriveAnswered(ready);
}

void MouseForm::DriveAnswered(bool ready) {
  dirSelect.Visible = ready;
  idxFileListBox.Visible = !ready;
  DriveChosen(drvSelect.Drive());
}

void MouseForm::Refused(const String& path) {
  if (std::exchange(asked_drive_, String()) == path) {
    DriveAnswered(false);
  } else {
    navigation_.Refused();
  }
}

void MouseForm::BeginStart(const String& directory) {
  StartDirectory = directory;
  folders::FileSystem& files = ThePlatform().Files();
  if (directory.empty()) Skip([&] { StartDirectory = files.CurrentDirectory(); });
  whole_ = StartDirectory;
  Skip([&] { whole_ = folders::WholePath(StartDirectory, files); });
  Skip([&] { begun_ = readings_.Begin(ConfinedNavigation::Beginnings(whole_, files)); });
}

void MouseForm::OpenStart(const String& directory) {
  if (!begun_) BeginStart(directory);
  ChooseStartDrive();
  navigation_.Start(StartDirectory, whole_, std::exchange(begun_, nullptr));
}

// The list is opened by its beginnings, not by the drive.
void MouseForm::ChooseStartDrive() {
  const String before = drvSelect.Drive();
  drvSelect.Change = [] {};
  Skip([this] { drvSelect.Drive = whole_ + u'\\'; });
  drvSelect.Change = [this] { DriveChanged(); };
  other_drive_ = drvSelect.Drive() != before;
}

// A start directory on another drive that is not ready leaves the notice in sight.
void MouseForm::StartShown() {
  if (!other_drive_) return;
  const bool ready = ui::DriveListBox::SameDrive(dirSelect.Path(), drvSelect.Drive());
  dirSelect.Visible = ready;
  idxFileListBox.Visible = !ready;
}

void MouseForm::PressOK() {
  if (keyOK.Enabled()) keyOK.Click();
}

// Texts and fonts

void MouseForm::LoadLook(Controls texts, Controls inputs) {
  Load();
  std::vector<ui::Control*> all{&idxFileListBox};
  for (ui::Label& heading : Headings())
    all.push_back(&heading);
  all.insert(all.end(), texts.begin(), texts.end());
  LoadFonts(keys_, all, inputs);
}

void MouseForm::LoadTexts(StringView ok_key) {
  idxFileListBox.Text = Text(u"DriveNotReady");
  for (ui::Label& heading : Headings())
    heading.Caption = Text(heading.Tag);
  if (!ok_key.empty()) keyOK.Caption = Text(ok_key);
  keyCancel.Caption = Text(u"Cancel");
}

// Layout

void MouseForm::SizeKeys() {
  const auto height = MaxValue({MeasureTextHeight(keyOK), MeasureTextHeight(keyCancel)});
  const auto width = MaxValue({MeasureTextWidth(keyOK), MeasureTextWidth(keyCancel)});
  for (ui::KRXKey* const key : keys_) {
    key->Height = service::ButtonHeight(height, Shared().ButtonMinHeight);
    key->Width = MaxValue({width + service::kButtonPadding, kButtonWidthInHeights * key->Height()});
  }
}

Twips MouseForm::InnerWidth(Twips narrowest) {
  Twips width = MaxValue({narrowest, service::RowWidth(keys_), WidthOfTitle() - 2 * kMargin});
  for (ui::Label& heading : Headings()) {
    heading.Height = MeasureTextHeight(heading);
    width = std::max(width, MeasureTextWidth(heading));
  }
  return width;
}

Twips MouseForm::DirectoryHeight() const {
  return kDirectoriesInDrives * ThePlatform().TextBoxHeight(drvSelect.Font());
}

void MouseForm::PlaceNoticeAndButtons(Twips inner_width, Twips bottom) {
  idxFileListBox.Place(dirSelect.Bounds());
  PlaceButtons(inner_width + 2 * kMargin, bottom);
}

// Confinement

void MouseForm::Confine(bool confined) {
  Confined = confined;
  drvSelect.Enabled = !confined;
  ShowUsable(drvSelect, !confined);
}

void MouseForm::ShowUsable(ui::Control& control, bool usable) {
  control.BackColor = usable ? ui::kWindowBackground : ui::kButtonFace;
  control.ForeColor = usable ? ui::kWindowText : ui::kButtonText;
}

}  // namespace krx::files
