#pragma once

#include <chrono>
#include <memory>
#include <vector>

#include "base/String.h"

namespace krx::folders {

enum class DriveType {
  Unknown = 0,
  Removable = 1,
  Fixed = 2,
  Network = 3,
  Optical = 4,
  RamDisk = 5
};

struct Drive {
  String Path;  // "C:"
  DriveType Type = DriveType::Unknown;
  bool operator==(const Drive&) const = default;
};

// A part of what a folder holds: names, in the order in which the file system gives them, without
// the folder itself and its parent.
struct FolderPart {
  std::vector<String> Folders;
  std::vector<String> Files;
  bool Complete = false;  // nothing more will come

  // Takes over the names of a part that comes behind this one.
  void Append(FolderPart&& more);
};

// Reads one folder in the background. Its end gives up reading and waits for nothing.
class FolderReader {
 public:
  virtual ~FolderReader() = default;
  // What has been read since the last call. Waits until the folder is complete, but no longer than
  // `patience`. A folder that goes away while it is read is complete with what it had.
  virtual FolderPart Take(std::chrono::milliseconds patience) = 0;
};

// Looks in the background which folders have subfolders, at each until the first one is found. Its
// end gives up and waits for nothing.
class SubfolderProbe {
 public:
  virtual ~SubfolderProbe() = default;
  // The answers found since the last call, in the order of the folders asked for. Waits until all
  // are there, but no longer than `patience`. A folder that cannot be read has none.
  virtual std::vector<bool> Take(std::chrono::milliseconds patience) = 0;
};

// Drives, folders and files of the machine as the dialogs see them. Paths are absolute, parted by
// backslashes and taken unit by unit as the file system names things, of any length; a bare drive
// ("D:") means its root. Operations raise Error when the system cannot answer.
class FileSystem {
 public:
  virtual ~FileSystem() = default;

  // In the system's order. Asks no medium, so a drive that is not ready delays nothing.
  virtual std::vector<Drive> Drives() = 0;
  // Whether a path (which may go on behind the drive) begins with a drive that the machine has.
  virtual bool DriveExists(StringView path) = 0;
  // Whether there is a medium that can be read.
  virtual bool DriveReady(StringView drive) = 0;
  // Name of the volume; empty for a volume without one and for a drive that is not ready.
  virtual String VolumeLabel(StringView drive) = 0;
  // The process's current directory, without a separator at its end but at a drive root.
  virtual String CurrentDirectory() = 0;
  virtual bool FolderExists(StringView path) = 0;
  virtual bool FileExists(StringView path) = 0;

  // Begins to read a folder. Runtime error 76 for a folder that does not exist, 68 for a drive that
  // is missing or not ready, 70 for a folder that may not be read.
  virtual std::unique_ptr<FolderReader> ReadFolder(StringView path) = 0;
  // Begins to look for subfolders in these folders of a folder.
  virtual std::unique_ptr<SubfolderProbe> ProbeSubfolders(StringView path,
                                                          std::vector<String> folders) = 0;
};

}  // namespace krx::folders
