#include "support/LoadCycles.h"

#include <windows.h>

#include <cstdio>

#include "platform/Wish.h"
#include "soak/Counters.h"
#include "support/HeapCount.h"

namespace krx::tests {

namespace {

// What came and went of itself: the system's threads, the last group of a size that is half full.
// A lost block a cycle makes 16 groups in 500 cycles where heaps group blocks, 500 blocks
// elsewhere.
constexpr std::size_t kBlocks = 8;
constexpr std::size_t kBytes = 64 * 1024;
constexpr long kHandles = 8;
constexpr int kWarmUp = 100;

struct Holdings {
  DWORD TlsIndex = 0;  // the first free one
  HeapCount Heaps;
  long Handles = 0;

  static Holdings Now() {
    const DWORD index = TlsAlloc();
    EXPECT_TRUE(TlsFree(index));
    return {index, CountHeaps(), soak::Counters::Now().KernelHandles};
  }
};

void Run(int cycles, const std::function<void()>& cycle) {
  for (int i = 0; i < cycles && !testing::Test::HasFailure(); ++i)
    cycle();
}

}  // namespace

int LoadCycles() {
  return static_cast<int>(test::Wish("KRX_LOAD_CYCLES", 500));
}

testing::AssertionResult LeavesNothing(int cycles, const std::function<void()>& cycle) {
  Run(kWarmUp, cycle);
  const SettledHeaps settled;
  Run(kWarmUp, cycle);
  const Holdings before = Holdings::Now();
  Run(cycles, cycle);
  const Holdings after = Holdings::Now();
  char text[200];
  std::snprintf(text, sizeof text,
                "%d cycles: TLS index %lu, then %lu; blocks %zu, then %zu; bytes %zu, then %zu; "
                "handles %ld, then %ld",
                cycles, before.TlsIndex, after.TlsIndex, before.Heaps.Blocks, after.Heaps.Blocks,
                before.Heaps.Bytes, after.Heaps.Bytes, before.Handles, after.Handles);
  std::puts(text);
  const bool nothing = cycles > 0 && after.TlsIndex <= before.TlsIndex &&
                       after.Heaps.Blocks <= before.Heaps.Blocks + kBlocks &&
                       after.Heaps.Bytes <= before.Heaps.Bytes + kBytes &&
                       after.Handles <= before.Handles + kHandles;
  return (nothing ? testing::AssertionSuccess() : testing::AssertionFailure()) << text;
}

}  // namespace krx::tests
