#include "ports/win32/FolderScan.h"

#include "ports/win32/System.h"

namespace krx::win32 {

FolderScan::FolderScan(const String& path, std::size_t buffer) : buffer_(buffer) {
  Open(path);
}

FolderScan::~FolderScan() {
  if (folder_ != INVALID_HANDLE_VALUE) CloseHandle(folder_);
}

// A handle instead of a search: no name is a pattern, and whole buffers arrive without a copy of
// each entry.
void FolderScan::Open(const String& path) {
  constexpr DWORD kShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
  folder_ = CreateFileW(Wide(path), FILE_LIST_DIRECTORY | SYNCHRONIZE, kShareAll, nullptr,
                        OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr);
  FILE_STANDARD_INFO kind{};
  if (folder_ == INVALID_HANDLE_VALUE ||
      !GetFileInformationByHandleEx(folder_, FileStandardInfo, &kind, sizeof kind)) {
    error_code_ = GetLastError();
  } else if (!kind.Directory) {
    error_code_ = ERROR_DIRECTORY;
  }
}

bool FolderScan::Fetch() {
  if (error_code_ != ERROR_SUCCESS ||
      !GetFileInformationByHandleEx(folder_, FileFullDirectoryInfo, buffer_.data(),
                                    static_cast<DWORD>(buffer_.size())))
    return false;
  next_ = buffer_.data();
  return true;
}

std::optional<FolderScan::Entry> FolderScan::Next() {
  while (next_ || Fetch()) {
    const auto& info = *reinterpret_cast<const FILE_FULL_DIR_INFO*>(next_);
    next_ = info.NextEntryOffset != 0 ? next_ + info.NextEntryOffset : nullptr;
    const StringView name = Narrow(info.FileName, info.FileNameLength / sizeof(wchar_t));
    if (name == u"." || name == u"..") continue;
    return Entry{name, (info.FileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0};
  }
  return std::nullopt;
}

}  // namespace krx::win32
