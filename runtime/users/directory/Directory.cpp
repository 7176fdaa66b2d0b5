#include "runtime/users/directory/Directory.h"

#include "base/Utf8.h"

namespace krx::runtime {

String DirectoryEntry::Text(std::string_view attribute) const {
  const auto found = Attributes.find(std::string(attribute));
  if (found == Attributes.end() || found->second.empty()) return {};
  return FromUtf8(found->second.front()).value_or(String());
}

}  // namespace krx::runtime
