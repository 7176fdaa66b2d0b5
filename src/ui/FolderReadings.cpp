#include "ui/FolderReadings.h"

#include <algorithm>
#include <utility>

#include "ui/Form.h"

namespace krx::ui {

namespace {

// Milliseconds between two looks at a reading. The lists hear of its opening and its end at once,
// and of what it has brought meanwhile in longer and longer rounds of looks: the first rows come
// soon, later a list that draws takes the time from the reading.
constexpr int kReadingInterval = 10;
constexpr int kFirstRound = 1;
constexpr int kRoundWithRows = 8;
constexpr int kLongestRound = 16;
constexpr folders::Patience kStep{1};

bool HasRows(const folders::FolderListing& listing) {
  return !listing.Folders().empty() || !listing.Files().empty();
}

}  // namespace

FolderReadings::FolderReadings(Form& form)
    : form_(form), platform_(form.ThePlatform()), tmrReading_(form, u"tmrReading") {
  tmrReading_.Interval = kReadingInterval;
  tmrReading_.Tick = [this] { Tick(); };
}

FolderReadings::Listing FolderReadings::Begin(std::vector<String> paths) {
  auto listing = std::make_shared<folders::FolderListing>(platform_.Files(), std::move(paths));
  listings_.push_back(listing);
  return listing;
}

void FolderReadings::Await(const Listing& listing) {
  for (const auto& known : listings_) {
    const auto held = known.lock();
    if (held && held == listing && TakeFirst(*held)) untold_ = true;
  }
  ticks_ = 0;
  due_ = kFirstRound;
  ShowProgress();
  if (listing->Refusal()) throw Error(*listing->Refusal());
}

bool FolderReadings::TakeFirst(folders::FolderListing& listing) const {
  if (form_.Visible()) return listing.Take(kPatience);
  bool told = false;
  for (folders::Patience waited{0}; !told && waited < kPatience; waited += kStep)
    told = listing.Take(kStep);
  return told;
}

FolderReadings::Listing FolderReadings::Open(std::vector<String> paths) {
  Listing listing = Begin(std::move(paths));
  Await(listing);
  return listing;
}

FolderReadings::Listing FolderReadings::Share(const String& path) {
  const auto found = std::find_if(listings_.rbegin(), listings_.rend(), [&](const auto& listing) {
    const auto held = listing.lock();
    return held && held->Path() == path && !held->Refusal();
  });
  return found == listings_.rend() ? Open({path}) : found->lock();
}

void FolderReadings::Tick() {
  const bool come = TakeAll();
  const bool told = std::exchange(untold_, false) || come;
  if (!told && ++ticks_ < due_) return;
  due_ = std::min(2 * due_, kLongestRound);
  Tell();
}

void FolderReadings::Refresh() {
  TakeAll();
  untold_ = false;
  const bool rows = std::any_of(listings_.begin(), listings_.end(), [](const auto& listing) {
    const auto held = listing.lock();
    return held && HasRows(*held);
  });
  if (rows) due_ = kRoundWithRows;
  Tell();
}

void FolderReadings::Tell() {
  ticks_ = 0;
  for (Watcher* const watcher : watchers_)
    watcher->ListingsGrew();
  ShowProgress();
}

// True when there is something that the lists are to hear at once.
bool FolderReadings::TakeAll() {
  bool told = false;
  for (const auto& listing : listings_) {
    const auto held = listing.lock();
    if (held && held->Take(folders::kNoPatience)) told = true;
  }
  return told;
}

void FolderReadings::ShowProgress() {
  std::erase_if(listings_, [](const auto& listing) { return listing.expired(); });
  const bool reading = std::any_of(listings_.begin(), listings_.end(),
                                   [](const auto& held) { return !held.lock()->Ended(); });
  tmrReading_.Enabled = reading || untold_;
  if (!reading) {
    hourglass_.reset();
  } else if (!hourglass_) {
    hourglass_.emplace(platform_);
  }
}

}  // namespace krx::ui
