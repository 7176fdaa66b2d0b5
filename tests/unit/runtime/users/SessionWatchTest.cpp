// Sessions that end for want of input, and what is told at their beginning.

#include "runtime/users/session/SessionWatch.h"

#include "contract/OperatorInputContract.h"
#include "runtime/FakeTexts.h"
#include "runtime/users/session/LogOnHistory.h"
#include "runtime/users/session/SessionTexts.h"
#include "support/TestOperator.h"
#include "support/UserManagementTest.h"

namespace krx::test {
namespace {

using namespace std::chrono_literals;
using runtime::LogOnHistory;
using testing::HasSubstr;

class SessionWatchTest : public UserManagementTest {
 protected:
  SessionWatchTest() {
    source.Files[u"en"] = {{u"en.txt",
                            "-103 msgIdleLogOff = {user}: {seconds}\n"
                            "-103 msgLastLogOn = at {time}, {failures} failed\n"
                            "-103 msgNoLastLogOn = none, {failures} failed\n"}};
    source.System = u"en";
  }
  void SetUp() override { ProvisionAndLogOn(); }

  runtime::SessionWatch Watch(std::chrono::minutes limit, const String& greeting = {}) {
    return {management, person, notice, languages, {limit, greeting}};
  }
  bool IsLoggedOn() { return directory.GetCurrentUser().LoggedOn; }

