#include "ports/win32/SubfolderProbing.h"

#include <algorithm>
#include <utility>

#include "ports/win32/FolderScan.h"

namespace krx::win32 {

namespace {

using std::chrono::milliseconds;

constexpr std::size_t kProbeBuffer = 4096;  // mostly the first entries tell
constexpr milliseconds kSlow{100};          // no folder on a medium at hand takes so long
constexpr std::size_t kMostThreads = 8;     // each may hang in a folder of its own

bool HasSubfolder(const String& path) {
  FolderScan scan(path, kProbeBuffer);
  while (const auto entry = scan.Next()) {
    if (entry->IsFolder) return true;
  }
  return false;
}

}  // namespace

void SubfolderProbing::Run() {
  String path = folders_->Path;
  if (!path.ends_with(u'\\')) path += u'\\';
  const std::size_t parent = path.size();
  while (!GivenUp()) {
    const std::size_t at = folders_->Next++;
    if (at >= folders_->Names.size()) return;
    path.replace(parent, String::npos, folders_->Names[at]);
    const bool found = HasSubfolder(path);
    const Guard guard(*this);
    found_.push_back({at, found});
  }
}

void SubfolderProbing::Take(std::vector<folders::Marker>& markers) {
  const Guard guard(*this);
  markers.insert(markers.end(), found_.begin(), found_.end());
  found_.clear();
}

ProbeTaker::ProbeTaker(String system_path, std::vector<String> folders)
    : folders_(
          std::make_shared<SubfolderProbing::Folders>(std::move(system_path), std::move(folders))),
      answered_(folders_->Names.size()),
      missing_(answered_.size()) {
  Start();
}

ProbeTaker::~ProbeTaker() {
  for (const auto& work : works_)
    work->GiveUp();
}

void ProbeTaker::Start() {
  auto work = std::make_shared<SubfolderProbing>(folders_);
  Background::Start(work);
  works_.push_back(std::move(work));
  progress_ = Devices::Clock::now();
}

std::vector<folders::Marker> ProbeTaker::Take(folders::Patience patience) {
  const auto end = Devices::Clock::now() + patience;
  std::vector<folders::Marker> markers;
  for (;;) {
    const auto rest = std::chrono::ceil<milliseconds>(end - Devices::Clock::now());
    works_.back()->WaitForEnd(std::clamp(rest, milliseconds(0), kSlow));
    Collect(markers);
    if (missing_ == 0 || rest.count() <= 0) return markers;
  }
}

void ProbeTaker::Collect(std::vector<folders::Marker>& markers) {
  const bool ended = AllEnded();  // what is found afterwards is collected the next time
  const std::size_t before = markers.size();
  for (const auto& work : works_) {
    if (work->WaitForEnd(milliseconds(0))) work->RaiseFailure();
    work->Take(markers);
  }
  for (std::size_t i = before; i < markers.size(); ++i)
    answered_[markers[i].Folder] = true;
  missing_ -= markers.size() - before;
  const auto now = Devices::Clock::now();
  if (markers.size() > before) {
    progress_ = now;
  } else if (missing_ > 0 && (ended || times_.Overdue(progress_))) {
    GiveUp(markers);
  } else if (missing_ > 0 && now - progress_ >= kSlow && works_.size() < kMostThreads &&
             folders_->Next < answered_.size()) {
    Start();
  }
}

// Who has not answered by now has none.
void ProbeTaker::GiveUp(std::vector<folders::Marker>& markers) {
  for (const auto& work : works_)
    work->GiveUp();
  for (std::size_t at = 0; at < answered_.size(); ++at) {
    if (!answered_[at]) markers.push_back({at, false});
    answered_[at] = true;
  }
  missing_ = 0;
}

bool ProbeTaker::AllEnded() const {
  return std::all_of(works_.begin(), works_.end(),
                     [](const auto& work) { return work->WaitForEnd(milliseconds(0)); });
}

}  // namespace krx::win32
