#pragma once

#include <functional>
#include <string>
#include <vector>

#include "soak/Counters.h"

namespace krx::soak {

// What many calls leave behind, counted in rounds: what the platform's own threads bring or free by
// themselves shows in a round or two, what every call leaves shows in each.
struct Growth {
  int Calls = 0;  // of each round
  std::vector<Counters> Rounds;

  // The median of the rounds.
  Counters Usual() const;
  // What the calls have left behind, in words; empty when it is nothing. One window is too many; of
  // everything else one per call is a leak, and a twentieth of that is tolerated.
  std::string Leak() const;
  // Leak has nothing to say but of heap blocks.
  bool OnlyBlocksLeak() const;
};

// Counts what `open`, which is given a number of calls to make, leaves behind in so many calls
// after others to warm up. Prints and records every round. A heap that sets groups of blocks aside
// for each thread warms up longer: where only blocks leak there, all is measured anew, up to three
// times.
Growth GrowthOver(const std::string& what, int warm_up, int calls,
                  const std::function<void(int)>& open);

}  // namespace krx::soak
