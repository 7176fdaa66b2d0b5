#pragma once

#include "folders/FileSystem.h"
#include "ports/win32/Background.h"

namespace krx::win32 {

// Reads a folder. Its answer is whether the folder can be opened.
class FolderReading : public Background {
 public:
  explicit FolderReading(String system_path) : path_(std::move(system_path)) {}

  // After the answer: ERROR_SUCCESS, or the system's code why the folder cannot be read.
  DWORD ErrorCode() const { return error_code_; }
  // What has been read since the last call.
  folders::FolderPart Take();

 private:
  void Run() override;
  void Publish(folders::FolderPart& batch);

  const String path_;
  DWORD error_code_ = ERROR_NOT_ENOUGH_MEMORY;
  folders::FolderPart read_;
};

// Looks which folders of a folder have subfolders.
class SubfolderProbing : public Background {
 public:
  SubfolderProbing(String system_path, std::vector<String> folders)
      : path_(std::move(system_path)), folders_(std::move(folders)) {}

  // The answers found since the last call; at the end none is missing.
  std::vector<bool> Take();

 private:
  void Run() override;

  const String path_;
  const std::vector<String> folders_;
  std::vector<bool> found_;
  std::size_t taken_ = 0;
};

// The reader's and the probe's side of work in the background. A reader takes work that has been
// started.
std::unique_ptr<folders::FolderReader> ReaderOf(std::shared_ptr<FolderReading> work);
std::unique_ptr<folders::SubfolderProbe> ProbeOf(std::shared_ptr<SubfolderProbing> work);

}  // namespace krx::win32
