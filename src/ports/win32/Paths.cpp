#include "ports/win32/Paths.h"

#include <algorithm>
#include <vector>

#include "folders/FolderPath.h"

namespace krx::win32 {

namespace {

using folders::HasDrive;
using folders::kNetwork;
using folders::kSeparator;

constexpr StringView kLiteral = u"\\\\?\\";
constexpr StringView kLiteralNetwork = u"\\\\?\\UNC\\";

// The names of a path; each ".." takes the one before it away, but none of the first `fixed`.
std::vector<StringView> NamesOf(StringView path, std::size_t fixed) {
  std::vector<StringView> names;
  while (!path.empty()) {
    const std::size_t end = std::min(path.find(kSeparator), path.size());
    const StringView name = path.substr(0, end);
    path.remove_prefix(std::min(end + 1, path.size()));
    if (name == u"..") {
      if (names.size() > fixed) names.pop_back();
    } else if (!name.empty() && name != u".") {
      names.push_back(name);
    }
  }
  return names;
}

String Join(String root, const std::vector<StringView>& names, std::size_t first) {
  for (std::size_t i = first; i < names.size(); ++i) {
    root += names[i];
    if (i + 1 < names.size()) root += kSeparator;
  }
  return root;
}

String Absolute(StringView path) {
  if (HasDrive(path)) {
    const String root = String(kLiteral) + path[0] + u":\\";
    return Join(root, NamesOf(path.substr(2), 0), 0);
  }
  if (!path.starts_with(kNetwork)) return {};
  const std::vector<StringView> names = NamesOf(path, 2);
  if (names.size() < 2) return {};
  const String root =
      String(kLiteralNetwork).append(names[0]).append(1, kSeparator).append(names[1]);
  return Join(root + kSeparator, names, 2);
}

// A caller may know the notation himself; a volume without its root would be a device.
String Literal(StringView path) {
  const std::size_t last = path.find(kSeparator, kLiteral.size());
  return last == StringView::npos ? String(path) + kSeparator : String(path);
}

StringView CurrentRoot(StringView current) {
  if (HasDrive(current)) return current.substr(0, 2);
  const std::size_t share = current.find(kSeparator, kNetwork.size());
  return current.substr(0, current.find(kSeparator, share + 1));
}

}  // namespace

String SystemPath(StringView path, StringView current) {
  if (path.empty() || path.find(u'\0') != StringView::npos) return {};
  if (path.starts_with(kLiteral)) return Literal(path);
  String text(path);
  std::replace(text.begin(), text.end(), u'/', kSeparator);
  if (HasDrive(text) || text.starts_with(kNetwork)) return Absolute(text);
  const StringView start = text[0] == kSeparator ? CurrentRoot(current) : current;
  return Absolute(String(start) + kSeparator + text);
}

String RootOf(const String& system_path) {
  std::size_t end = system_path.starts_with(kLiteralNetwork)
                        ? system_path.find(kSeparator, kLiteralNetwork.size()) + 1
                        : kLiteral.size();
  end = system_path.find(kSeparator, end);
  return system_path.substr(0, end) + kSeparator;
}

}  // namespace krx::win32
