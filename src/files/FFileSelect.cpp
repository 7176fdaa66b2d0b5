#include "files/FFileSelect.h"

#include <algorithm>

#include "files/FileFilter.h"
#include "service/Skip.h"

namespace krx::files {

using service::kMargin;
using service::Skip;

namespace {

// Widths of one of the two columns in twips; wider for large fonts.
constexpr Twips kNarrowestColumn = 3600;
constexpr Twips kColumnInFieldHeights = 12;

}  // namespace

FFileSelect::FFileSelect(service::Apartment& apartment)
    : MouseForm(apartment, u"FFileSelect", PathField::None) {
  lbl[0].Tag = u"FileName";
  lbl[1].Tag = u"Directories";
  lbl[2].Tag = u"FileType";
  lbl[3].Tag = u"Drive";
  OrderTabs(std::array<ui::Control*, 9>{&lbl[0], &txtFileName, &filSelect, &lbl[1], &dirSelect,
                                        &lbl[2], &cboFileType[0], &lbl[3], &drvSelect});
  cboFileType[1].Visible = false;
  keyOK.Enabled = false;
  txtFileName.Change = [this] { keyOK.Enabled = !txtFileName.Text().empty(); };
  cboFileType[0].SelectionChanged = [this] { FileTypeClick(); };
  filSelect.SelectionChanged = [this] { FileClick(); };
  filSelect.RowClick = [this](int) { FileClick(); };
  filSelect.RowDoubleClick = [this](int) { ChooseFile(); };
  txtFileName.LeftToRight = true;
  OnEnter(txtFileName, [this] { PressOK(); });
  OnEnter(filSelect, [this] { ChooseFile(); });
}

String FFileSelect::SelectFile(const service::FileRequest& request, service::FileDialogKind kind) {
  BeginStart(request.StartDirectory);
  SetFonts();
  SetTexts(request.FileName, request.StartDirectory, request.Title, kind);
  SetFilter(request.Filter);
  CalcPositions();
  Confine(!request.AllowChangeUp);
  ShowModal();
  return Result;
}

void FFileSelect::SetFonts() {
  const std::array<ui::Control*, 4> texts{&dirSelect, &drvSelect, &filSelect, &cboFileType[0]};
  const std::array<ui::Control*, 1> inputs{&txtFileName};
  LoadLook(texts, inputs);
}

void FFileSelect::SetTexts(const String& file_name, const String& start_directory,
                           const String& title, std::int32_t file_dialog) {
  const KindTexts texts = TextsOf(file_dialog);
  SetTitle(title, texts.Title);
  LoadTexts(texts.OK);
  OpenStart(start_directory);
  txtFileName.Text = file_name;
}

void FFileSelect::SetFilter(const String& filter) {
  String text = filter;
  Skip([&] { text = Resolved(filter); });
  FileTypes types = ParseFilter(text);
  for (String& description : types.Descriptions)
    cboFileType[0].AddItem(std::move(description), ui::ComboBox::kAtEnd);
  for (String& pattern : types.Patterns)
    cboFileType[1].AddItem(std::move(pattern), ui::ComboBox::kAtEnd);
  Skip([this] { cboFileType[0].Select(0); });
}

// A directory that cannot be read is shown without files.
void FFileSelect::ShowEntry(const String& path) {
  Skip([&] { filSelect.Path = path; });
}

void FFileSelect::DriveChosen(const String&) {
  ShowEntry(dirSelect.Path());
}

// A description without a pattern changes nothing.
void FFileSelect::FileTypeClick() {
  const auto& patterns = cboFileType[1].Items();
  const auto index = static_cast<std::size_t>(cboFileType[0].ListIndex());
  if (index < patterns.size()) filSelect.Pattern = patterns[index];
}

void FFileSelect::FileClick() {
  const int row = filSelect.SelectedRow();
  if (row != ui::RowList::kNoRow) txtFileName.Text = String(filSelect.Cell(row, 0));
}

void FFileSelect::ChooseFile() {
  if (filSelect.SelectedRow() == ui::RowList::kNoRow) return;
  FileClick();
  PressOK();
}

// Two columns of equal width: names on the left, places on the right. The directory list is as high
// as name field and file list together.
void FFileSelect::CalcPositions() {
  SizeCaption();
  SizeKeys();
  const Twips field = ThePlatform().TextBoxHeight(lbl[0].Font());
  const Twips column = std::max(kNarrowestColumn, kColumnInFieldHeights * field);
  const Twips width = InnerWidth(2 * column + kMargin);
  const Rect left{kMargin, 0, (width - kMargin) / 2, 0};
  const Rect right{left.Left + left.Width + kMargin, 0, left.Width, 0};

  const Twips name = Stack(lbl[0], txtFileName, left, idxCaption.Height());
  const Twips lists = Stack(lbl[1], dirSelect, {right.Left, 0, right.Width, DirectoryHeight()},
                            idxCaption.Height());
  filSelect.Place({left.Left, name + kHeadingToField, left.Width, lists - name - kHeadingToField});
  const Twips types = Stack(lbl[2], cboFileType[0], left, lists);
  const Twips drives = Stack(lbl[3], drvSelect, right, lists);
  PlaceNoticeAndButtons(width, std::max(types, drives));
}

}  // namespace krx::files
