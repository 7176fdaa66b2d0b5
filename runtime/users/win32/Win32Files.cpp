#include "runtime/users/win32/Win32Files.h"

#include <windows.h>

#include <utility>

#include "com/Errors.h"
#include "runtime/core/KorvelError.h"

namespace krx::runtime {
namespace {

constexpr DWORD kPause = 5;            // milliseconds between two tries
constexpr ULONGLONG kBlocked = 1'000;  // milliseconds that other programs may block a file

[[noreturn]] void Fail(const std::filesystem::path& file, DWORD error = GetLastError()) {
  throw KorvelError(kFileFailure,
                    file.u16string() + u": " + com::SystemMessage(HRESULT_FROM_WIN32(error)));
}

std::uint64_t Joined(DWORD high, DWORD low) {
  return (std::uint64_t{high} << 32) | low;
}

bool MayPass(DWORD error) {
  return error == ERROR_SHARING_VIOLATION || error == ERROR_LOCK_VIOLATION ||
         error == ERROR_ACCESS_DENIED;
}

// Repeats an operation that answers false with a last error while the error may pass; the last
// error stays that of the last try.
template <class Operation>
bool Patiently(Operation&& operation) {
  const ULONGLONG end = GetTickCount64() + kBlocked;
  for (;;) {
    if (operation()) return true;
    const DWORD error = GetLastError();
    if (!MayPass(error) || GetTickCount64() >= end) {
      SetLastError(error);
      return false;
    }
    Sleep(kPause);
  }
}

class Handle {
 public:
  Handle() = default;
  Handle(const Handle&) = delete;
  Handle& operator=(const Handle&) = delete;
  ~Handle() {
    if (IsOpen()) CloseHandle(handle_);
  }

  // False with the last error when the file cannot be opened.
  bool Open(const std::filesystem::path& file, DWORD access, DWORD creation) {
    return Patiently([&] {
      handle_ =
          CreateFileW(file.c_str(), access, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                      nullptr, creation, FILE_ATTRIBUTE_NORMAL, nullptr);
      return IsOpen();
    });
  }
  // For reading; false when there is no such file.
  bool OpenExisting(const std::filesystem::path& file) {
    if (Open(file, GENERIC_READ, OPEN_EXISTING)) return true;
    const DWORD error = GetLastError();
    if (error != ERROR_FILE_NOT_FOUND && error != ERROR_PATH_NOT_FOUND) Fail(file, error);
    return false;
  }
  bool IsOpen() const { return handle_ != INVALID_HANDLE_VALUE; }
  HANDLE Get() const { return handle_; }

 private:
  HANDLE handle_ = INVALID_HANDLE_VALUE;
};

void WriteAndFlush(const Handle& handle, const std::filesystem::path& file,
                   std::string_view bytes) {
  DWORD written = 0;
  if (!WriteFile(handle.Get(), bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr))
    Fail(file);
  if (written != bytes.size()) Fail(file, ERROR_DISK_FULL);
  if (!FlushFileBuffers(handle.Get())) Fail(file);
}

}  // namespace

std::optional<std::string> Win32Files::Read(const std::filesystem::path& file) {
  Handle handle;
  if (!handle.OpenExisting(file)) return std::nullopt;
  std::string content;
  for (;;) {
    char part[32768];
    DWORD count = 0;
    if (!ReadFile(handle.Get(), part, sizeof part, &count, nullptr)) Fail(file);
    if (count == 0) return content;
    content.append(part, count);
  }
}

FileStamp Win32Files::Stamp(const std::filesystem::path& file) {
  constexpr std::uint64_t kSettled = 20'000'000;  // 2 s, the coarsest time of a file system
  WIN32_FILE_ATTRIBUTE_DATA data{};
  if (!GetFileAttributesExW(file.c_str(), GetFileExInfoStandard, &data)) return {};
  FILETIME now{};
  GetSystemTimeAsFileTime(&now);
  const std::uint64_t written =
      Joined(data.ftLastWriteTime.dwHighDateTime, data.ftLastWriteTime.dwLowDateTime);
  return {true, written + kSettled <= Joined(now.dwHighDateTime, now.dwLowDateTime),
          Joined(data.nFileSizeHigh, data.nFileSizeLow), written};
}

void Win32Files::WriteFlushed(const std::filesystem::path& file, std::string_view bytes) {
  Handle handle;
  if (!handle.Open(file, GENERIC_WRITE, CREATE_ALWAYS)) Fail(file);
  WriteAndFlush(handle, file, bytes);
}

void Win32Files::Replace(const std::filesystem::path& from, const std::filesystem::path& to) {
  const bool replaced = Patiently([&] {
    return MoveFileExW(from.c_str(), to.c_str(),
                       MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH) != 0;
  });
  if (!replaced) Fail(to);
}

}  // namespace krx::runtime
