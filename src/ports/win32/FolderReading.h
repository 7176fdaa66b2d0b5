#pragma once

#include <atomic>
#include <set>

#include "folders/FileSystem.h"
#include "ports/win32/Devices.h"
#include "ports/win32/Refusals.h"

namespace krx::win32 {

class FolderScan;

// Reads the first of some folders that can be opened. Its answer is whether one can.
class FolderReading : public Background {
 public:
  explicit FolderReading(std::vector<String> system_paths) : paths_(std::move(system_paths)) {}

  // The folder that is being opened or read, as a position among the paths.
  std::size_t At() const { return at_; }
  // After the answer: why the first folder cannot be read, where none can.
  Refusal Answered() const { return refusal_; }
  // What has been read since the last call.
  folders::FolderPart Take();

 private:
  void Run() override;
  void Read(FolderScan& scan);
  void Publish(folders::FolderPart& batch);

  const std::vector<String> paths_;
  std::atomic<std::size_t> at_ = 0;
  Refusal refusal_ = Refusal::PathNotFound;
  folders::FolderPart read_;
};

// The side of who waits for a reading. A device that keeps quiet is passed over for the next folder
// on another one.
class FolderTaker : public folders::FolderReader {
 public:
  // Begins to read. A system path may be empty for what cannot name a folder.
  FolderTaker(std::shared_ptr<Devices> devices, std::vector<String> system_paths);
  ~FolderTaker() override;

  folders::FolderPart Take(folders::Patience patience) override;

 private:
  void Begin(std::size_t first);
  void PassOver();
  void Open();

  const std::shared_ptr<Devices> devices_;
  const std::vector<String> paths_;
  std::set<String> quiet_;           // devices that were passed over
  Refusal refusal_ = Refusal::None;  // of the first path
  Devices::Clock::time_point begun_;
  std::vector<std::size_t> tried_;  // positions of the work's paths
  std::shared_ptr<FolderReading> work_;
  bool opened_ = false;
};

}  // namespace krx::win32
