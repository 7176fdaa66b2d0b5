#include "ports/win32/FolderReading.h"

#include <iterator>

#include "ports/win32/FolderScan.h"

namespace krx::win32 {

namespace {

constexpr std::size_t kReadBuffer = 65536;
constexpr std::size_t kProbeBuffer = 4096;  // mostly the first entries tell

void MoveBehind(std::vector<String>& to, std::vector<String>& from) {
  if (to.empty()) {
    to.swap(from);
  } else {
    to.insert(to.end(), std::move_iterator(from.begin()), std::move_iterator(from.end()));
  }
  from.clear();
}

bool HasSubfolder(const String& path) {
  FolderScan scan(path, kProbeBuffer);
  while (const auto entry = scan.Next()) {
    if (entry->IsFolder) return true;
  }
  return false;
}

class Reader : public ui::FolderReader {
 public:
  explicit Reader(std::shared_ptr<FolderReading> work) : work_(std::move(work)) {}
  ~Reader() override { work_->GiveUp(); }

  ui::FolderPart Take(std::chrono::milliseconds patience) override {
    work_->WaitForEnd(patience);
    return work_->Take();
  }

 private:
  const std::shared_ptr<FolderReading> work_;
};

class Probe : public ui::SubfolderProbe {
 public:
  explicit Probe(std::shared_ptr<SubfolderProbing> work) : work_(std::move(work)) {}
  ~Probe() override { work_->GiveUp(); }

  std::vector<bool> Take(std::chrono::milliseconds patience) override {
    work_->WaitForEnd(patience);
    return work_->Take();
  }

 private:
  const std::shared_ptr<SubfolderProbing> work_;
};

}  // namespace

void FolderReading::Run() {
  FolderScan scan(path_, kReadBuffer);
  error_code_ = scan.ErrorCode();
  Answer();
  ui::FolderPart batch;
  while (!GivenUp()) {
    const auto entry = scan.Next();
    if (!entry) break;
    (entry->IsFolder ? batch.Folders : batch.Files).emplace_back(entry->Name);
    if (!scan.Buffered()) Publish(batch);
  }
}

void FolderReading::Publish(ui::FolderPart& batch) {
  const Guard guard(*this);
  MoveBehind(read_.Folders, batch.Folders);
  MoveBehind(read_.Files, batch.Files);
}

ui::FolderPart FolderReading::Take() {
  const Guard guard(*this);
  ui::FolderPart part;
  part.Folders.swap(read_.Folders);
  part.Files.swap(read_.Files);
  part.Complete = Ended();
  return part;
}

void SubfolderProbing::Run() {
  String path = path_;
  if (!path.ends_with(u'\\')) path += u'\\';
  const std::size_t parent = path.size();
  for (const String& folder : folders_) {
    if (GivenUp()) return;
    path.replace(parent, String::npos, folder);
    const bool found = HasSubfolder(path);
    const Guard guard(*this);
    found_.push_back(found);
  }
}

std::vector<bool> SubfolderProbing::Take() {
  const Guard guard(*this);
  std::vector<bool> part;
  part.swap(found_);
  taken_ += part.size();
  // Work that ran out of memory found nothing in the rest.
  if (Ended() && taken_ < folders_.size()) {
    part.resize(part.size() + folders_.size() - taken_);
    taken_ = folders_.size();
  }
  return part;
}

std::unique_ptr<ui::FolderReader> ReaderOf(std::shared_ptr<FolderReading> work) {
  return std::make_unique<Reader>(std::move(work));
}

std::unique_ptr<ui::SubfolderProbe> ProbeOf(std::shared_ptr<SubfolderProbing> work) {
  return std::make_unique<Probe>(std::move(work));
}

}  // namespace krx::win32
