#include "soak/Growth.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>

namespace krx::soak {

namespace {

constexpr int kMeasuredRounds = 5;
constexpr int kMostRounds = 4 * kMeasuredRounds;

long Median(const std::vector<Counters>& rounds, long Counters::*kind) {
  std::vector<long> growth;
  for (std::size_t i = rounds.size() - std::min<std::size_t>(rounds.size(), kMeasuredRounds);
       i < rounds.size(); ++i)
    growth.push_back(rounds[i].*kind);
  std::sort(growth.begin(), growth.end());
  return growth.at(growth.size() / 2);
}

}  // namespace

Counters Growth::Usual() const {
  return {Median(Rounds, &Counters::Windows), Median(Rounds, &Counters::GdiObjects),
          Median(Rounds, &Counters::KernelHandles), Median(Rounds, &Counters::HeapBlocks),
          Median(Rounds, &Counters::Atoms)};
}

bool Growth::BlocksStay() const {
  return Usual().HeapBlocks > Tolerated();
}

std::string Growth::Leak() const {
  Counters all;
  for (const Counters& round : Rounds)
    all = all + round;
  const Counters usual = Usual();
  const bool leak = all.Windows > 0 || usual.GdiObjects > 0 || usual.Atoms > 0 ||
                    usual.KernelHandles > Tolerated() || BlocksStay();
  return leak ? ToString(usual) + " per " + std::to_string(Calls) + " calls" : std::string();
}

Growth GrowthOver(const std::string& what, int warm_up, int calls,
                  const std::function<void(int)>& open) {
  Growth growth{calls / kMeasuredRounds, {}};
  growth.Rounds.reserve(kMostRounds);  // what is noted here is no growth
  open(warm_up);
  Counters before = Counters::Now();
  for (int i = 0; i < kMeasuredRounds || (i < kMostRounds && growth.BlocksStay()); ++i) {
    open(growth.Calls);
    const Counters now = Counters::Now();
    growth.Rounds.push_back(now - before);
    before = now;
    std::printf("%d times %s: %s\n", growth.Calls, what.c_str(),
                ToString(growth.Rounds.back()).c_str());
    std::fflush(stdout);
  }
  testing::Test::RecordProperty("growth", ToString(growth.Usual()));
  return growth;
}

}  // namespace krx::soak
