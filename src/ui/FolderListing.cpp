#include "ui/FolderListing.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace krx::ui {

namespace {

// Folders of usual size are read by then, and nobody notices the wait.
constexpr std::chrono::milliseconds kPatience{20};
// Milliseconds between two looks at a reading, doubled with each: the first rows come soon; later a
// look costs a repaint and takes the time from the reading.
constexpr int kFirstInterval = 10;
constexpr int kLastInterval = 80;

void MoveBehind(std::vector<String>& known, std::vector<String>& more) {
  if (known.empty()) {
    known = std::move(more);
  } else {
    known.insert(known.end(), std::move_iterator(more.begin()), std::move_iterator(more.end()));
  }
}

}  // namespace

FolderListing::FolderListing(FileSystem& files, String path)
    : path_(std::move(path)), reader_(files.ReadFolder(path_)) {}

void FolderListing::Take(std::chrono::milliseconds patience) {
  if (!reader_) return;
  FolderPart part = reader_->Take(patience);
  MoveBehind(known_.Folders, part.Folders);
  MoveBehind(known_.Files, part.Files);
  known_.Complete = part.Complete;
  if (known_.Complete) reader_.reset();
}

FolderReadings::FolderReadings(Form& form)
    : platform_(form.ThePlatform()), tmrReading_(form, u"tmrReading") {
  tmrReading_.Tick = [this] {
    tmrReading_.Interval = std::min(2 * tmrReading_.Interval(), kLastInterval);
    TakeAll();
  };
}

std::shared_ptr<const FolderListing> FolderReadings::Open(const String& path) {
  auto listing = std::make_shared<FolderListing>(platform_.Files(), path);
  listing->Take(kPatience);
  listings_.push_back(listing);
  tmrReading_.Interval = kFirstInterval;
  ShowProgress();
  return listing;
}

std::shared_ptr<const FolderListing> FolderReadings::Share(const String& path) {
  const auto found = std::find_if(listings_.rbegin(), listings_.rend(), [&](const auto& listing) {
    const auto held = listing.lock();
    return held && held->Path() == path;
  });
  return found == listings_.rend() ? Open(path) : found->lock();
}

void FolderReadings::TakeAll() {
  for (const auto& listing : listings_) {
    if (const auto held = listing.lock()) held->Take(std::chrono::milliseconds(0));
  }
  for (Watcher* const watcher : watchers_)
    watcher->ListingsGrew();
  ShowProgress();
}

void FolderReadings::ShowProgress() {
  std::erase_if(listings_, [](const auto& listing) { return listing.expired(); });
  const bool reading = std::any_of(listings_.begin(), listings_.end(),
                                   [](const auto& held) { return !held.lock()->Complete(); });
  tmrReading_.Enabled = reading;
  if (!reading) {
    hourglass_.reset();
  } else if (!hourglass_) {
    hourglass_.emplace(platform_);
  }
}

}  // namespace krx::ui
