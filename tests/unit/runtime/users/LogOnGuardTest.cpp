#include "runtime/users/logon/LogOnGuard.h"

#include "support/UserManagementTest.h"

namespace krx::test {
namespace {

class LogOnGuardTest : public UserManagementTest {
 protected:
  void GuessWrong(const String& user, int times) {
    for (int i = 0; i < times; ++i)
      ASSERT_EQ(LogOn(user, u"wrong"), host::LogOnInvalidPassword) << i;
  }
};

TEST_F(LogOnGuardTest, FiveWrongPasswordsLockOut) {
  Provision();
  GuessWrong(u"boss", 5);
  EXPECT_EQ(LogOn(u"boss", kBossSecret), host::LogOnTooManyFailedLogons);
  EXPECT_EQ(directory.GetUserInfo(u"boss").State, host::UserLocked);
}

TEST_F(LogOnGuardTest, TheFifthPasswordMayStillBeRight) {
  Provision();
  GuessWrong(u"boss", 4);
  EXPECT_EQ(LogOn(u"boss", kBossSecret), host::LogOnSucceeded);
  GuessWrong(u"boss", 4);
  EXPECT_EQ(LogOn(u"boss", kBossSecret), host::LogOnSucceeded);
}

TEST_F(LogOnGuardTest, TheLockOutEndsAfterFifteenMinutes) {
  Provision();
  GuessWrong(u"boss", 5);
  clock.Seconds += 15 * 60 - 1;
  EXPECT_EQ(LogOn(u"boss", kBossSecret), host::LogOnTooManyFailedLogons);
  clock.Seconds += 1;
  EXPECT_EQ(directory.GetUserInfo(u"boss").State, host::UserActive);
  GuessWrong(u"boss", 5);
  EXPECT_EQ(LogOn(u"boss", kBossSecret), host::LogOnTooManyFailedLogons);
}

TEST_F(LogOnGuardTest, AttemptsWhileLockedOutDoNotProlongIt) {
  Provision();
  GuessWrong(u"boss", 5);
  for (int minute = 0; minute < 15; ++minute) {
    EXPECT_EQ(LogOn(u"boss", u"wrong"), host::LogOnTooManyFailedLogons);
    clock.Seconds += 60;
  }
  EXPECT_EQ(LogOn(u"boss", kBossSecret), host::LogOnSucceeded);
}

TEST_F(LogOnGuardTest, AnAdministratorEndsALockOut) {
  ProvisionAndLogOn();
  AddUser(u"anna", u"anna's secret");
  GuessWrong(u"anna", 5);
  EXPECT_EQ(LogOn(u"anna", u"anna's secret"), host::LogOnTooManyFailedLogons);
  ASSERT_EQ(directory.SetUserActive(u"anna", 1), host::ModifyUserSucceeded);
  EXPECT_EQ(LogOn(u"anna", u"anna's secret"), host::LogOnSucceeded);
}

TEST_F(LogOnGuardTest, AClockSetBackDoesNotProlongALockOut) {
  Provision();
  GuessWrong(u"boss", 5);
  clock.Seconds -= 365 * 86'400;
  EXPECT_EQ(LogOn(u"boss", kBossSecret), host::LogOnTooManyFailedLogons);
  clock.Seconds += 15 * 60;
  EXPECT_EQ(LogOn(u"boss", kBossSecret), host::LogOnSucceeded);
}

TEST_F(LogOnGuardTest, WithoutTimeOnlyAnAdministratorEndsALockOut) {
  Configure("lock-out-minutes = 0\n");
  ProvisionAndLogOn();
  AddUser(u"anna", u"anna's secret");
  GuessWrong(u"anna", 5);
  clock.Seconds += 10 * 365 * 86'400;
  EXPECT_EQ(LogOn(u"anna", u"anna's secret"), host::LogOnTooManyFailedLogons);
  ASSERT_EQ(directory.SetUserActive(u"anna", 1), host::ModifyUserSucceeded);
  EXPECT_EQ(LogOn(u"anna", u"anna's secret"), host::LogOnSucceeded);
}

TEST_F(LogOnGuardTest, TheLastAdministratorIsOnlyDelayed) {
  Configure("lock-out-minutes = 0\n");
  Provision();
  GuessWrong(u"boss", 5);
  EXPECT_EQ(LogOn(u"boss", kBossSecret), host::LogOnTooManyFailedLogons);
  clock.Seconds += 15 * 60;
  EXPECT_EQ(LogOn(u"boss", kBossSecret), host::LogOnSucceeded);
}

TEST_F(LogOnGuardTest, OfTwoAdministratorsTheFirstIsLockedOutAndTheLastDelayed) {
  Configure("lock-out-minutes = 0\n");
  ProvisionAndLogOn();
  AddUser(u"anna", u"anna's secret", u"Administrator");
  GuessWrong(u"anna", 5);
  clock.Seconds += 15 * 60;
  EXPECT_EQ(LogOn(u"anna", u"anna's secret"), host::LogOnTooManyFailedLogons);
  GuessWrong(u"boss", 5);
  clock.Seconds += 15 * 60;
  EXPECT_EQ(LogOn(u"boss", kBossSecret), host::LogOnSucceeded);
}

TEST_F(LogOnGuardTest, AfterAHundredGuessesOnlyAnAdministratorEndsIt) {
  ProvisionAndLogOn();
  AddUser(u"anna", u"anna's secret");
  for (int n = 0; n < 20; ++n) {
    GuessWrong(u"anna", 5);
    clock.Seconds += 86'400;
  }
  clock.Seconds += 10 * 365 * 86'400;
  EXPECT_EQ(directory.GetUserInfo(u"anna").State, host::UserLocked);
  EXPECT_EQ(LogOn(u"anna", u"anna's secret"), host::LogOnTooManyFailedLogons);
  ASSERT_EQ(directory.SetUserActive(u"anna", 1), host::ModifyUserSucceeded);
  EXPECT_EQ(LogOn(u"anna", u"anna's secret"), host::LogOnSucceeded);
  GuessWrong(u"anna", 5);
}

TEST_F(LogOnGuardTest, EachLockOutInARowTakesTwiceAsLongUpToADay) {
  ProvisionAndLogOn();
  AddUser(u"anna", u"anna's secret");
  for (const int minutes : {15, 30, 60, 120, 240, 480, 960, 1440, 1440}) {
    GuessWrong(u"anna", 5);
    clock.Seconds += minutes * 60 - 1;
    EXPECT_EQ(LogOn(u"anna", u"anna's secret"), host::LogOnTooManyFailedLogons) << minutes;
    clock.Seconds += 1;
  }
  EXPECT_EQ(LogOn(u"anna", u"anna's secret"), host::LogOnSucceeded);
  GuessWrong(u"anna", 5);
  clock.Seconds += 15 * 60;
  EXPECT_EQ(LogOn(u"anna", u"anna's secret"), host::LogOnSucceeded);
}

TEST_F(LogOnGuardTest, RulesThatLockOutLongerThanADayAreKept) {
  Configure("lock-out-minutes = 2000\n");
  ProvisionAndLogOn();
  AddUser(u"anna", u"anna's secret");
  for (int n = 0; n < 3; ++n) {
    GuessWrong(u"anna", 5);
    clock.Seconds += 2000 * 60 - 1;
    EXPECT_EQ(LogOn(u"anna", u"anna's secret"), host::LogOnTooManyFailedLogons) << n;
    clock.Seconds += 1;
  }
}

TEST_F(LogOnGuardTest, WhereRulesLockOutLateEachFailureFromTheFifthOnDelaysTwiceAsLong) {
  Configure("lock-out-failures = 90\n");
  ProvisionAndLogOn();
  AddUser(u"anna", u"anna's secret");
  GuessWrong(u"anna", 5);
  for (const int seconds : {1, 2, 4, 8, 16, 32, 64, 128, 256, 512, 900, 900}) {
    clock.Seconds += seconds - 1;
    EXPECT_EQ(LogOn(u"anna", u"anna's secret"), host::LogOnTooManyFailedLogons) << seconds;
    EXPECT_EQ(directory.GetUserInfo(u"anna").State, host::UserLocked);
    clock.Seconds += 1;
    EXPECT_EQ(directory.GetUserInfo(u"anna").State, host::UserActive);
    GuessWrong(u"anna", 1);
  }
  clock.Seconds += 900;
  EXPECT_EQ(LogOn(u"anna", u"anna's secret"), host::LogOnSucceeded);
  GuessWrong(u"anna", 5);
}

TEST_F(LogOnGuardTest, TheHundredEndsItWhateverTheRulesSay) {
  Configure("lock-out-failures = 1000\n");
  ProvisionAndLogOn();
  AddUser(u"anna", u"anna's secret");
  for (int n = 0; n < 100; ++n) {
    GuessWrong(u"anna", 1);
    clock.Seconds += 15 * 60;
  }
  clock.Seconds += 10 * 365 * 86'400;
  EXPECT_EQ(LogOn(u"anna", u"anna's secret"), host::LogOnTooManyFailedLogons);
}

TEST_F(LogOnGuardTest, TheLastAdministratorsDelayDoesNotGrowBeyondAQuarterOfAnHour) {
  Provision();
  for (int n = 0; n < 25; ++n) {
    GuessWrong(u"boss", n < 20 ? 5 : 1);
    clock.Seconds += 15 * 60 - 1;
    EXPECT_EQ(LogOn(u"boss", kBossSecret), host::LogOnTooManyFailedLogons) << n;
    clock.Seconds += 1;
  }
  EXPECT_EQ(LogOn(u"boss", kBossSecret), host::LogOnSucceeded);
}

TEST_F(LogOnGuardTest, AnAdministratorIsOnlyDelayedWhileTheOtherIsLockedOut) {
  Configure("lock-out-minutes = 525600\n");
  ProvisionAndLogOn();
  AddUser(u"anna", u"anna's secret", u"Administrator");
  GuessWrong(u"anna", 5);
  clock.Seconds += 15 * 60;
  EXPECT_EQ(LogOn(u"anna", u"anna's secret"), host::LogOnTooManyFailedLogons);
  GuessWrong(u"boss", 5);
  clock.Seconds += 15 * 60 - 1;
  EXPECT_EQ(LogOn(u"boss", kBossSecret), host::LogOnTooManyFailedLogons);
  clock.Seconds += 1;
  EXPECT_EQ(LogOn(u"boss", kBossSecret), host::LogOnSucceeded);
  EXPECT_EQ(LogOn(u"anna", u"anna's secret"), host::LogOnTooManyFailedLogons);
}

TEST_F(LogOnGuardTest, ARightPasswordBeginsTheHundredAnew) {
  Provision();
  for (int n = 0; n < 30; ++n) {
    GuessWrong(u"boss", 4);
    ASSERT_EQ(LogOn(u"boss", kBossSecret), host::LogOnSucceeded) << n;
  }
}

TEST_F(LogOnGuardTest, TheLastAdministratorIsOnlyDelayedAfterAHundredGuesses) {
  Configure("lock-out-minutes = 1440\n");
  Provision();
  for (int n = 0; n < 20; ++n) {
    GuessWrong(u"boss", 5);
    clock.Seconds += 15 * 60;
  }
  GuessWrong(u"boss", 1);  // each attempt costs the delay now
  EXPECT_EQ(LogOn(u"boss", kBossSecret), host::LogOnTooManyFailedLogons);
  clock.Seconds += 15 * 60 - 1;
  EXPECT_EQ(LogOn(u"boss", kBossSecret), host::LogOnTooManyFailedLogons);
  clock.Seconds += 1;
  EXPECT_EQ(LogOn(u"boss", kBossSecret), host::LogOnSucceeded);
}

TEST_F(LogOnGuardTest, TheCountSurvivesTheProcess) {
  Provision();
  GuessWrong(u"boss", 3);
  runtime::Session other_session;
  runtime::UserManagement other{System(), folder, other_session};
  runtime::LogOnService others_log_on(other);
  EXPECT_EQ(others_log_on.LogOnUser(u"boss", Secret(u"wrong")), host::LogOnInvalidPassword);
  GuessWrong(u"boss", 1);
  EXPECT_EQ(others_log_on.LogOnUser(u"boss", Secret(kBossSecret)), host::LogOnTooManyFailedLogons);
}

TEST_F(LogOnGuardTest, WhoIsLockedOutCostsTheDerivationThatOthersCost) {
  Provision();
  GuessWrong(u"boss", 5);
  crypto.Derivations = 0;
  EXPECT_EQ(LogOn(u"boss", kBossSecret), host::LogOnTooManyFailedLogons);
  EXPECT_EQ(crypto.Derivations, 1);
}

TEST_F(LogOnGuardTest, TheNumberOfFailuresIsConfigurable) {
  Configure("lock-out-failures = 1\nlock-out-minutes = 2\n");
  Provision();
  GuessWrong(u"boss", 1);
  EXPECT_EQ(LogOn(u"boss", kBossSecret), host::LogOnTooManyFailedLogons);
  clock.Seconds += 120;
  EXPECT_EQ(LogOn(u"boss", kBossSecret), host::LogOnSucceeded);
}

TEST_F(LogOnGuardTest, ALockOutDoesNotEndASession) {
  ProvisionAndLogOn();
  GuessWrong(u"boss", 5);
  EXPECT_TRUE(directory.GetCurrentUser().LoggedOn);
}

}  // namespace
}  // namespace krx::test
