#pragma once

#include <functional>

#include "runtime/users/system/Files.h"

namespace krx::test {

// Real files, for tests with several processes.
class PosixFiles : public runtime::Files {
 public:
  std::optional<std::string> Read(const std::filesystem::path& file) override;
  void WriteFlushed(const std::filesystem::path& file, std::string_view bytes) override;
  void Replace(const std::filesystem::path& from, const std::filesystem::path& to) override;
  void Append(const std::filesystem::path& file, std::string_view bytes) override;
  std::optional<char> LastByte(const std::filesystem::path& file) override;
  std::unique_ptr<runtime::FileLock> Lock(const std::filesystem::path& file) override;

  // Runs before every single system call that changes something.
  std::function<void()> BeforeStep = [] {};
};

}  // namespace krx::test
