#include "files/TouchForm.h"

#include <algorithm>
#include <utility>

#include "folders/FolderPath.h"
#include "service/Skip.h"

namespace krx::files {

namespace {

using folders::kNetwork;
using service::Skip;

constexpr StringView kParent = u"..";
constexpr StringView kHasFolders = u" +";
constexpr int kNames = 1;                         // the grid's column of folder names
constexpr int kMarkerInterval = 60;               // milliseconds; each round paints the list anew
constexpr std::chrono::milliseconds kAtOnce{20};  // small folders are complete by then
constexpr std::chrono::milliseconds kSlice{1000};

constexpr std::int32_t kSeparatorsOfShare = 3;  // \\server\share

bool IsBareDrive(StringView path) {
  return path.size() == 2 && path.ends_with(u':');
}

// Number of parts below the drive or the share.
std::int32_t LevelsBelowRoot(StringView path) {
  const auto separators = std::count(path.begin(), path.end(), u'\\');
  const std::int32_t of_root = path.starts_with(kNetwork) ? kSeparatorsOfShare : 0;
  return static_cast<std::int32_t>(separators) - of_root;
}

bool IsRoot(StringView path) {
  if (!path.starts_with(kNetwork)) return IsBareDrive(path);
  return LevelsBelowRoot(path) == 0 && !path.ends_with(u'\\');
}

String UpToLast(StringView path) {
  return String(path.substr(0, std::min(path.rfind(u'\\'), path.size())));
}

// The number of a runtime error, or the status of any other failure.
String NumberOf(const Error& error) {
  constexpr std::uint32_t kRuntimeErrors = 0x800A0000u;
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
  tmrMarkers_.Interval = kMarkerInterval;
  tmrMarkers_.Tick = [this] { TakeMarkers({}); };
  BindRows(
      grdFolders, [this](int row) { Touched(row); }, [this](int row) { Opened(row); });
  FocusControl = &grdFolders;
  LoadStep = [this] {
    LoadLook();
    CalcPositions();
    Report(u"GetDrives", [this] {
      GetDrives();
      if (drives_.ListIndex() >= 0) OpenStart();
    });
    drives_.SelectionChanged = [this] { OpenDrive(); };
    Loaded = true;
  };
}

void TouchForm::BindRows(ui::KRXGrid& grid, std::function<void(int)> touched,
                         std::function<void(int)> opened) {
  grid.RowClick = touched;
  grid.SelectionChanged = [this, &grid, touched] {
    if (!highlighting_ && grid.SelectedRow() >= 0) touched(grid.SelectedRow());
  };
  grid.RowDoubleClick = opened;
  OnEnter(grid, [&grid, touched = std::move(touched), opened] {
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

// Drives

void TouchForm::GetDrives() {
  folders::FileSystem& files = ThePlatform().Files();
  drives_.Clear();
  start_ = folders::WholePath(StartDirectory, files);
  const String start = start_.substr(0, 2);
  const std::vector<folders::Drive> all = files.Drives();
  int otherwise = -1;
  for (const folders::Drive& drive : all) {
    const bool candidate = otherwise < 0 && drive.Type == folders::DriveType::Fixed;
    if (candidate && files.DriveReady(drive.Path))
      otherwise = static_cast<int>(drives_.Items().size());
    drives_.AddItem(drive.Path, ui::ComboBox::kAtEnd);
  }
  const auto found = std::find_if(all.begin(), all.end(),
                                  [&](const folders::Drive& drive) { return drive.Path == start; });
  const int index = found == all.end() ? otherwise : static_cast<int>(found - all.begin());
  if (index >= 0) drives_.Select(index);
}

// The folder above the start directory is listed, with the start directory highlighted in it.
void TouchForm::OpenStart() {
  if (!ThePlatform().Files().FolderExists(start_)) return OpenDrive();
  String folder;
  if (IsRoot(start_)) {
    path_.Text = start_;
  } else {
    Depth = LevelsBelowRoot(start_) - 1;
    path_.Text = UpToLast(start_);
    folder = start_.substr(path_.Text().size() + 1);
  }
  PathReplaced();
  ListFolders();
  SelectFolder(folder);
  PathShown();
  StartShown();
}

void TouchForm::OpenDrive() {
  folders::FileSystem& files = ThePlatform().Files();
  Depth = 0;
  path_.Text = drives_.Text();
  PathReplaced();
  bool ready = false;
  Skip([&] { ready = files.DriveReady(path_.Text()); });
  grdFolders.Enabled = true;
  if (ready) {
    ListFolders();
    PathShown();
  } else {
    ClearFolders();
    DriveNotReady();
  }
}

// Folders

folders::FolderPart TouchForm::ReadWhole(StringView path) {
  const ui::Hourglass hourglass(ThePlatform());
  const auto reader = ThePlatform().Files().ReadFolder(path);
  folders::FolderPart all = reader->Take(kSlice);
  while (!all.Complete) {
    folders::FolderPart more = reader->Take(kSlice);
    std::move(more.Folders.begin(), more.Folders.end(), std::back_inserter(all.Folders));
    std::move(more.Files.begin(), more.Files.end(), std::back_inserter(all.Files));
    all.Complete = more.Complete;
  }
  return all;
}

bool TouchForm::ListFolders() {
  const String path = path_.Text();
  try {
    const std::vector<String> folders = ReadWhole(path + u'\\').Folders;
    if (folders.empty()) {
      const bool drive = IsBareDrive(path) && ThePlatform().Files().DriveExists(path);
      if (drive || (IsRoot(path) && !IsBareDrive(path))) ClearFolders();
      return false;
    }
    std::vector<std::vector<String>> rows;
    rows.reserve(folders.size() + 1);
    if (!IsRoot(path)) rows.push_back({String(), String(kParent)});
    for (const String& folder : folders)
      rows.push_back({String(), folder});
    DropMarkers();
    grdFolders.SuspendDrawing();
    grdFolders.SetRows(std::move(rows));
    grdFolders.TopRow = 0;
    FollowMarkers(folders);
    grdFolders.ResumeDrawing();
    return true;
  } catch (...) {
    FoldersFailed(ErrorInFlight());
    return false;
  }
}

void TouchForm::ClearFolders() {
  DropMarkers();
  grdFolders.Clear();
}

// Looking into every folder takes long, so the rows are shown without waiting for the answers.
void TouchForm::FollowMarkers(const std::vector<String>& folders) {
  last_marker_ = grdFolders.RowCount();
  next_marker_ = last_marker_ - static_cast<int>(folders.size());
  Skip([&] { probe_ = ThePlatform().Files().ProbeSubfolders(path_.Text() + u'\\', folders); });
  TakeMarkers(kAtOnce);
}

void TouchForm::TakeMarkers(std::chrono::milliseconds patience) {
  if (!probe_) return;
  grdFolders.SuspendDrawing();
  const bool answered = Skip([&] {
    for (const bool has_folders : probe_->Take(patience)) {
      if (has_folders) grdFolders.SetCell(next_marker_, 0, String(kHasFolders));
      ++next_marker_;
    }
  });
  grdFolders.ResumeDrawing();
  if (!answered || next_marker_ >= last_marker_) return DropMarkers();
  tmrMarkers_.Enabled = true;
}

void TouchForm::DropMarkers() {
  probe_.reset();
  tmrMarkers_.Enabled = false;
}

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
  Report(u"SelectFolder", [&] { Highlight(grdFolders, kNames, folder); });
}

void TouchForm::Highlight(ui::KRXGrid& grid, int column, StringView text) {
  for (int row = 0; row < grid.RowCount(); ++row) {
    if (grid.Cell(row, column) != text) continue;
    highlighting_ = true;
    grid.SelectRow(row);
    highlighting_ = false;
    return grid.EnsureVisible(row);
  }
}

void TouchForm::Touched(int row) {
  const String before = path_.Text();
  const String folder(grdFolders.Cell(row, kNames));
  if (folder.empty()) return;
  RefreshPath(folder);
  if (path_.Text() == before) return;
  PathReplaced();
  PathShown();
}

// A folder without subfolders is not opened; it stays named in the path.
void TouchForm::Opened(int row) {
  if (grdFolders.Cell(row, kNames) != kParent) {
    if (ListFolders()) ++Depth;
    return;
  }
  --Depth;
  RefreshPath(kParent);
  PathReplaced();
  ListFolders();
  PathShown();
}

}  // namespace krx::files
