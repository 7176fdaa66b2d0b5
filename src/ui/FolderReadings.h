#pragma once

#include <memory>
#include <optional>
#include <vector>

#include "folders/FolderListing.h"
#include "ui/Platform.h"
#include "ui/Timer.h"

namespace krx::ui {

// Reads the folders that the lists of a form show, each once however many lists show it. A small
// folder is complete at once; a large one, or one on a slow medium, goes on growing while the form
// is shown, with the hourglass as its sign.
class FolderReadings {
 public:
  using Listing = std::shared_ptr<const folders::FolderListing>;

  // How long an act of the operator waits for an answer: folders of usual size are read by then,
  // and nobody notices.
  static constexpr folders::Patience kPatience{20};

  // A list that hears when listings have grown, or were opened or refused.
  class Watcher {
   public:
    virtual void ListingsGrew() = 0;

   protected:
    ~Watcher() = default;
  };

  explicit FolderReadings(Form& form);

  // Begins to read the first of these folders that can be opened, and waits for nothing.
  Listing Begin(std::vector<String> paths);
  // Waits a moment: for all of the folder, or for its opening alone while the form is still to be
  // shown, since making its windows takes longer than reading. Raises the refusal of a listing that
  // nothing can come of any more.
  void Await(const Listing& listing);
  // Tells the lists at once of what has come.
  void Refresh();
  // Both read and wait. Open reads afresh; Share gives the latest reading of the folder that
  // somebody still holds, and opens it where there is none.
  Listing Open(std::vector<String> paths);
  Listing Share(const String& path);

  // The lists live as long as their form does.
  void Add(Watcher& watcher) { watchers_.push_back(&watcher); }

 private:
  void Tick();
  void Tell();
  bool TakeAll();
  bool TakeFirst(folders::FolderListing& listing) const;
  void ShowProgress();

  Form& form_;
  Platform& platform_;
  Timer tmrReading_;
  int ticks_ = 0;  // since the lists have heard of something
  int due_ = 1;    // ticks until they hear again
  // What somebody has waited for the lists of others are still to hear of.
  bool untold_ = false;
  std::vector<std::weak_ptr<folders::FolderListing>> listings_;
  std::vector<Watcher*> watchers_;
  std::optional<Hourglass> hourglass_;
};

}  // namespace krx::ui
