#pragma once

#include <atomic>
#include <utility>

#include "folders/FileSystem.h"
#include "ports/win32/Devices.h"

namespace krx::win32 {

// Looks which folders of a folder have subfolders; several of them may share the folders.
class SubfolderProbing : public Background {
 public:
  struct Folders {
    Folders(String path, std::vector<String> names)
        : Path(std::move(path)), Names(std::move(names)) {}

    const String Path;  // the system path of the folder above
    const std::vector<String> Names;
    std::atomic<std::size_t> Next = 0;  // the first one that nobody has looked into
  };
  explicit SubfolderProbing(std::shared_ptr<Folders> folders) : folders_(std::move(folders)) {}

  // Moves the answers since the last call behind the others.
  void Take(std::vector<folders::Marker>& markers);

 private:
  void Run() override;

  const std::shared_ptr<Folders> folders_;
  std::vector<folders::Marker> found_;
};

// The side of who waits for markers. Where a folder keeps its answer, another thread goes on with
// those behind it.
class ProbeTaker : public folders::SubfolderProbe {
 public:
  ProbeTaker(String system_path, std::vector<String> folders);
  ~ProbeTaker() override;

  std::vector<folders::Marker> Take(folders::Patience patience) override;

 private:
  void Collect(std::vector<folders::Marker>& markers);
  void Start();
  void GiveUp(std::vector<folders::Marker>& markers);
  bool AllEnded() const;

  const std::shared_ptr<SubfolderProbing::Folders> folders_;
  const Devices times_;
  std::vector<std::shared_ptr<SubfolderProbing>> works_;
  std::vector<bool> answered_;
  std::size_t missing_;
  Devices::Clock::time_point progress_ = Devices::Clock::now();
};

}  // namespace krx::win32
