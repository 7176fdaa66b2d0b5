#pragma once

#include "runtime/users/system/Files.h"

namespace krx::runtime {

// Files of the machine. New files take the rights of their folder. Operations that another program
// blocks for a moment (a virus scanner, an indexer) are tried again for up to a second.
class Win32Files : public Files {
 public:
  std::optional<std::string> Read(const std::filesystem::path& file) override;
  FileStamp Stamp(const std::filesystem::path& file) override;
  void WriteFlushed(const std::filesystem::path& file, std::string_view bytes) override;
  // One renaming in the file system, written through: unlike the replace operation with a backup
  // it has no state in between.
  void Replace(const std::filesystem::path& from, const std::filesystem::path& to) override;
};

}  // namespace krx::runtime
