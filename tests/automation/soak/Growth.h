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

  // The median of the last five rounds.
  Counters Usual() const;
  // A round leaves heap blocks more often than not.
  bool BlocksStay() const;
  // What the calls have left behind, in words; empty when it is nothing. One window is too many; of
  // everything else one per call is a leak, and a twentieth of that is tolerated.
  std::string Leak() const;

 private:
  long Tolerated() const { return Calls / 20; }
};

// Counts what `open`, which is given a number of calls to make, leaves behind in so many calls
// after others to warm up, in five rounds. While blocks stay it goes on, for up to twenty: a heap
// that sets groups of blocks aside for each thread has enough of them one day, a leak never ends.
// Prints and records every round.
Growth GrowthOver(const std::string& what, int warm_up, int calls,
                  const std::function<void(int)>& open);

}  // namespace krx::soak
