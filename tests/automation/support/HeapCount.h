#pragma once

#include <cstddef>

namespace krx::tests {

// What the process has allocated on all its heaps.
struct HeapCount {
  std::size_t Blocks = 0;
  std::size_t Bytes = 0;
};
HeapCount CountHeaps();

}  // namespace krx::tests
