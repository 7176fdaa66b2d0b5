#pragma once

#include "folders/FileSystem.h"

// Questions to a file system, asked and answered in one call.
namespace krx::test {

// More than any folder of the tests takes on the slowest machine.
inline constexpr std::chrono::milliseconds kLong{300000};

inline bool FolderExists(folders::FileSystem& files, StringView path) {
  return files.AskFolder(path)->Take(kLong).value();
}

inline folders::Drive DriveOf(folders::FileSystem& files, StringView drive) {
  return files.AskDrive(drive)->Take(kLong).value();
}

// All of a folder; raises why it cannot be read.
inline folders::FolderPart ReadAll(folders::FileSystem& files, StringView path) {
  return files.ReadFolder({String(path)})->Take(kLong);
}

// Waits until a folder is open, whatever it holds.
inline void AwaitOpening(folders::FolderReader& reader) {
  while (!reader.Take(std::chrono::milliseconds(1)).Opened) {
  }
}

// Whether each of these folders of a folder has subfolders.
inline std::vector<bool> HaveFolders(folders::FileSystem& files, StringView path,
                                     const std::vector<String>& folders) {
  std::vector<bool> have(folders.size());
  for (const folders::Marker& marker : files.ProbeSubfolders(path, folders)->Take(kLong))
    have.at(marker.Folder) = marker.HasFolders;
  return have;
}

}  // namespace krx::test
