#include "support/SimulatedFiles.h"

#include "runtime/core/KorvelError.h"

namespace krx::test {
namespace {

[[noreturn]] void Refuse(const std::filesystem::path& file) {
  throw runtime::KorvelError(runtime::kFileFailure, file.u16string() + u": refused by the test");
}

std::string Torn(const std::string& written, Tear tear) {
  switch (tear) {
    case Tear::FirstHalf:
      return written.substr(0, written.size() / 2);
    case Tear::AllButLastByte:
      return written.substr(0, written.size() - std::min<std::size_t>(1, written.size()));
    case Tear::Zeros:
      return std::string(written.size(), '\0');
    default:
      return written;
  }
}

class SimulatedLock : public runtime::FileLock {
 public:
  explicit SimulatedLock(int& held) : held_(held) { ++held_; }
  ~SimulatedLock() override { --held_; }

 private:
  int& held_;
};

}  // namespace

void SimulatedFiles::Step() {
  if (++steps_ == stop_at_) throw MachineStopped();
}

void SimulatedFiles::BeginOperation(const std::filesystem::path& file, bool writes) {
  ++operations_;
  if (fail_at_ > 0 && (operations_ == fail_at_ || (fails_for_good_ && operations_ > fail_at_)))
    Refuse(file);
  if (writes && ReadOnly) Refuse(file);
}

std::optional<std::string> SimulatedFiles::Read(const std::filesystem::path& file) {
  BeginOperation(file, false);
  const auto found = files_.find(file);
  if (found == files_.end()) return std::nullopt;
  if (Unreadable) Refuse(file);
  return found->second.Visible;
}

void SimulatedFiles::WriteFlushed(const std::filesystem::path& file, std::string_view bytes) {
  BeginOperation(file, true);
  Step();
  File& target = files_[file];
  target.Visible.clear();
  Step();
  target.Visible = bytes.substr(0, bytes.size() / 2);
  Step();
  target.Visible = bytes;
  Step();
  target.Durable = bytes;
  Step();
}

void SimulatedFiles::Replace(const std::filesystem::path& from, const std::filesystem::path& to) {
  BeginOperation(to, true);
  Step();
  if (ReplaceFails == Halfway::OldFileGone || ReplaceFails == Halfway::AlwaysOldFileGone) {
    files_.erase(to);
    if (ReplaceFails == Halfway::OldFileGone) ReplaceFails = Halfway::No;
    Step();
    Refuse(to);
  }
  files_[to] = files_.at(from);
  files_.erase(from);
  Replacements.push_back(files_[to].Visible);
  Step();
  if (ReplaceFails == Halfway::ReportedThoughDone) Refuse(to);
}

void SimulatedFiles::Append(const std::filesystem::path& file, std::string_view bytes) {
  BeginOperation(file, true);
  Step();
  File& target = files_[file];
  const std::string before = target.Visible;
  target.Visible = before + std::string(bytes.substr(0, bytes.size() / 2));
  Step();
  target.Visible = before + std::string(bytes);
  Step();
  target.Durable = target.Visible;
}

std::optional<char> SimulatedFiles::LastByte(const std::filesystem::path& file) {
  const std::optional<std::string> content = Read(file);
  if (!content || content->empty()) return std::nullopt;
  return content->back();
}

std::unique_ptr<runtime::FileLock> SimulatedFiles::Lock(const std::filesystem::path& file) {
  BeginOperation(file, false);
  if (Held > 0) throw std::logic_error("the store is held twice");
  return std::make_unique<SimulatedLock>(Held);
}

void SimulatedFiles::Restart(bool power_failed, Tear tear) {
  stop_at_ = 0;
  if (!power_failed) return;
  for (auto& [name, file] : files_) {
    if (file.Visible != file.Durable && tear != Tear::Nothing)
      file.Durable = Torn(file.Visible, tear);
    file.Visible = file.Durable;
  }
}

}  // namespace krx::test
