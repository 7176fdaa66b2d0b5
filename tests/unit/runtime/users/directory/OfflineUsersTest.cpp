#include "directory/DirectoryTest.h"
#include "runtime/users/passwords/PasswordKeys.h"
#include "support/SimulatedFiles.h"
#include "support/TestProtection.h"

namespace krx::test {
namespace {

using runtime::OfflineUsers;
using Offline = OfflineUsers::Verdict;

constexpr std::int64_t kDay = 86'400;

class OfflineUsersTest : public testing::Test {
 protected:
  OfflineUsersTest() {
    rules.HashIterations = 1000;
    rules.Directory.OfflineDays = 7;
    eva.Name = u"eva";
    eva.ClassName = u"Operator";
    offline.Remember(rules, eva, Password(u"right"));
  }

  Offline Check(StringView password, StringView name = u"eva") {
    return offline.Check(rules, name, Password(password)).Outcome;
  }

  runtime::UserRules rules;
  runtime::DirectoryUser eva;
  KeptInMemory kept;
  TestCryptography crypto;
  TestClock clock;
  OfflineUsers offline{kept, crypto, clock};
};

TEST_F(OfflineUsersTest, TheLastPasswordThatAServerFoundRightIsRight) {
  EXPECT_EQ(Check(u"right"), Offline::Right);
  EXPECT_EQ(Check(u"right", u"EVA"), Offline::Right);
  EXPECT_EQ(Check(u"wrong"), Offline::WrongPassword);
  EXPECT_EQ(Check(u""), Offline::WrongPassword);
  EXPECT_EQ(Check(u"right", u"olga"), Offline::Unknown);
  offline.Remember(rules, eva, Password(u"newer"));
  EXPECT_EQ(Check(u"right"), Offline::WrongPassword);
  EXPECT_EQ(Check(u"newer"), Offline::Right);
  offline.Forget(u"eva");
  EXPECT_EQ(Check(u"newer"), Offline::Unknown);
}

TEST_F(OfflineUsersTest, ThePeriodEndsSoManyDaysAfterTheLastServer) {
  clock.Seconds += 7 * kDay - 1;
  EXPECT_EQ(Check(u"right"), Offline::Right);
  clock.Seconds += 1;
  EXPECT_EQ(Check(u"right"), Offline::Unknown);
  EXPECT_FALSE(offline.Find(rules, u"eva").has_value());
}

TEST_F(OfflineUsersTest, GuessingEndsAfterAsManyAttemptsAsEverywhere) {
  for (int i = 0; i < 5; ++i)
    EXPECT_EQ(Check(u"wrong"), Offline::WrongPassword);
  EXPECT_EQ(Check(u"right"), Offline::LockedOut);
  clock.Seconds += std::int64_t{15} * 60;
  EXPECT_EQ(Check(u"right"), Offline::Right);
  rules.LockOutMinutes = 0;
  for (int i = 0; i < 5; ++i)
    EXPECT_EQ(Check(u"wrong"), Offline::WrongPassword);
  clock.Seconds += kDay;
  EXPECT_EQ(Check(u"right"), Offline::LockedOut);
  offline.Remember(rules, eva, Password(u"right"));  // a server has answered again
  EXPECT_EQ(Check(u"right"), Offline::Right);
}

TEST_F(OfflineUsersTest, FurtherLockOutsTakeTwiceAsLongAndTheHundredthAttemptIsTheLast) {
  std::int64_t minutes = 15;
  for (int lock_out = 0; lock_out < 4; ++lock_out, minutes *= 2) {
    for (int i = 0; i < 5; ++i)
      ASSERT_EQ(Check(u"wrong"), Offline::WrongPassword);
    clock.Seconds += 60 * minutes - 1;
    ASSERT_EQ(Check(u"right"), Offline::LockedOut) << minutes;
    clock.Seconds += 1;
  }
  EXPECT_EQ(Check(u"right"), Offline::Right);
  rules.Directory.OfflineDays = 90;
  for (int i = 0; i < 100; ++i) {
    ASSERT_EQ(Check(u"wrong"), Offline::WrongPassword) << i;
    if (i % 5 == 4) clock.Seconds += kDay;
  }
  clock.Seconds += 30 * kDay;
  EXPECT_EQ(Check(u"right"), Offline::LockedOut);
  offline.Remember(rules, eva, Password(u"right"));  // a server has answered again
  EXPECT_EQ(Check(u"right"), Offline::Right);
}

TEST_F(OfflineUsersTest, WhereRulesLockOutLateTheFifthFailureBeginsToDelay) {
  rules.LockOutFailures = 20;
  for (int i = 0; i < 5; ++i)
    EXPECT_EQ(Check(u"wrong"), Offline::WrongPassword);
  EXPECT_EQ(Check(u"right"), Offline::LockedOut);
  clock.Seconds += 1;
  EXPECT_EQ(Check(u"wrong"), Offline::WrongPassword);
  clock.Seconds += 1;
  EXPECT_EQ(Check(u"right"), Offline::LockedOut);
  clock.Seconds += 1;
  EXPECT_EQ(Check(u"right"), Offline::Right);
}

TEST_F(OfflineUsersTest, WhatIsKeptNeedsTheKeyThatTheRulesAskFor) {
  SimulatedFiles files;
  TestProtection protection;
  runtime::PasswordKeys keys(files, crypto, &protection, "users.key");
  OfflineUsers keyed(kept, crypto, clock, &keys);
  rules.KeyedPasswords = true;
  EXPECT_THROW(keyed.Remember(rules, eva, Password(u"newer")), Error);
  const runtime::KeyId id = keys.Add({});
  keyed.Remember(rules, eva, Password(u"newer"));
  EXPECT_EQ(kept.Records.at(u"eva").Hash.KeyId, id);
  EXPECT_EQ(keyed.Check(rules, u"eva", Password(u"newer")).Outcome, Offline::Right);
  EXPECT_EQ(keyed.Check(rules, u"eva", Password(u"right")).Outcome, Offline::WrongPassword);
  files.Replace("users.key", "elsewhere");
  EXPECT_THROW(keyed.Check(rules, u"eva", Password(u"newer")), Error);
  EXPECT_EQ(kept.Records.at(u"eva").Failures, 1) << "what cannot be judged does not count";
}

TEST_F(OfflineUsersTest, AnAttemptIsCountedBeforeThePasswordIsLookedAt) {
  crypto.Fails = true;
  EXPECT_THROW(Check(u"right"), Error);
  EXPECT_EQ(kept.Records.at(u"eva").Failures, 1);
  crypto.Fails = false;
  EXPECT_EQ(Check(u"right"), Offline::Right);
  EXPECT_EQ(kept.Records.at(u"eva").Failures, 0);
}

TEST_F(OfflineUsersTest, AClassThatTheRulesNoLongerNameLetsNobodyIn) {
  rules.Classes = {{u"Administrator", u"Administrator", 100}};
  EXPECT_EQ(Check(u"right"), Offline::Unknown);
}

}  // namespace
}  // namespace krx::test
