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

  std::vector<folders::Drive> Drives() override;
  bool DriveExists(StringView path) override;
  bool DriveReady(StringView drive) override;
  String VolumeLabel(StringView drive) override;
  String CurrentDirectory() override;
  bool FolderExists(StringView path) override;
  bool FileExists(StringView path) override;
  std::unique_ptr<folders::FolderReader> ReadFolder(StringView path) override;
  std::unique_ptr<folders::SubfolderProbe> ProbeSubfolders(StringView path,
                                                           std::vector<String> folders) override;

 private:
  struct Folder {
    std::vector<std::pair<String, Folder*>> Folders;
    std::vector<String> Files;
    bool Denied = false;
  };
  struct Volume {
    folders::Drive Drive;
    String Label;
    bool Ready = true;
    Folder* Root = nullptr;
  };
  // A path taken apart: its volume (none: there is none) and the names below it.
  struct Place {
    bool Named = false;  // it can be the path of something
    Volume* On = nullptr;
    std::vector<String> Names;
  };

  void Call(const char* operation, StringView argument) const;
  Folder* NewFolder();
  Volume& AddVolume(folders::Drive drive, bool ready, String label);
  Place Find(StringView path);
  // The folder at a place; none when it or its medium is missing.
  static Folder* FolderAt(const Place& place);
  Folder& Make(const Place& place);

  std::deque<Folder> folders_;  // owns all; they may form circles
  std::deque<Volume> volumes_;
};

}  // namespace krx::headless
