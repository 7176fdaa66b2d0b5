#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

namespace krx::runtime {

// A file at a moment, without its content.
struct FileStamp {
  bool Exists = false;
  bool IsSettled = false;  // so old that a later change cannot have the same stamp
  std::uint64_t Size = 0;
  std::uint64_t Time = 0;

  bool operator==(const FileStamp& other) const = default;
};

// The few file operations that durable storage needs. Each raises Error, which names the file and
// the system's reason, when it fails.
class Files {
 public:
  virtual ~Files() = default;
  // The content, or nothing when there is no such file. A file that is there and cannot be read is
  // a failure.
  virtual std::optional<std::string> Read(const std::filesystem::path& file) = 0;
  // What tells whether the file has changed since it was read.
  virtual FileStamp Stamp(const std::filesystem::path& file) = 0;
  // Creates or overwrites the file and returns when the content is on the disk.
  virtual void WriteFlushed(const std::filesystem::path& file, std::string_view bytes) = 0;
  // Gives `from` the name `to`, in place of the file of that name: in one step, on the disk on
  // return.
  virtual void Replace(const std::filesystem::path& from, const std::filesystem::path& to) = 0;
};

}  // namespace krx::runtime
