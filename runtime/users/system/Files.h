#pragma once

#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace krx::runtime {

// An exclusive claim that ends with this object, and with its process at the latest.
class FileLock {
 public:
  virtual ~FileLock() = default;
};

// The few file operations that durable storage needs. Each raises Error, which names the file and
// the system's reason, when it fails.
class Files {
 public:
  virtual ~Files() = default;
  // The content, or nothing when there is no such file. A file that is there and cannot be read is
  // a failure.
  virtual std::optional<std::string> Read(const std::filesystem::path& file) = 0;
  // Creates or overwrites the file and returns when the content is on the disk.
  virtual void WriteFlushed(const std::filesystem::path& file, std::string_view bytes) = 0;
  // Gives `from` the name `to`, in place of the file of that name: in one step, on the disk on
  // return.
  virtual void Replace(const std::filesystem::path& from, const std::filesystem::path& to) = 0;
  // Adds to the end in one write, creating the file if need be, and returns when it is on the disk.
  virtual void Append(const std::filesystem::path& file, std::string_view bytes) = 0;
  // The last byte, or nothing when the file is empty or not there.
  virtual std::optional<char> LastByte(const std::filesystem::path& file) = 0;
  // Waits until no other holder, in this process or another, claims the same file; raises Error
  // when that takes unreasonably long.
  virtual std::unique_ptr<FileLock> Lock(const std::filesystem::path& file) = 0;
};

}  // namespace krx::runtime
