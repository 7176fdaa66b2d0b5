#pragma once

#include <cstdint>
#include <map>
#include <string_view>
#include <utility>

#include "base/String.h"

namespace krx::runtime {

// The texts of one language by group and key.
class TextTable {
 public:
  using Name = std::pair<std::int32_t, String>;  // group, key

  // Adds the texts of a text file; a text that is there already is replaced. The format stands at
  // the top of texts/en.txt. A malformed file raises Error, which names `file`, the line and the
  // reason, and leaves the table as it was.
  void Add(const String& file, std::string_view bytes);

  // The text, or null if there is none.
  const String* Find(StringView key, std::int32_t group) const;

  const std::map<Name, String>& Entries() const { return entries_; }

 private:
  std::map<Name, String> entries_;
};

}  // namespace krx::runtime
