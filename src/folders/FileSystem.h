#pragma once

#include <chrono>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

#include "base/String.h"

namespace krx::folders {

// Whatever may wait for a medium, a server or a drive is a question: it is answered in the
// background, and nobody has to wait for it. What keeps quiet for longer than the file system's
// limit, some seconds, counts as not there.

using Patience = std::chrono::milliseconds;
inline constexpr Patience kNoPatience{0};

// A question that has been asked. Its end gives it up, cancels what it waits for and itself waits
// for nothing.
template <class Answer>
class Question {
 public:
  virtual ~Question() = default;
  // The answer; none while it is open. Waits for it no longer than `patience`.
  virtual std::optional<Answer> Take(Patience patience) = 0;
};

enum class DriveType {
  Unknown = 0,
  Removable = 1,
  Fixed = 2,
  Network = 3,
  Optical = 4,
  RamDisk = 5
};

// Of a network drive only its type is asked: an unreachable server would take long to answer more.
struct Drive {
  DriveType Type = DriveType::Unknown;
  bool Ready = false;  // there is a medium that can be read
  String Label;        // name of the volume; empty without one
  bool operator==(const Drive&) const = default;
};

// A part of what a folder holds: names, in the order in which the file system gives them, without
// the folder itself and its parent.
struct FolderPart {
  std::vector<String> Folders;
  std::vector<String> Files;
  // Position of the folder that is read among those asked for; none before it is open.
  std::optional<std::size_t> Opened;
  bool Complete = false;  // nothing more will come

  // Takes over the names of a part that comes behind this one.
  void Append(FolderPart&& more);
};

// Reads one folder in the background. Its end gives up as that of a question does.
class FolderReader {
 public:
  virtual ~FolderReader() = default;
  // What has been read since the last call. Waits until the folder is complete, but no longer than
  // `patience`. A folder that goes away while it is read is complete with what it had.
  // Runtime error 76 for a folder that does not exist, 68 for a drive that is missing or not ready,
  // 70 for a folder that may not be read.
  virtual FolderPart Take(Patience patience) = 0;
};

// Whether a folder has subfolders.
struct Marker {
  std::size_t Folder = 0;  // its position among the folders asked for
  bool HasFolders = false;
  bool operator==(const Marker&) const = default;
};

// Looks in the background which folders have subfolders, at each until the first one is found. Its
// end gives up as that of a question does.
class SubfolderProbe {
 public:
  virtual ~SubfolderProbe() = default;
  // The answers found since the last call, in the order of their coming: a folder that does not
  // answer delays no other. Waits until all are there, but no longer than `patience`. A folder that
  // cannot be read has none.
  virtual std::vector<Marker> Take(Patience patience) = 0;
};

// Drives, folders and files of the machine as the dialogs see them. Paths are absolute, parted by
// backslashes and taken unit by unit as the file system names things, of any length; a bare drive
// ("D:") means its root. No operation waits for a medium; they raise Error when the system cannot
// even take a question.
class FileSystem {
 public:
  virtual ~FileSystem() = default;

  // "C:", "D:" ... in the system's order.
  virtual std::vector<String> Drives() = 0;
  // The process's current directory, without a separator at its end but at a drive root.
  virtual String CurrentDirectory() = 0;

  virtual std::unique_ptr<Question<Drive>> AskDrive(StringView drive) = 0;
  // Whether a folder of this path exists.
  virtual std::unique_ptr<Question<bool>> AskFolder(StringView path) = 0;
  // Begins to read the first of these folders that can be opened. Where none can, the refusal is
  // that of the first one.
  virtual std::unique_ptr<FolderReader> ReadFolder(std::vector<String> paths) = 0;
  // Begins to look for subfolders in these folders of a folder.
  virtual std::unique_ptr<SubfolderProbe> ProbeSubfolders(StringView path,
                                                          std::vector<String> folders) = 0;
};

}  // namespace krx::folders
