#pragma once

#include <algorithm>
#include <chrono>
#include <cstddef>
#include <vector>

namespace krx::bench {

using Clock = std::chrono::steady_clock;
using Time = Clock::time_point;

inline double MillisecondsBetween(Time begin, Time end) {
  return std::chrono::duration<double, std::milli>(end - begin).count();
}

inline double Since(Time begin) {
  return MillisecondsBetween(begin, Clock::now());
}

inline double Median(std::vector<double> values) {
  const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
  std::nth_element(values.begin(), middle, values.end());
  return *middle;
}

}  // namespace krx::bench
