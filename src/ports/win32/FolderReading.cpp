#include "ports/win32/FolderReading.h"

#include <utility>

#include "ports/win32/FolderScan.h"

namespace krx::win32 {

namespace {

constexpr std::size_t kReadBuffer = 65536;
constexpr std::size_t kProbeBuffer = 4096;  // mostly the first entries tell

bool HasSubfolder(const String& path) {
  FolderScan scan(path, kProbeBuffer);
  while (const auto entry = scan.Next()) {
    if (entry->IsFolder) return true;
  }
  return false;
}

// The side of a reader or a probe; work that it waits for no longer is given up.
template <class Interface, class Work>
class Taker : public Interface {
 public:
  explicit Taker(std::shared_ptr<Work> work) : work_(std::move(work)) {}
  ~Taker() override { work_->GiveUp(); }

  decltype(std::declval<Work>().Take()) Take(std::chrono::milliseconds patience) override {
    work_->WaitForEnd(patience);
    return work_->Take();
  }

 private:
  const std::shared_ptr<Work> work_;
};

}  // namespace

void FolderReading::Run() {
  FolderScan scan(path_, kReadBuffer);
  error_code_ = scan.ErrorCode();
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

std::unique_ptr<folders::FolderReader> ReaderOf(std::shared_ptr<FolderReading> work) {
  return std::make_unique<Taker<folders::FolderReader, FolderReading>>(std::move(work));
}

std::unique_ptr<folders::SubfolderProbe> ProbeOf(std::shared_ptr<SubfolderProbing> work) {
  return std::make_unique<Taker<folders::SubfolderProbe, SubfolderProbing>>(std::move(work));
}

}  // namespace krx::win32
