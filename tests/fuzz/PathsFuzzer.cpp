#include "Source.h"
#include "folders/FolderPath.h"
#include "ports/headless/HeadlessPlatform.h"

// Paths as callers write them.

namespace krx::fuzz {
namespace {

namespace folders = krx::folders;

constexpr StringView kWords[] = {
    u"\\", u"/", u"..",   u".",        u"C:", u"d:",      u"\\\\", u"\\\\srv\\share",
    u" ",  u"a", u"..\\", u"C:\\a\\b", u":",  u"name.txt"};
constexpr StringView kCurrent[] = {u"C:\\", u"C:\\a\\b", u"\\\\srv\\share", u"\\\\srv\\share\\x",
                                   u"D:\\", u""};

void CheckNormal(const String& full, folders::FileSystem& files) {
  const std::size_t root = folders::RootLength(full);
  Require(full.size() >= root);
  Require(folders::FullPath(full, files) == full);
  Require(folders::WholePath(full, files) == full);
  std::size_t before = 0;
  for (const std::size_t level : folders::Levels(full)) {
    Require(level > before);
    before = level;
    const String ancestor = full.substr(0, level);
    Require(folders::FullPath(ancestor, files) == ancestor);
  }
  Require(before == full.size());
  if (full.size() == root) return;
  const StringView name = folders::LastName(full);
  Require(!name.empty() && name.find(u'\\') == StringView::npos && name != u"." && name != u"..");
  const String parent = folders::FullPath(full + u"\\..", files);
  Require(folders::PathIn(parent, name) == full);
}

}  // namespace
}  // namespace krx::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace krx::fuzz;
  Source source(data, size);
  krx::headless::SimulatedFiles files;
  files.CurrentFolder = kCurrent[source.Below(std::size(kCurrent))];
  const krx::String path = source.Text(kWords);
  krx::String full;
  if (Allowed([&] { full = folders::FullPath(path, files); })) CheckNormal(full, files);
  const krx::String whole = folders::WholePath(path, files);
  Require(folders::WholePath(whole, files) == whole);
  return 0;
}
