#include "support/HeapCount.h"

#include <windows.h>

#include <array>

namespace krx::tests {

HeapCount CountHeaps() {
  HeapCount count;
  std::array<HANDLE, 64> heaps{};
  const DWORD found = GetProcessHeaps(static_cast<DWORD>(heaps.size()), heaps.data());
  for (DWORD i = 0; i < found; ++i) {
    HeapLock(heaps[i]);
    PROCESS_HEAP_ENTRY entry{};
    while (HeapWalk(heaps[i], &entry)) {
      if (!(entry.wFlags & PROCESS_HEAP_ENTRY_BUSY)) continue;
      ++count.Blocks;
      count.Bytes += entry.cbData;
    }
    HeapUnlock(heaps[i]);
  }
  return count;
}

}  // namespace krx::tests
