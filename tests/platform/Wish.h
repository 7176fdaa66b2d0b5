#pragma once

#include <cstdlib>

namespace krx::test {

// The number that an environment variable asks a test for: longer runs, another seed. `otherwise`
// is what a run does that asks for nothing; a wish that is not above zero is none.
inline long Wish(const char* variable, long otherwise) {
  const char* const text = std::getenv(variable);
  const long wish = text ? std::atol(text) : 0;
  return wish > 0 ? wish : otherwise;
}

}  // namespace krx::test
