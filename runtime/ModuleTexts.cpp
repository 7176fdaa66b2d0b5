#include "runtime/ModuleTexts.h"

#include <windows.h>

#include <memory>
#include <optional>

#include "com/Errors.h"
#include "com/Module.h"
#include "com/Text.h"
#include "runtime/core/KorvelError.h"

namespace krx::runtime {
namespace {

// Far more than all texts of a language; a file beyond it is none of ours.
constexpr DWORD kLargestFile = 4 * 1024 * 1024;

struct CloseFile {
  void operator()(HANDLE file) const { CloseHandle(file); }
};
using File = std::unique_ptr<void, CloseFile>;

// The linker keeps the names of resources in upper case.
std::optional<TextFile> BuiltIn(const String& language) {
  const String name = u"TEXTS_" + AsciiUpper(language);
  const HINSTANCE module = com::ModuleHandle();
  const HRSRC found = FindResourceW(module, com::ToWide(name).c_str(), RT_RCDATA);
  if (!found) return std::nullopt;
  const void* const bytes = LockResource(LoadResource(module, found));
  return TextFile{com::ModuleName() + u", " + name,
                  std::string(static_cast<const char*>(bytes), SizeofResource(module, found))};
}

[[noreturn]] void RaiseUnreadable(const String& file, DWORD reason) {
  throw KorvelError(kUnreadableTexts,
                    file + u" cannot be read: " + com::SystemMessage(HRESULT_FROM_WIN32(reason)));
}

}  // namespace

std::optional<TextFile> FileBesideModule(const String& file_name) {
  const std::wstring path = com::ModulePath();
  const std::wstring name = path.substr(0, path.find_last_of(L"\\/") + 1) + com::ToWide(file_name);
  const HANDLE handle = CreateFileW(name.c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_DELETE,
                                    nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
  TextFile text{com::FromWide(name), {}};
  if (handle == INVALID_HANDLE_VALUE) {
    const DWORD reason = GetLastError();
    if (reason == ERROR_FILE_NOT_FOUND || reason == ERROR_PATH_NOT_FOUND) return std::nullopt;
    RaiseUnreadable(text.Name, reason);
  }
  const File file(handle);
  LARGE_INTEGER size{};
  if (!GetFileSizeEx(handle, &size)) RaiseUnreadable(text.Name, GetLastError());
  if (size.QuadPart > kLargestFile) RaiseUnreadable(text.Name, ERROR_FILE_TOO_LARGE);
  text.Bytes.resize(static_cast<std::size_t>(size.QuadPart));
  DWORD read = 0;
  if (!ReadFile(handle, text.Bytes.data(), static_cast<DWORD>(text.Bytes.size()), &read, nullptr)) {
    RaiseUnreadable(text.Name, GetLastError());
  }
  text.Bytes.resize(read);
  return text;
}

std::vector<TextFile> ModuleTexts::Read(const String& language) {
  std::vector<TextFile> files;
  if (auto file = BuiltIn(language)) files.push_back(std::move(*file));
  if (auto file = FileBesideModule(u"KorvelTexts." + language + u".txt"))
    files.push_back(std::move(*file));
  return files;
}

String ModuleTexts::SystemLanguage() {
  wchar_t name[LOCALE_NAME_MAX_LENGTH] = {};
  LCIDToLocaleName(MAKELCID(GetUserDefaultUILanguage(), SORT_DEFAULT), name, LOCALE_NAME_MAX_LENGTH,
                   0);
  return com::FromWide(name);
}

Languages& ProcessLanguages() {
  static ModuleTexts texts;
  static Languages languages(texts);
  return languages;
}

}  // namespace krx::runtime
