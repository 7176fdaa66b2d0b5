#pragma once

#include <windows.h>

#include <cstddef>
#include <vector>

namespace krx::tests {

// What the process has allocated on all its heaps.
struct HeapCount {
  std::size_t Blocks = 0;
  std::size_t Bytes = 0;
};
HeapCount CountHeaps();

// Lets every block be seen that is lost while this lives, and none that only comes and goes. A heap
// may change its ways for a size of which it has seen many blocks, and take blocks out of groups
// that show as one block: so that has happened before, and the groups there are have been used up.
class SettledHeaps {
 public:
  SettledHeaps();
  ~SettledHeaps();
  SettledHeaps(const SettledHeaps&) = delete;
  SettledHeaps& operator=(const SettledHeaps&) = delete;

 private:
  struct Block {
    HANDLE Heap;
    void* Data;
  };
  void UseUpGroups(HANDLE heap, std::size_t size);

  std::vector<Block> held_;
};

}  // namespace krx::tests
