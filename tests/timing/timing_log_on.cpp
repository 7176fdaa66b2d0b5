// Whether the time that a refused log-on takes tells why it was refused.
// usage: timing_log_on FOLDER [ATTEMPTS [SEED]]; FOLDER is new, in memory where that is possible,
// and so many attempts are made of each case. Fails when the times of two cases differ.

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <numeric>
#include <random>

#include "timing/LogOnCases.h"
#include "timing/Samples.h"

namespace krx::timing {
namespace {

constexpr double kDifferent = 5;  // |t| from which on two cases differ
constexpr std::size_t kWarmUp = 200;

// One attempt of each case, in random order, so that whatever changes meanwhile meets all alike.
void Round(LogOnBench& bench, std::vector<std::size_t>& order, std::mt19937& random,
           std::vector<Samples>* samples) {
  std::shuffle(order.begin(), order.end(), random);
  bench.Restart();
  for (const std::size_t i : order) {
    const double time = bench.Measure(bench.Cases()[i]);
    if (samples != nullptr) (*samples)[i].Times.push_back(time);
  }
}

std::vector<Samples> MeasureAll(LogOnBench& bench, std::size_t attempts, unsigned seed) {
  std::vector<Samples> samples;
  for (const LogOnCase& one : bench.Cases())
    samples.push_back({one.Name, {}});
  std::vector<std::size_t> order(samples.size());
  std::iota(order.begin(), order.end(), std::size_t{0});
  std::mt19937 random(seed);
  for (std::size_t i = 0; i < kWarmUp; ++i)
    Round(bench, order, random, nullptr);
  for (std::size_t i = 0; i < attempts; ++i)
    Round(bench, order, random, &samples);
  return samples;
}

// Prints each case beside the others; returns how many pairs differ.
int Compare(const std::vector<Samples>& samples) {
  int differing = 0;
  double farthest = 0;
  std::printf("%-28s %10s %10s %12s  %s\n", "case", "attempts", "median ns", "lower half",
              "farthest t, to");
  for (const Samples& one : samples) {
    double t = 0;
    const Samples* to = &one;
    for (const Samples& other : samples) {
      if (&one == &other) continue;
      const double found = FarthestT(one, other);
      if (&one < &other && std::abs(found) >= kDifferent) ++differing;
      if (std::abs(found) > std::abs(t)) t = found, to = &other;
    }
    farthest = std::max(farthest, std::abs(t));
    std::printf("%-28s %10zu %10.0f %12.0f  %+6.2f %s\n", one.Name.c_str(), one.Times.size(),
                Median(one.Times), MeanOfLowerHalf(one.Times), t, to->Name.c_str());
  }
  std::printf("%zu cases, %zu measurements; |t| is %.2f at most, %d pairs differ\n", samples.size(),
              samples.size() * samples.front().Times.size(), farthest, differing);
  return differing;
}

}  // namespace
}  // namespace krx::timing

int main(int argc, char** argv) {
  if (argc < 2) {
    std::fputs("usage: timing_log_on FOLDER [ATTEMPTS [SEED]]\n", stderr);
    return 2;
  }
  const std::size_t attempts = argc > 2 ? std::strtoul(argv[2], nullptr, 10) : 50'000;
  const auto seed = static_cast<unsigned>(argc > 3 ? std::strtoul(argv[3], nullptr, 10) : 1);
  krx::timing::LogOnBench bench(argv[1]);
  return krx::timing::Compare(krx::timing::MeasureAll(bench, attempts, seed)) == 0 ? 0 : 1;
}
