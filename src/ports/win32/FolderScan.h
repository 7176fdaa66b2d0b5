#pragma once

#include <windows.h>

#include <optional>
#include <vector>

#include "base/String.h"

namespace krx::win32 {

// Reads the entries of one folder in the order in which the file system gives them, without the
// folder itself and its parent. Others may rename and remove the folder meanwhile.
class FolderScan {
 public:
  struct Entry {
    StringView Name;  // valid until the next entry is asked for
    bool IsFolder = false;
  };

  // Takes a system path; `buffer` bytes are read from the file system at a time.
  FolderScan(const String& path, std::size_t buffer);
  ~FolderScan();
  FolderScan(const FolderScan&) = delete;
  FolderScan& operator=(const FolderScan&) = delete;

  // The system's code why the folder cannot be read; ERROR_SUCCESS when it can.
  DWORD ErrorCode() const { return error_code_; }
  // None at the end, which is also where the folder cannot be read any further.
  std::optional<Entry> Next();
  // Whether the next entry lies in memory.
  bool Buffered() const { return next_ != nullptr; }

 private:
  void Open(const String& path);
  bool Fetch();

  HANDLE folder_ = INVALID_HANDLE_VALUE;
  DWORD error_code_ = ERROR_SUCCESS;
  std::vector<std::byte> buffer_;
  const std::byte* next_ = nullptr;
};

}  // namespace krx::win32
