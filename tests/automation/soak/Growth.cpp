#include "soak/Growth.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>

#include "platform/Differences.h"

namespace krx::soak {

namespace {

constexpr int kMeasuredRounds = 5;
constexpr int kMostRepetitions = 3;

long Median(const std::vector<Counters>& rounds, long Counters::*kind) {
  std::vector<long> growth;
  for (const Counters& round : rounds)
    growth.push_back(round.*kind);
  std::sort(growth.begin(), growth.end());
  return growth.at(growth.size() / 2);
}

}  // namespace

Counters Growth::Usual() const {
  return {Median(Rounds, &Counters::Windows), Median(Rounds, &Counters::GdiObjects),
          Median(Rounds, &Counters::KernelHandles), Median(Rounds, &Counters::HeapBlocks),
          Median(Rounds, &Counters::Atoms)};
}

std::string Growth::Leak() const {
  Counters all;
  for (const Counters& round : Rounds)
    all = all + round;
  const Counters usual = Usual();
  const long tolerated = Calls / 20;
  const bool leak = all.Windows > 0 || usual.GdiObjects > 0 || usual.Atoms > 0 ||
                    usual.KernelHandles > tolerated || usual.HeapBlocks > tolerated;
  return leak ? ToString(usual) + " per " + std::to_string(Calls) + " calls" : std::string();
}

bool Growth::OnlyBlocksLeak() const {
  Growth others = *this;
  for (Counters& round : others.Rounds)
    round.HeapBlocks = 0;
  return !Leak().empty() && others.Leak().empty();
}

namespace {

Growth Measure(const std::string& what, int calls, const std::function<void(int)>& open) {
  Growth growth{calls / kMeasuredRounds, {}};
  growth.Rounds.reserve(kMeasuredRounds);  // what is noted here is no growth
  Counters before = Counters::Now();
  for (int i = 0; i < kMeasuredRounds; ++i) {
    open(growth.Calls);
    const Counters now = Counters::Now();
    growth.Rounds.push_back(now - before);
    before = now;
    std::printf("%d times %s: %s\n", growth.Calls, what.c_str(),
                ToString(growth.Rounds.back()).c_str());
    std::fflush(stdout);
  }
  return growth;
}

}  // namespace

Growth GrowthOver(const std::string& what, int warm_up, int calls,
                  const std::function<void(int)>& open) {
  open(warm_up);
  Growth growth = Measure(what, calls, open);
  const int more = test::Expected(test::kHeapsGroupBlocks, kMostRepetitions, 0);
  for (int i = 0; i < more && growth.OnlyBlocksLeak(); ++i)
    growth = Measure(what, calls, open);
  testing::Test::RecordProperty("growth", ToString(growth.Usual()));
  return growth;
}

}  // namespace krx::soak
