#pragma once

#include "runtime/users/system/Files.h"

namespace krx::test {

// Real files, for tests with several processes.
class PosixFiles : public runtime::Files {
 public:
  std::optional<std::string> Read(const std::filesystem::path& file) override;
  runtime::FileStamp Stamp(const std::filesystem::path& file) override;
  void WriteFlushed(const std::filesystem::path& file, std::string_view bytes) override;
  void Replace(const std::filesystem::path& from, const std::filesystem::path& to) override;
};

}  // namespace krx::test
