#pragma once

#include <vector>

#include "base/String.h"

namespace krx::files {

// A file filter taken apart: what the visible and the hidden list of file types hold. A description
// without a pattern has none beside it.
struct FileTypes {
  std::vector<String> Descriptions;
  std::vector<String> Patterns;
};

// Takes a filter apart at every "|": description, pattern, description, pattern ... The empty
// filter is one empty description.
FileTypes ParseFilter(StringView filter);

// Number of the last pass over pairs for a highest field index: half of it, halves rounded to the
// even neighbour.
std::size_t LastPass(std::size_t highest_field);

}  // namespace krx::files
