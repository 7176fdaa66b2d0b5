#include "timing/Samples.h"

#include <algorithm>
#include <cmath>

namespace krx::timing {
namespace {

constexpr int kBounds = 100;
constexpr double kHalvings = 10;  // the highest bound leaves out one time in 2 to the power of that
constexpr std::size_t kFewest = 100;

struct Moments {
  double Count = 0;
  double Mean = 0;
  double Squares = 0;  // of the distances from the mean

  void Add(double time) {
    ++Count;
    const double distance = time - Mean;
    Mean += distance / Count;
    Squares += distance * (time - Mean);
  }
  double VarianceOfMean() const { return Squares / (Count - 1) / Count; }
};

double WelchT(const Moments& left, const Moments& right) {
  const double variance = left.VarianceOfMean() + right.VarianceOfMean();
  return variance > 0 ? (left.Mean - right.Mean) / std::sqrt(variance) : 0;
}

Moments MomentsBelow(const std::vector<double>& times, double bound) {
  Moments moments;
  for (const double time : times) {
    if (time < bound) moments.Add(time);
  }
  return moments;
}

}  // namespace

double WelchT(const std::vector<double>& left, const std::vector<double>& right) {
  return WelchT(MomentsBelow(left, INFINITY), MomentsBelow(right, INFINITY));
}

double FarthestT(const Samples& left, const Samples& right) {
  std::vector<double> all = left.Times;
  all.insert(all.end(), right.Times.begin(), right.Times.end());
  std::sort(all.begin(), all.end());
  double farthest = WelchT(left.Times, right.Times);
  for (int i = 1; i <= kBounds; ++i) {
    const double share = 1 - std::pow(0.5, kHalvings * i / kBounds);
    const double bound = all[static_cast<std::size_t>(share * static_cast<double>(all.size() - 1))];
    const Moments below_left = MomentsBelow(left.Times, bound);
    const Moments below_right = MomentsBelow(right.Times, bound);
    if (below_left.Count < kFewest || below_right.Count < kFewest) continue;
    const double t = WelchT(below_left, below_right);
    if (std::abs(t) > std::abs(farthest)) farthest = t;
  }
  return farthest;
}

double Median(std::vector<double> times) {
  const auto middle = times.begin() + static_cast<std::ptrdiff_t>(times.size() / 2);
  std::nth_element(times.begin(), middle, times.end());
  return *middle;
}

double MeanOfLowerHalf(const std::vector<double>& times) {
  return MomentsBelow(times, Median(times)).Mean;
}

}  // namespace krx::timing
