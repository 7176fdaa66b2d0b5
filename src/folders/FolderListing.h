#pragma once

#include "base/Error.h"
#include "folders/FileSystem.h"

namespace krx::folders {

// What is known so far of one folder; it only grows, in the file system's order.
class FolderListing {
 public:
  // Begins to read the first of these folders that can be opened.
  FolderListing(FileSystem& files, std::vector<String> paths);

  // The folder that is read; until it is open the one that is hoped for most.
  const String& Path() const { return paths_[known_.Opened.value_or(0)]; }
  bool Opened() const { return known_.Opened.has_value(); }
  // Why the folder cannot be read; none as long as it is hoped for.
  const std::optional<Error>& Refusal() const { return refusal_; }
  const std::vector<String>& Folders() const { return known_.Folders; }
  const std::vector<String>& Files() const { return known_.Files; }
  bool Complete() const { return known_.Complete; }
  // Nothing will change any more.
  bool Ended() const { return !reader_; }

  // Takes over what has been read in the meantime, waiting for the rest no longer than `patience`.
  // True when that has brought an opening, a refusal or the end.
  bool Take(Patience patience);

 private:
  const std::vector<String> paths_;
  std::unique_ptr<FolderReader> reader_;
  FolderPart known_;
  std::optional<Error> refusal_;
};

}  // namespace krx::folders
