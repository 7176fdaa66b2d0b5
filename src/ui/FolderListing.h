#pragma once

#include <memory>
#include <optional>
#include <vector>

#include "ui/Platform.h"
#include "ui/Timer.h"

namespace krx::ui {

// What is known so far of one folder; it only grows, in the file system's order.
class FolderListing {
 public:
  // Begins to read; raises what FileSystem::ReadFolder raises.
  FolderListing(FileSystem& files, String path);

  const String& Path() const { return path_; }
  const std::vector<String>& Folders() const { return known_.Folders; }
  const std::vector<String>& Files() const { return known_.Files; }
  bool Complete() const { return known_.Complete; }

  // Takes over what has been read in the meantime, waiting for the rest no longer than `patience`.
  // True when that has made it complete.
  bool Take(std::chrono::milliseconds patience);

 private:
  const String path_;
  std::unique_ptr<FolderReader> reader_;
  FolderPart known_;
};

// Reads the folders that the lists of a form show, each once however many lists show it. A small
// folder is complete at once; a large one goes on growing while the form is shown, with the
// hourglass as its sign.
class FolderReadings {
 public:
  // A list that hears when listings have grown.
  class Watcher {
   public:
    virtual void ListingsGrew() = 0;

   protected:
    ~Watcher() = default;
  };

  explicit FolderReadings(Form& form);

  // Both raise what FileSystem::ReadFolder raises. Open reads the folder afresh; Share gives the
  // latest reading of it that a list still holds, and reads it where there is none.
  std::shared_ptr<const FolderListing> Open(const String& path);
  std::shared_ptr<const FolderListing> Share(const String& path);

  // The lists live as long as their form does.
  void Add(Watcher& watcher) { watchers_.push_back(&watcher); }

 private:
  void Tick();
  bool TakeAll();
  void ShowProgress();

  Platform& platform_;
  Timer tmrReading_;
  int ticks_ = 0;  // since the lists have heard of something
  int due_ = 1;    // ticks until they hear again
  std::vector<std::weak_ptr<FolderListing>> listings_;
  std::vector<Watcher*> watchers_;
  std::optional<Hourglass> hourglass_;
};

}  // namespace krx::ui
