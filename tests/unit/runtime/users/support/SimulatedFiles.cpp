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
  ++Reads;
  return found->second.Visible;
}

runtime::FileStamp SimulatedFiles::Stamp(const std::filesystem::path& file) {
  const auto found = files_.find(file);
  if (found == files_.end()) return {};
  return {true, true, found->second.Visible.size(), found->second.Time};
}

void SimulatedFiles::WriteFlushed(const std::filesystem::path& file, std::string_view bytes) {
  BeginOperation(file, true);
  Step();
  File& target = files_[file];
  target.Time = ++changes_;
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
  files_[to] = files_.at(from);
  files_.erase(from);
  Step();
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
