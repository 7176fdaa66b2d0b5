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
  if (more.Opened) Opened = more.Opened;
  Complete = more.Complete;
}

FolderListing::FolderListing(FileSystem& files, std::vector<String> paths)
    : paths_(std::move(paths)), reader_(files.ReadFolder(paths_)) {}

bool FolderListing::Take(Patience patience) {
  if (!reader_) return false;
  const bool opened = Opened();
  try {
    known_.Append(reader_->Take(patience));
  } catch (const Error& error) {
    refusal_ = error;
  }
  if (refusal_ || known_.Complete) reader_.reset();
  return Ended() || Opened() != opened;
}

}  // namespace krx::folders
