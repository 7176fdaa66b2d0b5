#include "ports/win32/FolderReading.h"

#include <utility>

#include "ports/win32/FolderScan.h"

namespace krx::win32 {

namespace {

constexpr std::size_t kReadBuffer = 65536;

}  // namespace

void FolderReading::Run() {
  Refusal first = Refusal::None;
  for (std::size_t at = 0; at < paths_.size() && !GivenUp(); ++at) {
    at_ = at;
    FolderScan scan(paths_[at], kReadBuffer);
    if (scan.ErrorCode() == ERROR_SUCCESS) return Read(scan);
    if (at == 0) first = RefusalOf(paths_[at], scan.ErrorCode());
  }
  refusal_ = first;
}

void FolderReading::Read(FolderScan& scan) {
  refusal_ = Refusal::None;
  Answer();
  folders::FolderPart batch;
  while (!GivenUp()) {
    const auto entry = scan.Next();
    if (!entry) break;
    (entry->IsFolder ? batch.Folders : batch.Files).emplace_back(entry->Name);
    if (!scan.Buffered()) Publish(batch);
  }
}

void FolderReading::Publish(folders::FolderPart& batch) {
  const Guard guard(*this);
  read_.Append(std::exchange(batch, {}));
}

folders::FolderPart FolderReading::Take() {
  const Guard guard(*this);
  folders::FolderPart part = std::exchange(read_, {});
  part.Complete = Ended();
  return part;
}

FolderTaker::FolderTaker(std::shared_ptr<Devices> devices, std::vector<String> system_paths)
    : devices_(std::move(devices)), paths_(std::move(system_paths)) {
  if (paths_.empty()) refusal_ = Refusal::PathNotFound;
  Begin(0);
}

FolderTaker::~FolderTaker() {
  if (work_) work_->GiveUp();
}

void FolderTaker::Begin(std::size_t first) {
  std::vector<String> paths;
  tried_.clear();
  for (std::size_t at = first; at < paths_.size(); ++at) {
    const bool named = !paths_[at].empty();
    const bool quiet =
        named && (quiet_.contains(Devices::DeviceOf(paths_[at])) || devices_->Silent(paths_[at]));
    if (at == 0 && !named) refusal_ = Refusal::PathNotFound;
    if (at == 0 && quiet) refusal_ = Refusal::DeviceUnavailable;
    if (!named || quiet) continue;
    paths.push_back(paths_[at]);
    tried_.push_back(at);
  }
  if (paths.empty()) return;
  work_ = std::make_shared<FolderReading>(std::move(paths));
  Background::Start(work_);
  begun_ = Devices::Clock::now();
}

void FolderTaker::PassOver() {
  const std::size_t at = tried_[work_->At()];
  quiet_.insert(Devices::DeviceOf(paths_[at]));
  if (refusal_ == Refusal::None) refusal_ = Refusal::DeviceUnavailable;
  devices_->GiveUp(paths_[at], std::exchange(work_, nullptr));
  Begin(at + 1);
}

void FolderTaker::Open() {
  opened_ = work_->Answered() == Refusal::None;
  if (opened_) return;
  if (refusal_ == Refusal::None) refusal_ = work_->Answered();
  work_.reset();
}

folders::FolderPart FolderTaker::Take(folders::Patience patience) {
  if (work_ && work_->WaitForEnd(patience)) work_->RaiseFailure();
  if (work_ && !opened_) {
    if (work_->WaitForAnswer(folders::kNoPatience)) {
      Open();
    } else if (devices_->Overdue(begun_)) {
      PassOver();
    }
  }
  if (!work_) throw Refused(refusal_);
  if (!opened_) return {};
  folders::FolderPart part = work_->Take();
  part.Opened = tried_[work_->At()];
  return part;
}

}  // namespace krx::win32
