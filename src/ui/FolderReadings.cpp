#include "ui/FolderReadings.h"

#include <algorithm>

#include "ui/Form.h"

namespace krx::ui {

namespace {

// Folders of usual size are read by then, and nobody notices the wait.
constexpr std::chrono::milliseconds kPatience{20};
// Milliseconds between two looks at a reading. The lists hear of its end at once, and of what it
// has brought meanwhile in longer and longer rounds of looks: the first rows come soon, later a
// list that draws takes the time from the reading.
constexpr int kInterval = 10;
constexpr int kLongestRound = 16;

}  // namespace

FolderReadings::FolderReadings(Form& form)
    : platform_(form.ThePlatform()), tmrReading_(form, u"tmrReading") {
  tmrReading_.Interval = kInterval;
  tmrReading_.Tick = [this] { Tick(); };
}

std::shared_ptr<const folders::FolderListing> FolderReadings::Open(const String& path) {
  auto listing = std::make_shared<folders::FolderListing>(platform_.Files(), path);
  listing->Take(kPatience);
  listings_.push_back(listing);
  ticks_ = 0;
  due_ = 1;
  ShowProgress();
  return listing;
}

std::shared_ptr<const folders::FolderListing> FolderReadings::Share(const String& path) {
  const auto found = std::find_if(listings_.rbegin(), listings_.rend(), [&](const auto& listing) {
    const auto held = listing.lock();
    return held && held->Path() == path;
  });
  return found == listings_.rend() ? Open(path) : found->lock();
}

void FolderReadings::Tick() {
  const bool ended = TakeAll();
  if (!ended && ++ticks_ < due_) return;
  ticks_ = 0;
  due_ = std::min(2 * due_, kLongestRound);
  for (Watcher* const watcher : watchers_)
    watcher->ListingsGrew();
  ShowProgress();
}

// True when one of the listings has become complete.
bool FolderReadings::TakeAll() {
  bool ended = false;
  for (const auto& listing : listings_) {
    const auto held = listing.lock();
    if (held && held->Take(std::chrono::milliseconds(0))) ended = true;
  }
  return ended;
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
