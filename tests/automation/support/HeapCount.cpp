#include "support/HeapCount.h"

namespace krx::tests {

namespace {

std::vector<HANDLE> Heaps() {
  std::vector<HANDLE> heaps(64);
  heaps.resize(GetProcessHeaps(static_cast<DWORD>(heaps.size()), heaps.data()));
  return heaps;
}

HeapCount Count(HANDLE heap) {
  HeapCount count;
  HeapLock(heap);
  PROCESS_HEAP_ENTRY entry{};
  while (HeapWalk(heap, &entry)) {
    if (!(entry.wFlags & PROCESS_HEAP_ENTRY_BUSY)) continue;
    ++count.Blocks;
    count.Bytes += entry.cbData;
  }
  HeapUnlock(heap);
  return count;
}

}  // namespace

HeapCount CountHeaps() {
  HeapCount all;
  for (const HANDLE heap : Heaps()) {
    const HeapCount count = Count(heap);
    all.Blocks += count.Blocks;
    all.Bytes += count.Bytes;
  }
  return all;
}

SettledHeaps::SettledHeaps() {
  constexpr int kMany = 4'096;  // twice of what was seen to be many
  constexpr std::size_t kStep = 8;
  constexpr std::size_t kLargest = 1'024;  // of those that were seen to be grouped
  held_.reserve(1 << 16);                  // its own blocks are not among those that it fills
  for (const HANDLE heap : Heaps()) {
    for (std::size_t size = kStep; size <= kLargest; size += kStep) {
      for (int i = 0; i < kMany; ++i)
        HeapFree(heap, 0, HeapAlloc(heap, 0, size));
      UseUpGroups(heap, size);
    }
  }
}

SettledHeaps::~SettledHeaps() {
  for (const Block& block : held_)
    HeapFree(block.Heap, 0, block.Data);
}

// Until a block or a group more shows. A heap that cannot be walked shows none.
void SettledHeaps::UseUpGroups(HANDLE heap, std::size_t size) {
  constexpr int kAtOnce = 8;
  constexpr int kLargestGroup = 4'096;  // blocks; more than any that was seen
  const std::size_t before = Count(heap).Blocks;
  for (int held = 0; held < kLargestGroup && Count(heap).Blocks == before; held += kAtOnce) {
    for (int i = 0; i < kAtOnce; ++i)
      held_.push_back({heap, HeapAlloc(heap, 0, size)});
  }
}

}  // namespace krx::tests
