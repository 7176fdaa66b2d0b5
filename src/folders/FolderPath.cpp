#include "folders/FolderPath.h"

#include <algorithm>

#include "base/Error.h"

namespace krx::folders {

namespace {

Error NoSuchPath() {
  return RuntimeError(76, u"Path not found");
}

// Takes the text up to the next separator off the front.
StringView TakeName(StringView& rest) {
  const std::size_t end = std::min(rest.find(kSeparator), rest.size());
  const StringView name = rest.substr(0, end);
  rest.remove_prefix(std::min(end + 1, rest.size()));
  return name;
}

// The root of a share, with the two names taken off the front.
String TakeShare(StringView& rest) {
  String root(kNetwork);
  for (int names = 0; names < 2;) {
    if (rest.empty()) throw NoSuchPath();
    const StringView name = TakeName(rest);
    if (name.empty()) continue;
    if (++names == 2) root += kSeparator;
    root += name;
  }
  return root;
}

using Current = std::function<String()>;

String TakeDrive(StringView& rest, const Current& current_directory) {
  const bool bare = rest.size() == 2;
  const char16_t letter = rest[0];
  rest.remove_prefix(2);
  if (!bare && !rest.starts_with(kSeparator)) {
    const String current = current_directory();
    if (HasDrive(current) && AsciiUpper(current[0]) == AsciiUpper(letter))
      return letter + current.substr(1);
  }
  return {bare ? AsciiUpper(letter) : letter, u':', kSeparator};
}

String TakeRoot(StringView& rest, const Current& current_directory) {
  if (rest.starts_with(kNetwork)) return TakeShare(rest);
  if (HasDrive(rest)) return TakeDrive(rest, current_directory);
  const String current = current_directory();
  if (current.empty()) throw NoSuchPath();
  return rest.starts_with(kSeparator) ? current.substr(0, RootLength(current)) : current;
}

// Whether a path begins at a root and has backslashes and names alone.
bool IsWhole(StringView path) {
  const bool from_root =
      path.starts_with(kNetwork) || (HasDrive(path) && (path.size() == 2 || path[2] == kSeparator));
  if (!from_root || path.find(u'/') != StringView::npos) return false;
  while (!path.empty()) {
    const StringView name = TakeName(path);
    if (name == u"." || name == u"..") return false;
  }
  return true;
}

}  // namespace

bool HasDrive(StringView path) {
  return path.size() >= 2 && path[1] == u':' && path[0] != kSeparator;
}

String FullPath(StringView path, FileSystem& files) {
  return FullPath(path, [&files] { return files.CurrentDirectory(); });
}

String FullPath(StringView path, const Current& current_directory) {
  if (path.empty()) throw NoSuchPath();
  String text(path);
  std::replace(text.begin(), text.end(), u'/', kSeparator);
  StringView rest = text;
  String full = TakeRoot(rest, current_directory);
  const std::size_t root = RootLength(full);
  while (!rest.empty()) {
    const StringView name = TakeName(rest);
    if (name.empty() || name == u".") continue;
    if (name == u"..") {
      const std::size_t end = full.rfind(kSeparator);
      if (full.size() > root) full.resize(std::max(root, end));
    } else {
      full = PathIn(full, name);
    }
  }
  return full;
}

String WholePath(StringView path, FileSystem& files) {
  if (path.empty() || IsWhole(path)) return String(path);
  try {
    return FullPath(path, files);
  } catch (const Error&) {
    return String(path);
  }
}

std::size_t RootLength(StringView path) {
  if (!path.starts_with(kNetwork)) return std::min<std::size_t>(path.size(), 3);
  const std::size_t share = path.find(kSeparator, kNetwork.size());
  if (share == StringView::npos) return path.size();
  return std::min(path.find(kSeparator, share + 1), path.size());
}

std::vector<std::size_t> Levels(StringView path) {
  std::vector<std::size_t> lengths;
  if (path.empty()) return lengths;
  for (std::size_t at = RootLength(path); at < path.size();) {
    lengths.push_back(at);
    at = std::min(path.find(kSeparator, at + 1), path.size());
  }
  lengths.push_back(path.size());
  return lengths;
}

StringView LastName(StringView path) {
  if (path.size() <= RootLength(path)) return path;
  return path.substr(path.rfind(kSeparator) + 1);
}

String PathIn(StringView folder, StringView name) {
  String path(folder);
  if (!path.ends_with(kSeparator)) path += kSeparator;
  return path += name;
}

}  // namespace krx::folders
