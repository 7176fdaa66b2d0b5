#include "ui/DirListBox.h"

#include <algorithm>
#include <utility>

#include "folders/FolderPath.h"
#include "ui/Form.h"

namespace krx::ui {

namespace {

constexpr int kAncestorsInView = 2;  // above the open directory

}  // namespace

void DirListBox::HighlightEntry(int entry) {
  SelectRow(OpenRow() + 1 + entry);
  EnsureVisible(SelectedRow());
}

int DirListBox::HighlightedEntry() const {
  const int row = SelectedRow();
  return row == kNoRow ? kOpenEntry : row - OpenRow() - 1;
}

DirListBox::DirListBox(Form& parent, String name, FolderReadings& readings)
    : RowList(parent, std::move(name)), readings_(readings) {
  readings_.Add(*this);
}

String DirListBox::List(int entry) const {
  const int row = OpenRow() + 1 + entry;
  if (row < 0 || row >= RowCount()) return {};
  if (row <= OpenRow()) return path_.substr(0, levels_[static_cast<std::size_t>(row)]);
  return folders::PathIn(path_, Cell(row, 0));
}

StringView DirListBox::Cell(int row, int) const {
  if (row > OpenRow()) return listing_->Folders()[static_cast<std::size_t>(row - OpenRow() - 1)];
  return folders::LastName(StringView(path_).substr(0, levels_[static_cast<std::size_t>(row)]));
}

RowList::Image DirListBox::RowImage(int row) const {
  return row > OpenRow() ? Image::Folder : Image::OpenFolder;
}

int DirListBox::Indent(int row) const {
  return std::min(row, OpenRow() + 1);
}

void DirListBox::Open(StringView path) {
  OpenFirst({folders::FullPath(path, Parent().ThePlatform().Files())});
}

void DirListBox::OpenBegun(const FolderReadings::Listing& listing) {
  readings_.Await(listing);
  Enter(listing);
}

void DirListBox::Enter(FolderReadings::Listing listing) {
  if (!Opening()) before_ = listing_;
  Show(std::move(listing));
}

void DirListBox::Show(FolderReadings::Listing listing) {
  String path = listing ? listing->Path() : String();
  const bool other = path != path_;
  listing_ = std::move(listing);
  if (!Opening()) before_.reset();
  path_ = std::move(path);
  levels_ = folders::Levels(path_);
  folders_ = listing_ ? static_cast<int>(listing_->Folders().size()) : 0;
  wish_.clear();
  RowsReplaced();
  if (listing_) SelectRow(OpenRow());
  TopRow = std::max(OpenRow() - kAncestorsInView, 0);
  if (other) Change();
}

void DirListBox::GoBack() {
  const String refused = path_;
  Show(std::exchange(before_, nullptr));
  Refused(refused);
}

void DirListBox::Highlight(StringView path) {
  const StringView name = folders::LastName(path);
  if (folders::PathIn(path_, name) != path) return;
  wish_ = name;
  wished_at_ = SelectedRow();
  HighlightFrom(0);
}

bool DirListBox::HighlightFrom(int first) {
  const auto begin = listing_->Folders().begin();
  const auto end = begin + folders_;
  const auto found = std::find(begin + first, end, wish_);
  if (found == end) {
    if (listing_->Complete()) wish_.clear();
    return false;
  }
  wish_.clear();
  ListIndex = static_cast<int>(found - begin);
  return true;
}

void DirListBox::ListingsGrew() {
  if (!listing_) return;
  if (listing_->Refusal()) return GoBack();
  if (listing_->Opened()) before_.reset();
  if (listing_->Path() != path_) {
    Show(listing_);
    return FellBack();
  }
  const int before = std::exchange(folders_, static_cast<int>(listing_->Folders().size()));
  if (folders_ != before) RowsAdded();
  if (wish_.empty()) return;
  if (SelectedRow() != wished_at_) return wish_.clear();
  if (HighlightFrom(before)) Highlighted();
}

}  // namespace krx::ui
