#include "support/LoadCycles.h"

#include <gtest/gtest.h>
#include <windows.h>

#include <thread>

#include "platform/Differences.h"
#include "support/HeapCount.h"

namespace krx::tests {
namespace {

using test::Expected;
using test::kHeapsGroupBlocks;

struct OwnHeap {
  HANDLE Handle = HeapCreate(0, 0, 0);
  ~OwnHeap() { HeapDestroy(Handle); }
};

TEST(HeapCountTest, ManyBlocksOfASizeLeaveAGroupOnlyWhereHeapsGroupThem) {
  constexpr int kMany = 4'096;
  constexpr std::size_t kSize = 100;
  const OwnHeap heap;
  const HeapCount before = CountHeaps();
  for (int i = 0; i < kMany; ++i)
    HeapFree(heap.Handle, 0, HeapAlloc(heap.Handle, 0, kSize));
  EXPECT_EQ(CountHeaps().Blocks - before.Blocks, Expected<std::size_t>(kHeapsGroupBlocks, 1, 0))
      << test::ThisPlatform().Name() << " shows no longer what is known of "
      << kHeapsGroupBlocks.Where << ": " << kHeapsGroupBlocks.Reason;
}

TEST(HeapCountTest, ASettledHeapShowsNothingOfBlocksThatCameAndWent) {
  constexpr int kMany = 4'096;
  const OwnHeap heap;
  const SettledHeaps settled;
  const HeapCount before = CountHeaps();
  for (std::size_t size = 1; size <= 2'048; size += 50) {
    for (int i = 0; i < kMany; ++i)
      HeapFree(heap.Handle, 0, HeapAlloc(heap.Handle, 0, size));
  }
  EXPECT_EQ(CountHeaps().Blocks, before.Blocks);
  EXPECT_EQ(CountHeaps().Bytes, before.Bytes);
}

TEST(LoadCyclesTest, OneLostBlockACycleIsNoticed) {
  constexpr std::size_t kSize = 40;
  EXPECT_FALSE(LeavesNothing(LoadCycles(), [] { HeapAlloc(GetProcessHeap(), 0, kSize); }));
}

TEST(LoadCyclesTest, OneLostBlockOfAThreadThatEndsIsNoticed) {
  constexpr std::size_t kSize = 40;
  EXPECT_FALSE(LeavesNothing(
      LoadCycles(), [] { std::thread([] { HeapAlloc(GetProcessHeap(), 0, kSize); }).join(); }));
}

TEST(LoadCyclesTest, OneLostHandleACycleIsNoticed) {
  EXPECT_FALSE(LeavesNothing(50, [] { CreateEventW(nullptr, FALSE, FALSE, nullptr); }));
}

TEST(LoadCyclesTest, ACycleThatGivesAllBackLeavesNothing) {
  EXPECT_TRUE(LeavesNothing(LoadCycles(), [] {
    HeapFree(GetProcessHeap(), 0, HeapAlloc(GetProcessHeap(), 0, 40));
    CloseHandle(CreateEventW(nullptr, FALSE, FALSE, nullptr));
  }));
}

}  // namespace
}  // namespace krx::tests
