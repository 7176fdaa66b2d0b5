#include "service/Skip.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace krx::service {

TEST(Skip, TellsWhetherTheStatementSucceeded) {
  int runs = 0;
  EXPECT_TRUE(Skip([&] { ++runs; }));
  EXPECT_FALSE(Skip([&] {
    ++runs;
    throw TypeMismatch();
  }));
  EXPECT_EQ(runs, 2);
}

TEST(Skip, LeavesTheRestOfAFailingStatementOut) {
  int done = 0;
  Skip([&] {
    done = 1;
    throw ObjectNotSet();
    done = 2;
  });
  EXPECT_EQ(done, 1);
}

TEST(Skip, PassesOverFailuresOfTheDialogsOnly) {
  EXPECT_THROW(Skip([] { throw std::logic_error("a defect"); }), std::logic_error);
}

}  // namespace krx::service
