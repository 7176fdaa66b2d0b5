#pragma once

#include <deque>
#include <functional>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "folders/FileSystem.h"

namespace krx::headless {

// Drives with folders and files in memory, in the order in which a test made them. Names are told
// apart as on the machine: in any case. A folder may hang in several places, also inside itself.
class SimulatedFiles : public folders::FileSystem {
 public:
  SimulatedFiles();

  // How many entries, or answers of a probe, arrive with each Take; 0: all with the first.
  std::size_t Slice = 0;
  String CurrentFolder = u"C:\\";
  // Hears of every call; it may throw, which is the call's failure.
  std::function<void(const std::string&)> OnCall;
  // Whether a question, named as OnCall hears of it, is not answered yet; asked at each Take. Of a
  // reading that has begun to answer it is asked as "rest of ReadFolder(...)".
  std::function<bool(const std::string&)> Held;
  // Hears how long a caller waits for an answer that does not come.
  std::function<void(folders::Patience)> OnWait;

  // A new machine has the ready fixed drive C: and nothing on it.
  void AddDrive(String path, folders::DriveType type = folders::DriveType::Fixed, bool ready = true,
                String label = {});
  void RemoveDrive(StringView path);
  void SetReady(StringView drive, bool ready);
  // Makes the folders on the way, also a share ("\\server\share").
  void AddFolder(StringView path);
  void AddFile(StringView path);
  // The root of the share ("\\server\share") holds what `target` holds, which exists.
  void AddShare(StringView share, StringView target);
  // The folder `path` holds what `target` holds, which exists.
  void AddLink(StringView path, StringView target);
  void Remove(StringView path);
  // The folder may not be read from now on.
  void Deny(StringView path);

  std::vector<String> Drives() override;
  String CurrentDirectory() override;
  std::unique_ptr<folders::Question<folders::Drive>> AskDrive(StringView drive) override;
  std::unique_ptr<folders::Question<bool>> AskFolder(StringView path) override;
  std::unique_ptr<folders::FolderReader> ReadFolder(std::vector<String> paths) override;
  std::unique_ptr<folders::SubfolderProbe> ProbeSubfolders(StringView path,
                                                           std::vector<String> folders) override;

 private:
  struct Folder {
    std::vector<std::pair<String, Folder*>> Folders;
    std::vector<String> Files;
    bool Denied = false;
  };
  struct Volume {
    String Path;  // of a drive or a share
    folders::Drive Drive;
    Folder* Root = nullptr;
  };
  // A path taken apart: its volume (none: there is none) and the names below it.
  struct Place {
    bool Named = false;  // it can be the path of something
    Volume* On = nullptr;
    std::vector<String> Names;
  };

  template <class Answer>
  class Asked;
  class Reader;
  class Probe;

  // Gives the name of the call.
  std::string Call(const char* operation, StringView argument) const;
  bool IsHeld(const std::string& question, folders::Patience patience) const;
  Folder* NewFolder();
  Volume& AddVolume(String path, folders::Drive drive);
  Place Find(StringView path);
  // The number of the runtime error with which a folder is refused; 0 for one that can be read.
  std::int32_t RefusalOf(StringView path);
  folders::FolderPart Contents(StringView path);
  // The folder at a place; none when it or its medium is missing.
  static Folder* FolderAt(const Place& place);
  Folder& Make(const Place& place);

  std::deque<Folder> folders_;  // owns all; they may form circles
  std::deque<Volume> volumes_;
};

}  // namespace krx::headless
