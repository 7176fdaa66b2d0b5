#pragma once

#include "folders/FileSystem.h"
#include "ports/win32/Devices.h"

namespace krx::win32 {

// The drives, folders and files of this machine and its network. Whatever asks a medium does so in
// the background with a limit to the wait, so a dead drive or server costs some seconds once and
// then counts as not ready. For use by one thread; ends without waiting.
class MachineFiles : public folders::FileSystem {
 public:
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
  enum class Kind { Nothing, Folder, File };

  String Resolve(StringView path);
  Kind KindOf(StringView path);

  Devices devices_;
};

}  // namespace krx::win32
