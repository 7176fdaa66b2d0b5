#pragma once

#include "platform/Wish.h"

namespace krx::test {

// The seed that random tests begin with; the environment variable KRX_SEED names another one.
inline unsigned FirstSeed() {
  return static_cast<unsigned>(Wish("KRX_SEED", 1));
}

}  // namespace krx::test
