#pragma once

#include <vector>

#include "base/String.h"

namespace krx::ui {

// Tells which file names a pattern means: alternatives parted by ";" in which "*" stands for any
// number of characters and "?" for one, in any case. A name without a dot counts as ending in one,
// so "*.*" means every name and "*." those without an extension. An empty pattern means all.
class FilePattern {
 public:
  explicit FilePattern(StringView pattern = {});

  // Takes time at most in proportion to the product of both lengths.
  bool Matches(StringView name) const;
  bool MatchesAll() const { return alternatives_.empty(); }

 private:
  std::vector<String> alternatives_;  // lower case; none: everything matches
};

}  // namespace krx::ui
