#include "base/Password.h"

#include <gtest/gtest.h>

#include <utility>

namespace krx::test {

TEST(Password, HoldsItsText) {
  const Password secret(u"s\u00E4cret");
  EXPECT_EQ(secret.View(), u"s\u00E4cret");
  EXPECT_EQ(secret.Length(), 6u);
  EXPECT_FALSE(secret.Empty());
  EXPECT_TRUE(Password().Empty());
  EXPECT_EQ(Password().View(), u"");
}

TEST(Password, IsComparedExactly) {
  EXPECT_EQ(Password(u"a"), Password(u"a"));
  EXPECT_FALSE(Password(u"a") == Password(u"A"));
  EXPECT_FALSE(Password(u"a") == Password(u"aa"));
  EXPECT_EQ(Password(), Password(u""));
}

TEST(Password, MovingLeavesNothingBehind) {
  Password from(u"secret");
  const char16_t* const memory = from.View().data();
  Password to(std::move(from));
  EXPECT_TRUE(from.Empty());  // NOLINT: what is left is the point
  EXPECT_EQ(to.View().data(), memory) << "the memory moves, it is not copied";
  Password third(u"other");
  third = std::move(to);
  EXPECT_EQ(third.View(), u"secret");
  EXPECT_TRUE(to.Empty());  // NOLINT
}

TEST(Password, AssigningItToItselfKeepsIt) {
  Password secret(u"secret");
  Password& same = secret;
  secret = std::move(same);
  EXPECT_EQ(secret.View(), u"secret");
}

TEST(Password, PartsAreReplaced) {
  const Password secret(u"abcdef");
  EXPECT_EQ(secret.With(0, 6, u"x").View(), u"x");
  EXPECT_EQ(secret.With(2, 2, u"XYZ").View(), u"abXYZef");
  EXPECT_EQ(secret.With(6, 0, u"!").View(), u"abcdef!");
  EXPECT_EQ(secret.With(0, 0, u"").View(), u"abcdef");
  EXPECT_EQ(secret.With(4, 100, u"").View(), u"abcd") << "beyond its end nothing is removed";
  EXPECT_EQ(secret.With(100, 1, u"x").View(), u"abcdefx");
  EXPECT_EQ(Password().With(0, 0, u"a").View(), u"a");
  EXPECT_EQ(secret.View(), u"abcdef");
}

}  // namespace krx::test
