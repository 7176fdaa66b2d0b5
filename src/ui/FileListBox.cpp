#include "ui/FileListBox.h"

#include <utility>

#include "folders/FolderPath.h"
#include "ui/Form.h"

namespace krx::ui {

void FileListBox::Filter(StringView pattern) {
  if (pattern == pattern_text_) return;
  pattern_text_ = pattern;
  pattern_ = folders::FilePattern(pattern, Parent().ThePlatform().Folding());
  ShowRows();
}

FileListBox::FileListBox(Form& parent, String name, FolderReadings& readings)
    : RowList(parent, std::move(name)), readings_(readings) {
  readings_.Add(*this);
}

StringView FileListBox::Cell(int row, int) const {
  const auto at = static_cast<std::size_t>(row);
  return listing_->Files()[pattern_.MatchesAll() ? at : matches_[at]];
}

void FileListBox::Show(StringView path) {
  String full = folders::FullPath(path, Parent().ThePlatform().Files());
  FolderReadings::Listing listing;
  std::exception_ptr failure;
  try {
    listing = readings_.Share(full);
  } catch (...) {
    failure = std::current_exception();
  }
  const bool same = listing && listing == listing_;
  path_ = std::move(full);
  if (same) return;
  listing_ = std::move(listing);
  ShowRows();
  if (failure) std::rethrow_exception(failure);
}

void FileListBox::ShowRows() {
  matches_.clear();
  looked_at_ = 0;
  shown_ = 0;
  TakeOver();
  RowsReplaced();
  TopRow = 0;
}

// Looks at the files that have come since the last time.
void FileListBox::TakeOver() {
  if (!listing_) return;
  const std::vector<String>& files = listing_->Files();
  if (!pattern_.MatchesAll()) {
    for (; looked_at_ < files.size(); ++looked_at_) {
      if (pattern_.Matches(files[looked_at_]))
        matches_.push_back(static_cast<std::uint32_t>(looked_at_));
    }
  }
  shown_ = static_cast<int>(pattern_.MatchesAll() ? files.size() : matches_.size());
}

void FileListBox::ListingsGrew() {
  const int before = shown_;
  TakeOver();
  if (shown_ != before) RowsAdded();
}

}  // namespace krx::ui
