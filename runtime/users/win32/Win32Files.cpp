#include "runtime/users/win32/Win32Files.h"

#include <windows.h>

#include <utility>

#include "com/Errors.h"
#include "runtime/core/KorvelError.h"

namespace krx::runtime {
namespace {

constexpr DWORD kPause = 5;              // milliseconds between two tries
constexpr ULONGLONG kBlocked = 1'000;    // milliseconds that other programs may block a file
constexpr ULONGLONG kLongHeld = 30'000;  // milliseconds that the store may be held

[[noreturn]] void Fail(const std::filesystem::path& file, DWORD error = GetLastError()) {
  throw KorvelError(kFileFailure,
                    file.u16string() + u": " + com::SystemMessage(HRESULT_FROM_WIN32(error)));
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

class Win32Lock : public FileLock {
 public:
  explicit Win32Lock(const std::filesystem::path& file) {
    if (!handle_.Open(file, GENERIC_READ | GENERIC_WRITE, OPEN_ALWAYS)) Fail(file);
    const ULONGLONG end = GetTickCount64() + kLongHeld;
    OVERLAPPED start{};
    while (!LockFileEx(handle_.Get(), LOCKFILE_EXCLUSIVE_LOCK | LOCKFILE_FAIL_IMMEDIATELY, 0, 1, 0,
                       &start)) {
      const DWORD error = GetLastError();
      if (error != ERROR_LOCK_VIOLATION && error != ERROR_IO_PENDING) Fail(file, error);
      if (GetTickCount64() >= end)
        throw KorvelError(kStoreBusy, file.u16string() + u": another process holds the users");
      Sleep(kPause);
    }
  }
  // Unlocked here and not by closing alone, which the system may do with a delay.
  ~Win32Lock() override {
    OVERLAPPED start{};
    UnlockFileEx(handle_.Get(), 0, 1, 0, &start);
  }

 private:
  Handle handle_;
};

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

void Win32Files::Append(const std::filesystem::path& file, std::string_view bytes) {
  Handle handle;
  if (!handle.Open(file, FILE_APPEND_DATA | SYNCHRONIZE, OPEN_ALWAYS)) Fail(file);
  WriteAndFlush(handle, file, bytes);
}

std::optional<char> Win32Files::LastByte(const std::filesystem::path& file) {
  Handle handle;
  if (!handle.OpenExisting(file)) return std::nullopt;
  LARGE_INTEGER size{};
  if (!GetFileSizeEx(handle.Get(), &size)) Fail(file);
  if (size.QuadPart == 0) return std::nullopt;
  LARGE_INTEGER last{};
  last.QuadPart = size.QuadPart - 1;
  char byte = 0;
  DWORD count = 0;
  if (!SetFilePointerEx(handle.Get(), last, nullptr, FILE_BEGIN) ||
      !ReadFile(handle.Get(), &byte, 1, &count, nullptr)) {
    Fail(file);
  }
  if (count == 0) return std::nullopt;
  return byte;
}

std::unique_ptr<FileLock> Win32Files::Lock(const std::filesystem::path& file) {
  return std::make_unique<Win32Lock>(file);
}

}  // namespace krx::runtime
