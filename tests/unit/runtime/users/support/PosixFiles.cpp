#include "support/PosixFiles.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

#include "runtime/core/KorvelError.h"

namespace krx::test {
namespace {

[[noreturn]] void RaiseErrno(const std::filesystem::path& file) {
  const std::string reason = std::strerror(errno);
  throw runtime::KorvelError(runtime::kFileFailure,
                             file.u16string() + u": " + String(reason.begin(), reason.end()));
}

class Handle {
 public:
  Handle(const std::filesystem::path& file, int flags)
      : file_(file), number_(open(file.c_str(), flags | O_CLOEXEC, 0600)) {}
  Handle(const Handle&) = delete;
  Handle& operator=(const Handle&) = delete;
  ~Handle() {
    if (number_ >= 0) close(number_);
  }
  bool IsOpen() const { return number_ >= 0; }
  int Get() const {
    if (!IsOpen()) RaiseErrno(file_);
    return number_;
  }

 private:
  std::filesystem::path file_;
  int number_;
};

void WriteAll(const Handle& handle, const std::filesystem::path& file, std::string_view bytes) {
  while (!bytes.empty()) {
    const ssize_t written = write(handle.Get(), bytes.data(), bytes.size());
    if (written < 0) RaiseErrno(file);
    bytes.remove_prefix(static_cast<std::size_t>(written));
  }
}

}  // namespace

std::optional<std::string> PosixFiles::Read(const std::filesystem::path& file) {
  const Handle handle(file, O_RDONLY);
  if (!handle.IsOpen() && errno == ENOENT) return std::nullopt;
  std::string content;
  char part[65536];
  for (;;) {
    const ssize_t count = read(handle.Get(), part, sizeof part);
    if (count < 0) RaiseErrno(file);
    if (count == 0) return content;
    content.append(part, static_cast<std::size_t>(count));
  }
}

// Never settled: every file is read anew.
runtime::FileStamp PosixFiles::Stamp(const std::filesystem::path& file) {
  return {std::filesystem::exists(file)};
}

void PosixFiles::WriteFlushed(const std::filesystem::path& file, std::string_view bytes) {
  const Handle handle(file, O_WRONLY | O_CREAT | O_TRUNC);
  handle.Get();
  WriteAll(handle, file, bytes.substr(0, bytes.size() / 2));
  WriteAll(handle, file, bytes.substr(bytes.size() / 2));
  if (fdatasync(handle.Get()) != 0) RaiseErrno(file);
}

void PosixFiles::Replace(const std::filesystem::path& from, const std::filesystem::path& to) {
  if (rename(from.c_str(), to.c_str()) != 0) RaiseErrno(to);
  const Handle folder(to.parent_path(), O_RDONLY | O_DIRECTORY);
  if (fsync(folder.Get()) != 0) RaiseErrno(to.parent_path());
}

}  // namespace krx::test
