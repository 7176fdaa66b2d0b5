#include "files/TouchForm.h"

#include <algorithm>
#include <utility>

#include "files/TouchPath.h"

namespace krx::files {

namespace {

constexpr int kNames = 1;            // the grid's column of folder names
constexpr int kMarkerInterval = 60;  // milliseconds; each round paints the list anew
constexpr std::uint32_t kRuntimeErrors = 0x800A0000u;
constexpr std::uint32_t kDeviceUnavailable = kRuntimeErrors + 68;

// The folder in which the start directory is highlighted; a root is shown itself.
String FolderAbove(StringView start) {
  return IsRoot(start) ? String(start) : UpToLast(start);
}

// The number of a runtime error, or the status of any other failure.
String NumberOf(const Error& error) {
  const bool numbered = (error.Status() & 0xFFFF0000u) == kRuntimeErrors;
  return ToString(static_cast<std::int32_t>(numbered ? error.Status() & 0xFFFFu : error.Status()));
}

}  // namespace

TouchForm::TouchForm(service::Apartment& apartment, String name, String drives, String path)
    : SelectionForm(apartment, std::move(name)),
      drives_(*this, std::move(drives)),
      path_(*this, std::move(path)),
      tmrMarkers_(*this, u"tmrMarkers") {
  grdFolders.Columns = {{.Title = {}, .Width = 0}, {.Title = {}, .Width = 0}};
  path_.LeftToRight = true;
  tmrMarkers_.Interval = kMarkerInterval;
  tmrMarkers_.Tick = [this] { TakeMarkers(folders::kNoPatience); };
  Appear = [this] {
    readings_.Refresh();
    TakeMarkers(folders::kNoPatience);
  };
  readings_.Add(*this);
  BindRows(
      grdFolders, [this](int row) { Touched(row); }, [this](int row) { Opened(row); });
  FocusControl = &grdFolders;
  LoadStep = [this] {
    LoadLook();
    CalcPositions();
    Report(u"GetDrives", [this] { GetDrives(); });
    Loaded = true;
  };
  drives_.SelectionChanged = [this] {
    if (!choosing_) OpenDrive();
  };
}

void TouchForm::BindRows(ui::KRXGrid& grid, std::function<void(int)> touched,
                         std::function<void(int)> opened) {
  grid.RowClick = touched;
  grid.SelectionChanged = [this, &grid, touched] {
    if (!highlighting_ && grid.SelectedRow() >= 0) touched(grid.SelectedRow());
  };
  grid.RowDoubleClick = opened;
  OnEnter(grid, [&grid, touched = std::move(touched), opened = std::move(opened)] {
    const int row = grid.SelectedRow();
    if (row < 0) return;
    touched(row);
    opened(row);
  });
}

void TouchForm::Report(StringView procedure, const std::function<void()>& body) {
  try {
    body();
  } catch (...) {
    const Error error = ErrorInFlight();
    ThePlatform().ShowMessageBox(NumberOf(error) + u": " + error.Description(), 0, procedure);
  }
}

// The start

void TouchForm::BeginStart(const String& directory) {
  StartDirectory = directory;
  try {
    folders::FileSystem& files = ThePlatform().Files();
    start_ = folders::WholePath(StartDirectory, files);
    start_exists_ = files.AskFolder(start_);
    latest_ = readings_.Begin({FolderAbove(start_) + u'\\'});
  } catch (...) {
    start_failure_ = std::current_exception();
  }
}

void TouchForm::GetDrives() {
  if (!start_exists_ && !start_failure_) BeginStart(StartDirectory);
  const String start = start_.substr(0, 2);
  const std::vector<String> all = ThePlatform().Files().Drives();
  drives_.Clear();
  for (const String& drive : all)
    drives_.AddItem(drive, ui::ComboBox::kAtEnd);
  const auto found = std::find(all.begin(), all.end(), start);
  if (found == all.end()) return AskDefaultDrive(0);
  choosing_ = true;
  drives_.Select(static_cast<int>(found - all.begin()));
  choosing_ = false;
  OpenStart();
}

// One after another, as the first one that is ready counts.
void TouchForm::AskDefaultDrive(int index) {
  if (index >= static_cast<int>(drives_.Items().size())) return;
  const folders::Patience patience =
      index == 0 ? ui::FolderReadings::kPatience : folders::kNoPatience;
  questions_.Await<folders::Drive>(
      ThePlatform().Files().AskDrive(drives_.Items()[static_cast<std::size_t>(index)]), patience,
      [this, index](const folders::Drive& drive) {
        Report(u"GetDrives", [&] { DriveKnown(index, drive); });
      });
}

void TouchForm::DriveKnown(int index, const folders::Drive& drive) {
  if (drive.Type != folders::DriveType::Fixed || !drive.Ready) return AskDefaultDrive(index + 1);
  choosing_ = true;
  drives_.Select(index);
  choosing_ = false;
  OpenStart();
}

// As long as nobody knows whether the start directory exists, its place is named without rows.
void TouchForm::OpenStart() {
  if (start_failure_) std::rethrow_exception(std::exchange(start_failure_, nullptr));
  NameStart();
  questions_.Await<bool>(std::move(start_exists_), ui::FolderReadings::kPatience,
                         [this](const bool& exists) {
                           Report(u"GetDrives", [&] { exists ? ShowStart() : OpenDrive(); });
                         });
}

void TouchForm::NameStart() {
  path_.Text = FolderAbove(start_);
  Depth = IsRoot(start_) ? 0 : LevelsBelowRoot(start_) - 1;
}

// The folder above the start directory is listed, with the start directory highlighted in it.
void TouchForm::ShowStart() {
  NameStart();
  PathReplaced();
  ListFolders();
  SelectFolder(start_.substr(std::min(path_.Text().size() + 1, start_.size())));
  PathShown();
  StartShown();
}

// Drives

void TouchForm::OpenDrive() {
  Leave();
  Depth = 0;
  path_.Text = drives_.Text();
  PathReplaced();
  grdFolders.Enabled = true;
  try {
    asked_ = Reading();
  } catch (...) {
    return DriveRefused(ErrorInFlight());
  }
  if (!TakeAsked() && asked_) {
    ClearFolders();
    asked_drive_ = true;
  }
  PathShown();
}

void TouchForm::DriveRefused(const Error& error) {
  if (error.Status() == kDeviceUnavailable) {
    ClearFolders();
    DriveNotReady();
  } else {
    FoldersFailed(error);
    PathShown();
  }
}

// Touches

void TouchForm::RefreshPath(StringView folder) {
  const String path = path_.Text();
  const std::int32_t level = LevelsBelowRoot(path);
  const bool has_parts = path.find(u'\\') != String::npos;
  if (folder == kParent) {
    if (level > Depth && has_parts) path_.Text = UpToLast(path);
  } else if (level == Depth) {
    path_.Text = path + u'\\' + String(folder);
  } else if (has_parts) {
    path_.Text = UpToLast(path) + u'\\' + String(folder);
  }
}

void TouchForm::SelectFolder(StringView folder) {
  Report(u"SelectFolder",
         [&] { wish_ = Highlight(grdFolders, kNames, folder) ? String() : String(folder); });
}

bool TouchForm::Highlight(ui::KRXGrid& grid, int column, StringView text) {
  for (int row = 0; row < grid.RowCount(); ++row) {
    if (grid.Cell(row, column) != text) continue;
    highlighting_ = true;
    grid.SelectRow(row);
    highlighting_ = false;
    grid.EnsureVisible(row);
    return true;
  }
  return false;
}

void TouchForm::Touched(int row) {
  const String before = path_.Text();
  const String folder(grdFolders.Cell(row, kNames));
  if (folder.empty()) return;
  RefreshPath(folder);
  if (path_.Text() == before) return;
  Leave();
  PathReplaced();
  PathShown();
}

// A folder without subfolders is not opened; it stays named in the path.
void TouchForm::Opened(int row) {
  if (grdFolders.Cell(row, kNames) == kParent) return OpenParent();
  if (ListFolders()) {
    ++Depth;
  } else {
    entering_ = asked_ != nullptr;
  }
}

void TouchForm::OpenParent() {
  Leave();
  --Depth;
  RefreshPath(kParent);
  PathReplaced();
  // Rows of the folder below would be touched as if they lay here.
  if (!ListFolders() && asked_) {
    ClearFolders();
    if (!IsRoot(path_.Text())) grdFolders.AddRow({String(), String(kParent)});
  }
  PathShown();
}

}  // namespace krx::files
