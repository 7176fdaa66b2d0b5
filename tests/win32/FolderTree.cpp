#include "FolderTree.h"

#include <windows.h>

#include <array>
#include <cstdio>
#include <stdexcept>

#include "ports/win32/System.h"

namespace krx::test {

namespace {

std::wstring Literal(const String& path) {
  return L"\\\\?\\" + std::wstring(win32::Wide(path));
}

String Numbered(const char* pattern, int number) {
  std::array<char, 32> name{};
  std::snprintf(name.data(), name.size(), pattern, number);
  return String(name.begin(), name.begin() + std::char_traits<char>::length(name.data()));
}

String TemporaryFolder() {
  std::array<wchar_t, MAX_PATH> folder{};
  const DWORD length = GetTempPathW(static_cast<DWORD>(folder.size()), folder.data());
  return String(win32::Narrow(folder.data(), length));
}

String UniqueNumber(int number) {
  return ToString(static_cast<int>(GetCurrentProcessId())) + u' ' + ToString(number);
}

// Links are removed and not followed.
void RemoveAll(const std::wstring& folder) {
  WIN32_FIND_DATAW data{};
  const HANDLE search = FindFirstFileW((folder + L"\\*").c_str(), &data);
  if (search != INVALID_HANDLE_VALUE) {
    do {
      const std::wstring name = data.cFileName;
      const std::wstring path = folder + L'\\' + name;
      const bool is_folder = (data.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
      const bool is_link = (data.dwFileAttributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0;
      if (name == L"." || name == L"..") continue;
      if (!is_folder) {
        DeleteFileW(path.c_str());
      } else if (is_link) {
        RemoveDirectoryW(path.c_str());
      } else {
        RemoveAll(path);
      }
    } while (FindNextFileW(search, &data));
    FindClose(search);
  }
  RemoveDirectoryW(folder.c_str());
}

std::string Slashes(StringView name) {
  return ToUtf8(ReplaceAll(String(name), u"\\", u"/"));
}

}  // namespace

std::string HostPath(const String& path) {
  using Translate = char*(CDECL*)(const wchar_t*);
  const HMODULE kernel = GetModuleHandleW(L"kernel32");
  const auto translate = reinterpret_cast<Translate>(
      reinterpret_cast<void*>(GetProcAddress(kernel, "wine_get_unix_file_name")));
  if (!translate) return {};
  char* const found = translate(win32::Wide(path));
  const std::string host = found ? found : "";
  HeapFree(GetProcessHeap(), 0, found);
  return host;
}

// Wine gives no handle of a process of its host, so the shell leaves a file when it is done.
bool RunHostShell(const std::string& line) {
  static int number = 0;
  const String mark = TemporaryFolder() + u"krx done " + UniqueNumber(++number);
  const std::string host_mark = HostPath(mark);
  if (host_mark.empty()) return false;
  const std::string script =
      "(" + line + ") && touch '" + host_mark + ".ok'; touch '" + host_mark + "'";
  std::wstring command = L"Z:\\bin\\sh -c \"" + std::wstring(script.begin(), script.end()) + L"\"";
  STARTUPINFOW startup{};
  startup.cb = sizeof startup;
  PROCESS_INFORMATION process{};
  if (!CreateProcessW(nullptr, command.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr,
                      &startup, &process))
    return false;
  constexpr int kPatience = 600000;  // milliseconds
  for (int waited = 0; !DeleteFileW(win32::Wide(mark)); waited += 5) {
    if (waited > kPatience) return false;
    Sleep(5);
  }
  return DeleteFileW(win32::Wide(mark + u".ok")) != 0;
}

// A run that was ended may have left folders of this process's number behind.
FolderTree::FolderTree() {
  static int number = 0;
  do {
    path_ = TemporaryFolder() + u"krx tree " + UniqueNumber(++number);
    if (CreateDirectoryW(win32::Wide(path_), nullptr)) return;
  } while (GetLastError() == ERROR_ALREADY_EXISTS);
  throw std::runtime_error("no folder");
}

FolderTree::~FolderTree() {
  if (Shell("cd .. && rm -rf '" + HostPath(path_) + "'")) return;
  RemoveAll(Literal(path_));
}

bool FolderTree::Shell(const std::string& line) const {
  const std::string here = HostPath(path_);
  return !here.empty() && RunHostShell("cd '" + here + "' && " + line);
}

std::wstring FolderTree::WidePath(const std::wstring& name) const {
  const std::wstring path = win32::Wide(path_);
  return name.empty() ? path : path + L'\\' + name;
}

void FolderTree::AddFolder(StringView name) const {
  if (!CreateDirectoryW(Literal(PathOf(name)).c_str(), nullptr))
    throw std::runtime_error("no folder " + ToUtf8(name));
}

void FolderTree::AddFile(StringView name) const {
  const HANDLE file =
      CreateFileW(Literal(PathOf(name)).c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW, 0, nullptr);
  if (file == INVALID_HANDLE_VALUE) throw std::runtime_error("no file " + ToUtf8(name));
  CloseHandle(file);
}

// Making 100,000 files takes Wine a minute and the system below it a second.
void FolderTree::AddFiles(StringView folder, int count) const {
  if (Shell("cd './" + Slashes(folder) + "' && seq -f file%06g.txt " + std::to_string(count) +
            " | xargs touch"))
    return;
  for (int i = 1; i <= count; ++i)
    AddFile(String(folder) + u'\\' + Numbered("file%06d.txt", i));
}

void FolderTree::AddFolders(StringView folder, int count) const {
  const std::string number = std::to_string(count);
  if (Shell("cd './" + Slashes(folder) + "' && seq -f folder%05g " + number +
            " | xargs mkdir && seq -f folder%05g/below 1 3 " + number + " | xargs mkdir"))
    return;
  for (int i = 1; i <= count; ++i) {
    const String name = String(folder) + u'\\' + Numbered("folder%05d", i);
    AddFolder(name);
    if (i % 3 == 1) AddFolder(name + u"\\below");
  }
}

bool FolderTree::AddLink(StringView name, const char* target) const {
  if (!HostPath(path_).empty()) return Shell("ln -s " + std::string(target) + " " + Slashes(name));
  const std::wstring wide(target, target + std::char_traits<char>::length(target));
  constexpr DWORD kUnprivileged = 2;
  return CreateSymbolicLinkW(Literal(PathOf(name)).c_str(), wide.c_str(),
                             SYMBOLIC_LINK_FLAG_DIRECTORY | kUnprivileged) != 0;
}

void FolderTree::Remove(StringView name) const {
  if (Shell("rm -rf '" + Slashes(name) + "'")) return;
  RemoveAll(Literal(PathOf(name)));
}

}  // namespace krx::test
