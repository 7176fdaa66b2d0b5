// The counters and the judgement see what they are to find.

#include "soak/Growth.h"

#include <gtest/gtest.h>
#include <windows.h>

#include <functional>
#include <utility>

namespace krx::soak {
namespace {

constexpr int kCalls = 200;
using Counter = long Counters::*;

HWND NewWindow() {
  return CreateWindowExW(0, L"STATIC", L"", WS_POPUP, 0, 0, 1, 1, nullptr, nullptr, nullptr,
                         nullptr);
}

// One object, left behind by every call on purpose, and how it is taken away in the end.
struct Kind {
  const char* Name;
  Counter Counts;
  std::function<std::function<void()>(int)> Leave;
};

void PrintTo(const Kind& kind, std::ostream* out) {
  *out << kind.Name;
}

class Leaking : public testing::TestWithParam<Kind> {};

TEST_P(Leaking, OneObjectPerCallIsSeenInEveryRound) {
  // The first window of a thread brings the input method's along.
  const HWND first = NewWindow();
  std::vector<std::function<void()>> undo;
  undo.reserve(5 * kCalls);
  const Growth growth = GrowthOver(GetParam().Name, kCalls / 10, kCalls, [&](int calls) {
    for (int i = 0; i < calls; ++i)
      undo.push_back(GetParam().Leave(static_cast<int>(undo.size())));
  });
  for (const auto& take_away : undo)
    take_away();
  DestroyWindow(first);
  for (const Counters& round : growth.Rounds)
    EXPECT_GE(round.*GetParam().Counts, growth.Calls);
  EXPECT_NE(growth.Leak(), "");
}

INSTANTIATE_TEST_SUITE_P(
    Kinds, Leaking,
    testing::Values(Kind{"Windows", &Counters::Windows,
                         [](int) { return [window = NewWindow()] { DestroyWindow(window); }; }},
                    Kind{"GraphicsObjects", &Counters::GdiObjects,
                         [](int) {
                           return [brush = CreateSolidBrush(RGB(1, 2, 3))] { DeleteObject(brush); };
                         }},
                    Kind{"Handles", &Counters::KernelHandles,
                         [](int) {
                           return [event = CreateEventW(nullptr, FALSE, FALSE, nullptr)] {
                             CloseHandle(event);
                           };
                         }},
                    // Large enough to be shown by itself where small blocks are grouped; there only
                    // the other platforms see a small one.
                    Kind{"HeapBlocks", &Counters::HeapBlocks,
                         [](int) {
                           return [block = HeapAlloc(GetProcessHeap(), 0, 4000)] {
                             HeapFree(GetProcessHeap(), 0, block);
                           };
                         }},
                    Kind{"Atoms", &Counters::Atoms,
                         [](int i) {
                           const std::wstring name = L"krx leak " + std::to_wstring(i);
                           return [atom = GlobalAddAtomW(name.c_str())] { GlobalDeleteAtom(atom); };
                         }}),
    [](const auto& test) { return std::string(test.param.Name); });

Growth OfBlocks(std::initializer_list<long> rounds) {
  Growth growth{40, {}};
  for (const long blocks : rounds)
    growth.Rounds.push_back({0, 0, 0, blocks, 0});
  return growth;
}

TEST(GrowthJudgement, WhatComesOrGoesInARoundOrTwoIsNoLeak) {
  EXPECT_EQ(OfBlocks({0, 0, 0, 0, 0}).Leak(), "");
  EXPECT_EQ(OfBlocks({14, 0, 0, -12, 0}).Leak(), "");
  EXPECT_EQ(OfBlocks({14, 0, 12, -1, 2}).Leak(), "");
  EXPECT_EQ(OfBlocks({-12, -12, -12, 0, 0}).Leak(), "");
}

TEST(GrowthJudgement, BlocksAloneAreToldFromALeakOfAnythingElse) {
  Growth growth = OfBlocks({3, 0, 3, 0, 3});
  EXPECT_NE(growth.Leak(), "");
  EXPECT_TRUE(growth.OnlyBlocksLeak());
  growth.Rounds[1].Windows = 1;
  EXPECT_FALSE(growth.OnlyBlocksLeak());
  EXPECT_FALSE(OfBlocks({0, 0, 0, 0, 0}).OnlyBlocksLeak());
}

TEST(GrowthJudgement, ABlockPerCallIsALeakWhateverGoesMeanwhile) {
  EXPECT_NE(OfBlocks({40, 40, 40, 40, 40}).Leak(), "");
  EXPECT_NE(OfBlocks({28, 40, 28, 54, 40}).Leak(), "");
  EXPECT_NE(OfBlocks({-1000, 28, 28, 28, -12}).Leak(), "");
}

TEST(GrowthJudgement, ASingleWindowIsALeak) {
  Growth growth = OfBlocks({0, 0, 0, 0, 0});
  growth.Rounds[3].Windows = 1;
  EXPECT_NE(growth.Leak(), "");
}

}  // namespace
}  // namespace krx::soak
