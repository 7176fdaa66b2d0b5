// How the touch dialogs read folders: rows, and markers of those that have subfolders.

#include <utility>

#include "files/TouchForm.h"
#include "files/TouchPath.h"
#include "service/Skip.h"

namespace krx::files {

namespace {

using service::Skip;

// The path that is shown for a folder that is read.
String ShownPath(const String& read) {
  return read.substr(0, read.size() - 1);
}

// Rows of the way up and of folders, without markers.
std::vector<std::vector<String>> RowsOf(bool way_up, const std::vector<String>& folders,
                                        std::size_t first) {
  std::vector<std::vector<String>> rows;
  rows.reserve(folders.size() - first + 1);
  if (way_up) rows.push_back({String(), String(kParent)});
  for (std::size_t i = first; i < folders.size(); ++i)
    rows.push_back({String(), folders[i]});
  return rows;
}

}  // namespace

TouchForm::Listing TouchForm::Reading() {
  const String path = path_.Text() + u'\\';
  if (!latest_ || latest_->Path() != path) latest_ = readings_.Begin({path});
  readings_.Await(latest_);
  return latest_;
}

// The operator goes elsewhere: what he waited for does not matter any more.
void TouchForm::Leave() {
  questions_.Drop();
  latest_.reset();
  asked_.reset();
  entering_ = false;
  asked_drive_ = false;
  wish_.clear();
}

bool TouchForm::ListFolders() {
  asked_.reset();
  try {
    asked_ = Reading();
  } catch (...) {
    FoldersFailed(ErrorInFlight());
    return false;
  }
  return TakeAsked();
}

bool TouchForm::TakeAsked() {
  if (asked_->Folders().empty()) {
    if (asked_->Ended() && IsRoot(ShownPath(std::exchange(asked_, nullptr)->Path())))
      ClearFolders();
    return false;
  }
  listed_ = std::exchange(asked_, nullptr);
  ShowFolders();
  return true;
}

void TouchForm::AskedRefused() {
  const Error error = *std::exchange(asked_, nullptr)->Refusal();
  if (std::exchange(asked_drive_, false)) {
    DriveRefused(error);
  } else {
    FoldersFailed(error);
  }
}

void TouchForm::AskedCame() {
  if (std::exchange(entering_, false)) ++Depth;
  if (!wish_.empty()) SelectFolder(String(wish_));
}

void TouchForm::ListingsGrew() {
  if (asked_ && asked_->Refusal()) {
    AskedRefused();
  } else if (asked_) {
    if (TakeAsked()) AskedCame();
  } else if (listed_) {
    AddFolders();
  }
  ReadingGrew();
}

void TouchForm::ShowFolders() {
  DropMarkers();
  taken_ = listed_->Folders().size();
  probed_ = false;
  grdFolders.SuspendDrawing();
  grdFolders.SetRows(RowsOf(!IsRoot(ShownPath(listed_->Path())), listed_->Folders(), 0));
  grdFolders.TopRow = 0;
  if (listed_->Complete()) FollowMarkers();
  grdFolders.ResumeDrawing();
}

void TouchForm::AddFolders() {
  const std::vector<String>& folders = listed_->Folders();
  const bool more = taken_ < folders.size();
  if (more) grdFolders.AddRows(RowsOf(false, folders, std::exchange(taken_, folders.size())));
  if (!wish_.empty() && grdFolders.SelectedRow() >= 0) wish_.clear();
  if (more && !wish_.empty()) SelectFolder(String(wish_));
  if (listed_->Complete() && !probed_) FollowMarkers();
}

void TouchForm::ClearFolders() {
  DropMarkers();
  listed_.reset();
  grdFolders.Clear();
}

// Looking into every folder takes long, so the rows are shown without waiting for the answers; what
// is known when the form appears is seen with them.
void TouchForm::FollowMarkers() {
  probed_ = true;
  unmarked_ = listed_->Folders().size();
  Skip(
      [&] { probe_ = ThePlatform().Files().ProbeSubfolders(listed_->Path(), listed_->Folders()); });
  TakeMarkers(Visible() ? ui::FolderReadings::kPatience : folders::kNoPatience);
}

void TouchForm::TakeMarkers(folders::Patience patience) {
  if (!probe_) return;
  const auto first = grdFolders.RowCount() - static_cast<int>(listed_->Folders().size());
  grdFolders.SuspendDrawing();
  const bool answered = Skip([&] {
    for (const folders::Marker& marker : probe_->Take(patience)) {
      const int row = first + static_cast<int>(marker.Folder);
      if (marker.HasFolders) grdFolders.SetCell(row, 0, String(kHasFolders));
      --unmarked_;
    }
  });
  grdFolders.ResumeDrawing();
  if (!answered || unmarked_ == 0) return DropMarkers();
  tmrMarkers_.Enabled = true;
}

void TouchForm::DropMarkers() {
  probe_.reset();
  tmrMarkers_.Enabled = false;
}

}  // namespace krx::files
