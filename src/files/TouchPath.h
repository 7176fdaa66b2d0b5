#pragma once

#include <algorithm>
#include <cstdint>

#include "folders/FolderPath.h"

// Paths as the touch dialogs show them: without a separator at the end, a drive as its bare name.
namespace krx::files {

inline bool IsBareDrive(StringView path) {
  return path.size() == 2 && path.ends_with(u':');
}

// Number of parts below the drive or the share.
inline std::int32_t LevelsBelowRoot(StringView path) {
  constexpr std::int32_t kSeparatorsOfShare = 3;  // \\server\share
  const auto separators = std::count(path.begin(), path.end(), folders::kSeparator);
  const std::int32_t of_root = path.starts_with(folders::kNetwork) ? kSeparatorsOfShare : 0;
  return static_cast<std::int32_t>(separators) - of_root;
}

inline bool IsRoot(StringView path) {
  if (!path.starts_with(folders::kNetwork)) return IsBareDrive(path);
  return LevelsBelowRoot(path) == 0 && !path.ends_with(folders::kSeparator);
}

inline String UpToLast(StringView path) {
  return String(path.substr(0, std::min(path.rfind(folders::kSeparator), path.size())));
}

inline constexpr StringView kParent = u"..";      // row that leads to the folder above
inline constexpr StringView kHasFolders = u" +";  // marker of a folder with folders below

}  // namespace krx::files
