#pragma once

#include <gtest/gtest.h>

#include "runtime/users/system/OperatorInput.h"

namespace krx::test {

// What a source of the operator's input promises, the system's and that of the tests alike.
// `press` gives input; `pass` returns once some time has passed without any.
template <class Press, class Pass>
void KeepsItsContract(runtime::OperatorInput& input, Press&& press, Pass&& pass) {
  press();
  const auto first = input.Last();
  const auto first_seen = input.Now();
  EXPECT_LE(first, first_seen);
  pass();
  EXPECT_EQ(input.Last(), first) << "time alone is no input";
  EXPECT_GT(input.Now(), first_seen);
  const auto before = input.Now();
  press();
  EXPECT_GE(input.Last(), before);
  EXPECT_LE(input.Last(), input.Now());
}

}  // namespace krx::test
