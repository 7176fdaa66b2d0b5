#include "install/Picture.h"

#include <windows.h>

#include <algorithm>
#include <array>
#include <regex>
#include <utility>

#include "driver/Window.h"

namespace krx::install {

namespace {

constexpr DWORD kAccess =
    KEY_READ | KEY_WOW64_64KEY;  // the other width's part lies inside this one
constexpr DWORD kLongestName = 16384;

// What comes and goes without regard to what is installed, each with its reason.
const std::array kOnItsOwn = {
    // The installer's own folder and the keys of its lists, which its first use on a machine makes.
    LR"(C:\\windows\\Installer)",
    LR"(HKLM\\Software\\Classes\\Installer(\\(Features|Products|UpgradeCodes))?)",
    LR"(HKLM\\Software\\Microsoft\\Windows\\CurrentVersion\\Installer(\\UpgradeCodes|\\UserData(\\[^\\]+(\\(Components|Products))?)?)?)",
    LR"(HKU\\[^\\]+\\Software\\Microsoft\\Installer(\\(Features|Products|UpgradeCodes))?)",
    // What the mouse is set to, which is noted when the first window opens.
    LR"(HKU\\[^\\]+\\Software\\Wine\\Temporary System Parameters\\.*)",
    // The empty key above the sources of events: some installers take it along with the last of
    // them.
    LR"(HKLM\\System\\CurrentControlSet\\Services\\EventLog\\Application)",
    // What programs put down for a while.
    L"C:\\\\users\\\\[^\\\\]+\\\\(Temp|AppData\\\\Local\\\\Temp)\\b.*",
    L"C:\\\\windows\\\\temp\\b.*",
};

std::wstring Hex(const BYTE* data, DWORD size) {
  constexpr const wchar_t* kDigits = L"0123456789abcdef";
  std::wstring text;
  for (DWORD i = 0; i < size; ++i) {
    text += kDigits[data[i] >> 4];
    text += kDigits[data[i] & 15];
  }
  return text;
}

std::wstring Content(DWORD type, const std::vector<BYTE>& data, DWORD size) {
  const std::wstring prefix = std::to_wstring(type) + L":";
  if (type != REG_SZ && type != REG_EXPAND_SZ) return prefix + Hex(data.data(), size);
  std::wstring text(reinterpret_cast<const wchar_t*>(data.data()), size / sizeof(wchar_t));
  return prefix + text.substr(0, text.find(L'\0'));
}

void AddValues(HKEY key, const std::wstring& path, Picture& picture) {
  std::vector<wchar_t> name(kLongestName);
  std::vector<BYTE> data(65536);
  for (DWORD index = 0;; ++index) {
    DWORD length = kLongestName;
    DWORD size = static_cast<DWORD>(data.size());
    DWORD type = 0;
    const LSTATUS status =
        RegEnumValueW(key, index, name.data(), &length, nullptr, &type, data.data(), &size);
    if (status == ERROR_MORE_DATA) {
      data.resize(size);
      --index;
    } else if (status != ERROR_SUCCESS) {
      return;
    } else {
      picture[path + L" : " + std::wstring(name.data(), length)] = Content(type, data, size);
    }
  }
}

// Devices and services, which start and stop, and what is shown by a key of another name as well.
bool IsPassedOver(const std::wstring& path) {
  const std::array paths = {L"HKLM\\Hardware", L"HKLM\\System",
                            L"HKLM\\Software\\Wow6432Node\\Classes"};
  return std::any_of(paths.begin(), paths.end(),
                     [&](const wchar_t* other) { return _wcsicmp(path.c_str(), other) == 0; });
}

void AddKey(HKEY parent, const std::wstring& name, const std::wstring& path, Picture& picture) {
  HKEY key = nullptr;
  if (IsPassedOver(path)) return;
  if (RegOpenKeyExW(parent, name.c_str(), 0, kAccess, &key) != ERROR_SUCCESS) return;
  picture[path] = L"";
  AddValues(key, path, picture);
  std::array<wchar_t, 256> child;
  for (DWORD index = 0;; ++index) {
    DWORD length = static_cast<DWORD>(child.size());
    if (RegEnumKeyExW(key, index, child.data(), &length, nullptr, nullptr, nullptr, nullptr) !=
        ERROR_SUCCESS)
      break;
    const std::wstring text(child.data(), length);
    AddKey(key, text, path + L"\\" + text, picture);
  }
  RegCloseKey(key);
}

// The profile's folders of documents lie outside the system's drive on some platforms.
bool IsElsewhere(const std::wstring& path) {
  static const std::wregex folders(
      L"C:\\\\users\\\\[^\\\\]+\\\\(Documents|Desktop|Downloads|Music|Pictures|Videos|Templates|"
      L"AppData\\\\Roaming\\\\Microsoft\\\\Windows\\\\Templates)",
      std::regex::icase);
  return std::regex_match(path, folders);
}

void AddFolder(const std::wstring& folder, Picture& picture) {
  WIN32_FIND_DATAW found{};
  const HANDLE search = FindFirstFileExW((folder + L"\\*").c_str(), FindExInfoBasic, &found,
                                         FindExSearchNameMatch, nullptr, 0);
  if (search == INVALID_HANDLE_VALUE) return;
  do {
    const std::wstring name = found.cFileName;
    const std::wstring path = folder + L"\\" + name;
    if (name == L"." || name == L".." || IsElsewhere(path)) continue;
    if (found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) {
      picture[path] = L"";
      AddFolder(path, picture);
    } else {
      const FILETIME& time = found.ftLastWriteTime;
      picture[path] = std::to_wstring(found.nFileSizeLow) + L" bytes of " +
                      std::to_wstring(time.dwHighDateTime) + L"." +
                      std::to_wstring(time.dwLowDateTime);
    }
  } while (FindNextFileW(search, &found));
  FindClose(search);
}

bool HappensOnItsOwn(const std::wstring& path) {
  static const std::vector<std::wregex> patterns = [] {
    std::vector<std::wregex> all;
    for (const wchar_t* pattern : kOnItsOwn)
      all.emplace_back(pattern, std::regex::icase | std::regex::optimize);
    return all;
  }();
  return std::any_of(patterns.begin(), patterns.end(),
                     [&](const std::wregex& pattern) { return std::regex_match(path, pattern); });
}

}  // namespace

Picture TakePicture() {
  Picture picture;
  AddKey(HKEY_LOCAL_MACHINE, L"", L"HKLM", picture);
  const std::wstring sources = L"System\\CurrentControlSet\\Services\\EventLog";
  AddKey(HKEY_LOCAL_MACHINE, sources, L"HKLM\\" + sources, picture);
  AddKey(HKEY_USERS, L"", L"HKU", picture);
  AddFolder(L"C:", picture);
  return picture;
}

Picture TakePictureOf(const std::wstring& key) {
  Picture picture;
  const HKEY root = key.starts_with(L"HKLM\\") ? HKEY_LOCAL_MACHINE : HKEY_CURRENT_USER;
  AddKey(root, key.substr(key.find(L'\\') + 1), L"", picture);
  return picture;
}

std::vector<std::string> Changes(const Picture& before, const Picture& after) {
  std::vector<std::string> lines;
  const auto tell = [&lines](const char* sign, const auto& entry) {
    if (!HappensOnItsOwn(entry.first))
      lines.push_back(sign + krx::drive::Narrow(entry.first + L" = " + entry.second));
  };
  for (const auto& entry : before)
    if (!after.contains(entry.first)) tell("- ", entry);
  for (const auto& entry : after) {
    const auto it = before.find(entry.first);
    if (it == before.end()) tell("+ ", entry);
    if (it != before.end() && it->second != entry.second) {
      tell("* ", *it);
      tell("  ", entry);
    }
  }
  return lines;
}

}  // namespace krx::install
