#pragma once

#include "folders/FileSystem.h"

namespace krx::folders {

// What is known so far of one folder; it only grows, in the file system's order.
class FolderListing {
 public:
  // Begins to read; raises what FileSystem::ReadFolder raises.
  FolderListing(FileSystem& files, String path);

  const String& Path() const { return path_; }
  const std::vector<String>& Folders() const { return known_.Folders; }
  const std::vector<String>& Files() const { return known_.Files; }
  bool Complete() const { return known_.Complete; }

  // Takes over what has been read in the meantime, waiting for the rest no longer than `patience`.
  // True when that has made it complete.
  bool Take(std::chrono::milliseconds patience);

 private:
  const String path_;
  std::unique_ptr<FolderReader> reader_;
  FolderPart known_;
};

}  // namespace krx::folders
