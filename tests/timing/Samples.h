#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace krx::timing {

// How long the attempts of one case took, in nanoseconds.
struct Samples {
  std::string Name;
  std::vector<double> Times;
};

// Welch's t of two cases.
double WelchT(const std::vector<double>& left, const std::vector<double>& right);

// The t that is farthest from 0 of all times and of those below ever lower bounds. What interrupts
// a processor now and then makes some times long by chance, and so hides differences of the others;
// the bounds are hundred quantiles of both cases together, from half of the times to nearly all.
double FarthestT(const Samples& left, const Samples& right);

double Median(std::vector<double> times);
// Of the times below the median, which interruptions have not reached.
double MeanOfLowerHalf(const std::vector<double>& times);

}  // namespace krx::timing
