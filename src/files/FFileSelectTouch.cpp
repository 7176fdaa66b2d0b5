#include "files/FFileSelectTouch.h"

#include <array>
#include <utility>

#include "service/Skip.h"
#include "ui/Keyboard.h"

namespace krx::files {

namespace {

using service::kMargin;

constexpr Twips kFileFormWidth = 12000;  // where the screen has room
constexpr Twips kColumnGap = 120;
constexpr StringView kAllFiles = u"Alle Dateien|*.*";
constexpr StringView kEverything = u"*.*";
constexpr StringView kBlanks = u"     ";  // between description and pattern of an entry

std::vector<String> Split(StringView text, StringView at) {
  std::vector<String> parts;
  for (std::size_t end; (end = text.find(at)) != StringView::npos;) {
    parts.emplace_back(text.substr(0, end));
    text.remove_prefix(end + at.size());
  }
  parts.emplace_back(text);
  return parts;
}

}  // namespace

FFileSelectTouch::FFileSelectTouch(service::Apartment& apartment)
    : TouchForm(apartment, u"FFileSelectTouch", u"cboDrivers", u"txtPath") {
  OrderTabs(std::array<ui::Control*, 9>{&lblPathName, &txtPath, &txtFullPath, &lblDrivers,
                                        &cboDrivers, &grdFolders, &lblExtention, &cboExtention,
                                        &grdFiles});
  txtFullPath.LeftToRight = true;
  txtFullPath.Visible = false;
  idxFileListBox.Visible = false;
  cboExtention.SelectionChanged = [this] { ReadExtention(cboExtention.Text()); };
  keyOK.Click = [this] {
    result_ = txtFullPath.Text();
    Unload();
  };
  keyCancel.Click = [this] {
    result_.clear();
    Unload();
  };
  BindRows(
      grdFiles, [this](int row) { FileTouched(row); }, [this](int) { keyOK.Click(); });
}

String FFileSelectTouch::OpenFile(const service::FileRequest& request) {
  BeginStart(request.StartDirectory);
  SetTexts(request.FileName, request.StartDirectory, request.Title, service::kFileOpen);
  SetFilter(request.Filter);
  ShowModal();
  return FileName();
}

void FFileSelectTouch::SetTexts(const String& file_name, const String& start_directory,
                                const String& title, std::int32_t file_dialog) {
  file_name_ = file_name;
  StartDirectory = start_directory;
  const KindTexts texts = TextsOf(file_dialog);
  SetTitle(Resolved(title), texts.Title);
  lblPathName.Caption = Text(u"FileName");
  idxFileListBox.Text = Text(u"DriveNotReady");
  // The grids have no access keys.
  grdFolders.Columns = {{.Title = {}, .Width = 0},
                        {.Title = ReplaceAll(Text(u"Directories"), u"&", u""), .Width = 0}};
  grdFiles.Columns = {{.Title = ReplaceAll(Text(u"FileName"), u"&", u""), .Width = 0}};
  lblDrivers.Caption = Text(u"Drive");
  lblExtention.Caption = Text(u"FileType");
  if (!texts.OK.empty()) keyOK.Caption = Text(texts.OK);
  keyCancel.Caption = Text(u"Cancel");
}

void FFileSelectTouch::SetFilter(const String& filter) {
  const String text = Resolved(filter.empty() ? String(kAllFiles) : filter);
  const std::vector<String> fields = Split(text, u"|");
  for (std::size_t i = 0; i + 1 < fields.size(); i += 2)
    cboExtention.AddItem(fields[i] + String(kBlanks) + fields[i + 1], ui::ComboBox::kAtEnd);
  if (!cboExtention.Items().empty()) cboExtention.Select(0);
}

// Texts of the form come with SetTexts; here is how they look.
void FFileSelectTouch::LoadLook() {
  const std::array<ui::Control*, 7> texts{&lblPathName,  &lblDrivers, &lblExtention, &cboDrivers,
                                          &cboExtention, &grdFolders, &grdFiles};
  const std::array<ui::Control*, 2> inputs{&txtPath, &txtFullPath};
  LoadFonts(keys_, texts, inputs);
}

void FFileSelectTouch::LayOut() {
  const std::array headings{&lblPathName, &lblDrivers, &lblExtention};
  const std::array combos{&cboDrivers, &cboExtention};
  const std::array<ui::KRXGrid*, 2> grids{&grdFolders, &grdFiles};
  SizeParts(headings, combos, grids);
  const Twips width = FormWidth(kFileFormWidth);
  const Twips inner = width - 2 * kMargin;
  const Twips column = (inner - kColumnGap) / 2;
  const Twips right = kMargin + column + kColumnGap;
  SizeField(txtPath);
  const Twips path =
      Stack(lblPathName, txtPath, {kMargin, 0, inner, txtPath.Height()}, idxCaption.Height());
  txtFullPath.Place(txtPath.Bounds());
  const Twips end = Stack(lblDrivers, cboDrivers, {kMargin, 0, column, cboDrivers.Height()}, path);
  Stack(lblExtention, cboExtention, {right, 0, column, cboExtention.Height()}, path);
  const Twips top = end + kMargin;
  const Twips height = GridHeight(top);
  grdFolders.Place({kMargin, top, column, height});
  grdFiles.Place({right, top, column, height});
  PlaceButtons(width, top + height);
}

// Files

// The text behind the last dot in lower case; the whole text without one.
String FFileSelectTouch::Extension(StringView name) const {
  return ThePlatform().Folding()(name.substr(name.rfind(u'.') + 1));
}

void FFileSelectTouch::ReadExtention(const String& entry) {
  Report(u"ReadExtention", [&] {
    extensions_.clear();
    if (entry.ends_with(kEverything)) {
      extensions_.insert(String(kEverything));
    } else if (const std::vector<String> parts = Split(entry, kBlanks); parts.size() > 1) {
      for (const String& pattern : Split(parts[1], u";"))
        extensions_.insert(Extension(pattern));
    }
  });
  if (Loaded) GetFiles();
}

bool FFileSelectTouch::FilterFile(StringView file_name) {
  bool passes = false;
  Report(u"FilterFile", [&] {
    passes =
        extensions_.contains(String(kEverything)) || extensions_.contains(Extension(file_name));
  });
  return passes;
}

void FFileSelectTouch::RefreshPath(StringView folder) {
  Report(u"RefreshPath", [&] { TouchForm::RefreshPath(folder); });
}

void FFileSelectTouch::GetFiles() {
  shown_.reset();
  wish_.clear();
  Report(u"GetFiles", [this] {
    grdFiles.Clear();
    shown_ = Reading();
    taken_ = 0;
    TakeFiles();
    grdFiles.TopRow = 0;
  });
}

// Looks at the files that have come since the last time.
void FFileSelectTouch::TakeFiles() {
  const std::vector<String>& files = shown_->Files();
  std::vector<std::vector<String>> rows;
  for (; taken_ < files.size(); ++taken_) {
    if (FilterFile(files[taken_])) rows.push_back({files[taken_]});
  }
  if (!rows.empty()) grdFiles.AddRows(std::move(rows));
}

void FFileSelectTouch::ReadingGrew() {
  if (!shown_) return;
  if (shown_->Refusal()) {
    const Error error = *std::exchange(shown_, nullptr)->Refusal();
    return Report(u"GetFiles", [&] { throw Error(error); });
  }
  TakeFiles();
  if (grdFiles.SelectedRow() >= 0) wish_.clear();
  if (!wish_.empty()) SelectFile(String(wish_));
}

void FFileSelectTouch::RefreshFullPath(StringView file_name) {
  Report(u"RefreshFullPath", [&] {
    const bool file = !file_name.empty();
    txtFullPath.Text = file ? txtPath.Text() + u'\\' + String(file_name) : String();
    txtFullPath.Visible = file;
    txtPath.Visible = !file;
    lblPathName.Caption = Text(file ? u"FileName" : u"SelectedDirectory");
  });
}

void FFileSelectTouch::SelectFile(StringView file_name) {
  Report(u"SelectFile",
         [&] { wish_ = Highlight(grdFiles, 0, file_name) ? String() : String(file_name); });
}

void FFileSelectTouch::FileTouched(int row) {
  RefreshFullPath(String(grdFiles.Cell(row, 0)));
}

void FFileSelectTouch::PathReplaced() {
  RefreshFullPath({});
}

void FFileSelectTouch::PathShown() {
  GetFiles();
}

void FFileSelectTouch::StartShown() {
  if (!file_name_.empty()) SelectFile(file_name_);
}

void FFileSelectTouch::DriveNotReady() {
  shown_.reset();
  grdFiles.Clear();
  ThePlatform().ShowMessageBox(idxFileListBox.Text(), 0, u"Information");
}

void FFileSelectTouch::FoldersFailed(const Error& error) {
  Report(u"GetSubFolders", [&] { throw error; });
}

}  // namespace krx::files
