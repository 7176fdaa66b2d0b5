#pragma once

#include <functional>
#include <vector>

#include "folders/FileSystem.h"

namespace krx::folders {

// Paths of folders as the lists show them: absolute, parted by single backslashes, without one at
// the end but at the root of a drive. Names are kept as they are, trailing dots and blanks too.

inline constexpr char16_t kSeparator = u'\\';
inline constexpr StringView kNetwork = u"\\\\";  // begins the name of a server

// Whether a path begins with a drive's name: "C:".
bool HasDrive(StringView path);

// The normal form of a path. A bare drive ("d:") is its root, spelled as the system spells drives
// ("D:\"); what does not begin at the root of a drive or share is taken from the current directory,
// or from the root of a drive that is not the current one. Runtime error 76 for what cannot name a
// folder: the empty text, a server without a share.
String FullPath(StringView path, FileSystem& files);
String FullPath(StringView path, const std::function<String()>& current_directory);

// A path as a caller may write it, as a whole one with backslashes: a relative one, or one with
// slashes, "." or "..", in normal form; any other as it is, and so is what cannot name a folder.
String WholePath(StringView path, FileSystem& files);

// Length of the root of a path in normal form: of "C:\" or of "\\server\share".
std::size_t RootLength(StringView path);

// The lengths of a path's ancestors in normal form, from the root down, and of the path itself.
std::vector<std::size_t> Levels(StringView path);

// The last name of a path in normal form; a root is its own name.
StringView LastName(StringView path);

// The path of a name in a folder, whose path is in normal form.
String PathIn(StringView folder, StringView name);

}  // namespace krx::folders