  runtime::FakeTexts source;
  runtime::Languages languages{source};
  TestOperator person;
  TestNotice notice;
};

TEST_F(SessionWatchTest, TheOperatorOfTheTestsKeepsTheContract) {
  KeepsItsContract(
      person, [&] { person.Press(); }, [&] { person.Wait(1ms); });
}

TEST_F(SessionWatchTest, HalfAMinuteBeforeTheEndItIsToldAndCountedDown) {
  auto watch = Watch(5min);
  EXPECT_EQ(watch.Look(), 4min + 30s);
  EXPECT_EQ(notice.Shown, "");
  person.Wait(4min + 30s);
  EXPECT_EQ(watch.Look(), 200ms);
  EXPECT_EQ(notice.Shown, "boss: 30");
  person.Wait(1ms);
  watch.Look();
  EXPECT_EQ(notice.Shown, "boss: 30");  // a second that has begun counts
  person.Wait(999ms);
  watch.Look();
  EXPECT_EQ(notice.Shown, "boss: 29");
  person.Wait(28s + 950ms);
  EXPECT_EQ(watch.Look(), 50ms);
  EXPECT_EQ(notice.Shown, "boss: 1");
  EXPECT_TRUE(IsLoggedOn());
}

TEST_F(SessionWatchTest, WhoDoesNothingIsLoggedOffAndThatIsRecorded) {
  auto watch = Watch(5min);
  person.Wait(5min);
  EXPECT_EQ(watch.Look(), std::nullopt);
  EXPECT_FALSE(IsLoggedOn());
  EXPECT_EQ(notice.Shown, "");
  EXPECT_THAT(LastAuditLine(), HasSubstr("boss\tlog-off\t-\tafter 5 min without input\n"));
  EXPECT_EQ(session.LogOffUser(), 1);
}

TEST_F(SessionWatchTest, InputGoesOnWithTheSession) {
  auto watch = Watch(5min);
  person.Wait(4min + 59s);
  watch.Look();
  EXPECT_EQ(notice.Shown, "boss: 1");
  person.Press();
  person.Wait(200ms);
  EXPECT_EQ(watch.Look(), 4min + 29s + 800ms);
  EXPECT_EQ(notice.Shown, "");
  EXPECT_TRUE(IsLoggedOn());
}

TEST_F(SessionWatchTest, TheLogOnCountsAsInput) {
  person.Wait(10min);  // a program has logged somebody on whom nobody has typed
  auto watch = Watch(5min);
  EXPECT_EQ(watch.Look(), 4min + 30s);
}

TEST_F(SessionWatchTest, ALimitOfOneMinuteIsToldToo) {
  auto watch = Watch(1min);
  EXPECT_EQ(watch.Look(), 30s);
}

TEST_F(SessionWatchTest, ASessionThatIsNotItsOwnIsLeftAlone) {
  auto watch = Watch(5min);
  person.Wait(4min + 40s);
  watch.Look();
  ASSERT_EQ(LogOn(u"boss", kBossSecret), host::LogOnSucceeded);
  person.Wait(1min);
  EXPECT_EQ(watch.Look(), std::nullopt);
  EXPECT_EQ(notice.Shown, "");
  EXPECT_TRUE(IsLoggedOn());
}

TEST_F(SessionWatchTest, ItEndsWithTheSession) {
  auto watch = Watch(5min, u"Hello");
  watch.Look();
  EXPECT_EQ(notice.Shown, "Hello");
  session.LogOffUser();
  EXPECT_EQ(watch.Look(), std::nullopt);
  EXPECT_EQ(notice.Shown, "");
}

TEST_F(SessionWatchTest, WhatIsKnownOfTheUserMayChangeMeanwhile) {
  auto watch = Watch(5min);
  logged_on.Update({1, u"boss", u"Engineer"});
  EXPECT_EQ(watch.Look(), 4min + 30s);
}

TEST_F(SessionWatchTest, TheEndIsRecordedLaterWhereItCannotBeNow) {
  auto watch = Watch(5min);
  disk.Full = true;
  person.Wait(5min);
  watch.Look();
  EXPECT_FALSE(IsLoggedOn());
  disk.Full = false;
  ASSERT_EQ(LogOn(u"boss", kBossSecret), host::LogOnSucceeded);
  const auto records = Records();
  EXPECT_THAT(LineOf(records[records.size() - 2]),
              HasSubstr("boss\tlog-off\t-\tafter 5 min without input at 2026-01-01T00:00:00Z, "
                        "recorded late: "));
}

TEST_F(SessionWatchTest, AGreetingIsShownUntilItIsTouched) {
  auto watch = Watch(0min, u"Hello");
  EXPECT_EQ(watch.Look(), 60s);
  EXPECT_EQ(notice.Shown, "Hello");
  person.Press();
  EXPECT_EQ(watch.Look(), 60s);  // what is typed elsewhere does not take it away
  notice.IsTouchedNow = true;
  EXPECT_EQ(watch.Look(), std::nullopt);
  EXPECT_EQ(notice.Shown, "");
  EXPECT_TRUE(IsLoggedOn());
}

TEST_F(SessionWatchTest, AGreetingGoesAfterAMinute) {
  auto watch = Watch(5min, u"Hello");
  EXPECT_EQ(watch.Look(), 60s);
  person.Wait(60s);
  EXPECT_EQ(watch.Look(), 3min + 30s);
  EXPECT_EQ(notice.Shown, "");
}

TEST_F(SessionWatchTest, TheFirstLogOnHasNoneBeforeIt) {
  const auto history = HistoryOf(management, u"boss");
  ASSERT_TRUE(history);
  EXPECT_EQ(history->LastAt, std::nullopt);
  EXPECT_EQ(history->FailuresSince, 0);
  EXPECT_EQ(GreetingText(languages, *history, u""), u"none, 0 failed");
}

TEST_F(SessionWatchTest, TheLastLogOnAndFailuresSinceThenAreFound) {
  const std::int64_t before = clock.Seconds;
  clock.Seconds += 3600;
  LogOn(u"boss", u"wrong");
  LogOn(u"nobody", u"wrong");
  LogOn(u"boss", u"wrong");
  clock.Seconds += 3600;
  ASSERT_EQ(LogOn(u"boss", kBossSecret), host::LogOnSucceeded);
  const auto history = HistoryOf(management, u"boss");
  ASSERT_TRUE(history);
  EXPECT_EQ(history->LastAt, before);
  EXPECT_EQ(history->FailuresSince, 2);
  EXPECT_EQ(GreetingText(languages, *history, u"noon"), u"at noon, 2 failed");
}

TEST_F(SessionWatchTest, ANamesakeOfBeforeIsSomebodyElse) {
  AddUser(u"anna", u"anna's secret");
  ASSERT_EQ(LogOn(u"anna", u"anna's secret"), host::LogOnSucceeded);
  ASSERT_EQ(LogOn(u"boss", kBossSecret), host::LogOnSucceeded);
  ASSERT_EQ(directory.RemoveUser(u"anna"), 0);
  AddUser(u"anna", u"another secret");
  EXPECT_EQ(directory.CreateUser(Record(u"anna")), host::CreateUserExists);  // ends nothing
  ASSERT_EQ(LogOn(u"anna", u"another secret"), host::LogOnSucceeded);
  EXPECT_EQ(HistoryOf(management, u"anna")->LastAt, std::nullopt);
}

TEST_F(SessionWatchTest, ALogOnThatWasRecordedLateHasItsOwnTime) {
  disk.Full = true;
  clock.Seconds += 3600;
  ASSERT_EQ(LogOn(u"boss", kBossSecret), host::LogOnSucceeded);
  EXPECT_FALSE(HistoryOf(management, u"boss"));
  const std::int64_t then = clock.Seconds;
  disk.Full = false;
  clock.Seconds += 86'400;
  ASSERT_EQ(LogOn(u"boss", kBossSecret), host::LogOnSucceeded);
  EXPECT_EQ(HistoryOf(management, u"boss")->LastAt, then);
}

}  // namespace
}  // namespace krx::test
