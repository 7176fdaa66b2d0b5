#pragma once

#include <cstddef>

#include "base/String.h"

namespace krx::test {

// Watches, as long as it lives, all memory that is freed for a text in UTF-16 and counts the blocks
// that still hold it. The program's operators new and delete are replaced for that.
class FreedMemory {
 public:
  // The text must outlive the watch.
  explicit FreedMemory(StringView text);
  ~FreedMemory();
  FreedMemory(const FreedMemory&) = delete;
  FreedMemory& operator=(const FreedMemory&) = delete;

  std::size_t BlocksWithText() const;
};

}  // namespace krx::test
