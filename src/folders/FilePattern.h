#pragma once

#include <vector>

#include "base/CaseFolding.h"

namespace krx::folders {

// Tells which file names a pattern means: alternatives parted by ";" in which "*" stands for any
// number of characters and "?" for one, in any case. A name without a dot counts as ending in one,
// so "*.*" means every name and "*." those without an extension. An empty pattern means all.
class FilePattern {
 public:
  FilePattern() = default;
  // The folding outlives the pattern.
  FilePattern(StringView pattern, const CaseFolding& folding);

  // Takes time at most in proportion to the product of both lengths.
  bool Matches(StringView name) const;
  bool MatchesAll() const { return alternatives_.empty(); }

 private:
  const CaseFolding* folding_ = nullptr;
  std::vector<String> alternatives_;  // folded; none: everything matches
  mutable String name_;               // folded, kept for its memory
};

}  // namespace krx::folders
