#include "folders/FolderListing.h"

#include <iterator>
#include <utility>

namespace krx::folders {

namespace {

void MoveBehind(std::vector<String>& known, std::vector<String>& more) {
  if (known.empty()) {
    known = std::move(more);
  } else {
    known.insert(known.end(), std::move_iterator(more.begin()), std::move_iterator(more.end()));
  }
}

}  // namespace

void FolderPart::Append(FolderPart&& more) {
  MoveBehind(Folders, more.Folders);
  MoveBehind(Files, more.Files);
  Complete = more.Complete;
}

FolderListing::FolderListing(FileSystem& files, String path)
    : path_(std::move(path)), reader_(files.ReadFolder(path_)) {}

bool FolderListing::Take(std::chrono::milliseconds patience) {
  if (!reader_) return false;
  known_.Append(reader_->Take(patience));
  if (known_.Complete) reader_.reset();
  return known_.Complete;
}

}  // namespace krx::folders
