#pragma once

#include <memory>

#include "folders/FileSystem.h"
#include "ports/win32/Devices.h"
#include "ports/win32/Paths.h"

namespace krx::win32 {

// The drives, folders and files of this machine and its network. A dead drive or server counts as
// not there after some seconds, in which nobody waits. For use by one thread; ends without waiting.
class MachineFiles : public folders::FileSystem {
 public:
  explicit MachineFiles(std::chrono::milliseconds limit = Devices::kLimit)
      : devices_(std::make_shared<Devices>(limit)) {}

  std::vector<String> Drives() override;
  String CurrentDirectory() override;
  std::unique_ptr<folders::Question<folders::Drive>> AskDrive(StringView drive) override;
  std::unique_ptr<folders::Question<bool>> AskFolder(StringView path) override;
  std::unique_ptr<folders::FolderReader> ReadFolder(std::vector<String> paths) override;
  std::unique_ptr<folders::SubfolderProbe> ProbeSubfolders(StringView path,
                                                           std::vector<String> folders) override;

 private:
  String Resolve(StringView path) { return SystemPath(path, CurrentDirectory()); }

  const std::shared_ptr<Devices> devices_;
};

}  // namespace krx::win32
