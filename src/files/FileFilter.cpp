#include "files/FileFilter.h"

namespace krx::files {

namespace {

std::vector<StringView> Fields(StringView filter) {
  std::vector<StringView> fields;
  for (std::size_t end; (end = filter.find(u'|')) != StringView::npos;) {
    fields.push_back(filter.substr(0, end));
    filter.remove_prefix(end + 1);
  }
  fields.push_back(filter);
  return fields;
}

}  // namespace

std::size_t LastPass(std::size_t highest_field) {
  const std::size_t below = highest_field / 2;
  const bool half = highest_field % 2 != 0;
  return half && below % 2 != 0 ? below + 1 : below;
}

FileTypes ParseFilter(StringView filter) {
  const std::vector<StringView> fields = Fields(filter);
  FileTypes types;
  const auto add = [&](std::vector<String>& list, std::size_t field) {
    if (field < fields.size()) list.emplace_back(fields[field]);
  };
  // The last pass may find no field at all.
  for (std::size_t pass = 0; pass <= LastPass(fields.size() - 1); ++pass) {
    add(types.Descriptions, 2 * pass);
    add(types.Patterns, 2 * pass + 1);
  }
  return types;
}

}  // namespace krx::files
