#pragma once

#include <memory>
#include <optional>
#include <vector>

#include "folders/FolderListing.h"
#include "ui/Platform.h"
#include "ui/Timer.h"

namespace krx::ui {

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

  // Both raise what folders::FileSystem::ReadFolder raises. Open reads the folder afresh; Share
  // gives the latest reading of it that a list still holds, and reads it where there is none.
  std::shared_ptr<const folders::FolderListing> Open(const String& path);
  std::shared_ptr<const folders::FolderListing> Share(const String& path);

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
  std::vector<std::weak_ptr<folders::FolderListing>> listings_;
  std::vector<Watcher*> watchers_;
  std::optional<Hourglass> hourglass_;
};

}  // namespace krx::ui
