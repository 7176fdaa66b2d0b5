#pragma once

#include "platform/Wish.h"

namespace krx::test {

// The seed that random tests begin with; the environment variable KRX_SEED names another one.
inline unsigned FirstSeed() {
  return static_cast<unsigned>(Wish("KRX_SEED", 1));
}

// How many of a test's random sequences are run: all, or so many of a hundred as the environment
// variable KRX_SEQUENCES says.
inline unsigned Sequences(unsigned all) {
  return static_cast<unsigned>(all * Wish("KRX_SEQUENCES", 100) / 100);
}

}  // namespace krx::test
