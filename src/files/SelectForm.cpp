#include "files/SelectForm.h"

#include <algorithm>
#include <utility>

#include "service/MKRXDialog.h"
#include "service/Skip.h"
#include "ui/FolderPath.h"

namespace krx::files {

using service::MaxValue;
using service::MeasureTextHeight;
using service::MeasureTextWidth;
using service::Skip;

namespace {

// Lengths of these forms in twips.
constexpr Twips kAboveHeading = 60;
constexpr Twips kAboveButtons = 120;
constexpr Twips kButtonGap = 60;
constexpr Twips kButtonWidthInHeights = 3.5f;
constexpr Twips kDirectoriesInDrives = 8;  // the directory list's height in drive lists
constexpr char16_t kEnter = 13;

}  // namespace

SelectForm::SelectForm(service::Apartment& apartment, String name, PathField field)
    : DialogForm(apartment, std::move(name), host::kDialogTexts),
      navigation_(dirSelect,
                  {[this] { return !drvSelect.Enabled(); },
                   [this](const String& path) { ShowEntry(path); }, field != PathField::None}) {
  idxFileListBox.Visible = false;
  LoadStep = [this] { LoadLists(); };
  keyOK.Click = [this] {
    navigation_.Settle();
    Result = Chosen();
    Unload();
  };
  keyCancel.Click = [this] { Unload(); };
  keyClose.Click = [this] { Unload(); };
}

// The lists begin with the current directory; what cannot be read is left empty.
void SelectForm::LoadLists() {
  Skip([this] { drvSelect.Refresh(); });
  Skip([this] { dirSelect.Path = ThePlatform().Files().CurrentDirectory(); });
  drvSelect.Change = [this] { DriveChanged(); };
}

void SelectForm::DriveChanged() {
  const String drive = drvSelect.Drive();
  const bool ready = Skip([&] { dirSelect.Path = drive; });
  dirSelect.Visible = ready;
  idxFileListBox.Visible = !ready;
  DriveChosen(drive);
}

void SelectForm::OnEnter(ui::Control& control, std::function<void()> act) {
  control.KeyPress = [act = std::move(act)](char16_t& key) {
    if (key != kEnter) return;
    key = 0;
    act();
  };
}

void SelectForm::PressOK() {
  if (keyOK.Enabled()) keyOK.Click();
}

// Texts and fonts

void SelectForm::LoadFonts(Headings headings, std::span<ui::Control* const> controls) {
  Load();
  Skip([&] { idxCaption.FontClass = Shared().FontClassCaption; });
  for (ui::KRXKey* const key : {&keyOK, &keyCancel})
    Skip([&] { key->FontClass = Shared().FontClassButton; });
  Skip([&] { idxFileListBox.FontClass = Shared().FontClassText; });
  for (const Heading& heading : headings)
    Skip([&] { heading.Label.Font = ClassFont(Shared().FontClassText); });
  for (ui::Control* const control : controls)
    Skip([&] { control->Font = ClassFont(Shared().FontClassText); });
}

void SelectForm::LoadTitle(const String& title, StringView key) {
  SetCaption(title.empty() ? Text(key) : title);
}

void SelectForm::LoadTexts(Headings headings, StringView ok_key) {
  idxFileListBox.Text = Text(u"DriveNotReady");
  for (const Heading& heading : headings)
    heading.Label.Caption = Text(heading.TextKey);
  if (!ok_key.empty()) keyOK.Caption = Text(ok_key);
  keyCancel.Caption = Text(u"Cancel");
}

void SelectForm::OpenStart(const String& directory) {
  StartDirectory = directory;
  if (directory.empty()) Skip([&] { StartDirectory = ThePlatform().Files().CurrentDirectory(); });
  String whole = StartDirectory;
  Skip([&] { whole = ui::WholePath(StartDirectory, ThePlatform().Files()); });
  Skip([&] { drvSelect.Drive = whole + u'\\'; });
  navigation_.Start(StartDirectory, std::move(whole));
}

// Layout

void SelectForm::SizeKeys() {
  const auto height = MaxValue({MeasureTextHeight(keyOK), MeasureTextHeight(keyCancel)});
  const auto width = MaxValue({MeasureTextWidth(keyOK), MeasureTextWidth(keyCancel)});
  for (ui::KRXKey* const key : {&keyOK, &keyCancel}) {
    key->Height = service::ButtonHeight(height, Shared().ButtonMinHeight);
    key->Width = MaxValue({width + service::kButtonPadding, kButtonWidthInHeights * key->Height()});
  }
}

Twips SelectForm::InnerWidth(Twips narrowest, Headings headings) {
  Twips width = MaxValue(
      {narrowest, keyOK.Width() + kButtonGap + keyCancel.Width(), WidthOfTitle() - 2 * kMargin});
  for (const Heading& heading : headings)
    width = std::max(width, MeasureTextWidth(heading.Label));
  return width;
}

Twips SelectForm::DirectoryHeight() const {
  return kDirectoriesInDrives * ThePlatform().TextBoxHeight(drvSelect.Font());
}

Twips SelectForm::Stack(ui::Label& heading, ui::Control& field, const Rect& column, Twips above) {
  const Twips top = above + kAboveHeading;
  heading.Place({column.Left, top, column.Width, MeasureTextHeight(heading)});
  field.Place({column.Left, top + heading.Height() + kHeadingToField, column.Width, column.Height});
  return field.Top() + field.Height();
}

void SelectForm::Finish(Twips inner_width, Twips bottom) {
  idxFileListBox.Place(dirSelect.Bounds());
  const Twips right = kMargin + inner_width;
  keyOK.Top = bottom + kAboveButtons;
  keyCancel.Top = keyOK.Top();
  keyCancel.Left = right - keyCancel.Width();
  keyOK.Left = keyCancel.Left() - kButtonGap - keyOK.Width();
  Width = right + kMargin;
  Height = keyOK.Top() + keyOK.Height() + kMargin;
  PlaceCaption();
}

void ShowUsable(ui::Control& control, bool usable) {
  control.BackColor = usable ? ui::kWindowBackground : ui::kButtonFace;
  control.ForeColor = usable ? ui::kWindowText : ui::kButtonText;
}

}  // namespace krx::files
