#pragma once

#include <functional>
#include <iostream>

#include "users/UsersTest.h"

namespace krx::test {

// Every call that a user dialog makes to what the host gives (services and their creation, text
// measuring, message boxes) is failed in turn, once and for good, until a run gets by without a
// failure. What fails while a form loads is passed over; everything else reaches the caller.
class FailingCalls : public UsersTest {
 protected:
  struct Scenario {
    std::function<void()> Prepare;  // scripts and codes of one run
    std::function<void()> Run;
  };

  FailingCalls() {
    platform.MeasuringIsCounted = true;
    platform.ShowingIsNoted = true;
  }

  // Which calls of a run, given by all that was written down, are made while a form loads.
  virtual std::vector<bool> LoadingOf(const Calls& entries) const = 0;

  // What is written down and is no call.
  static bool IsNote(const std::string& entry) {
    return entry.starts_with("Show") || entry.starts_with("~") || entry.starts_with("Box");
  }

  void Clear() {
    platform.Forget();
    Users().LogOnCodes.clear();
    Users().ChangeCodes.clear();
    Users().CreateCodes.clear();
    Users().ModifyCodes.clear();
    Users().Restart();
  }

  std::vector<bool> Baseline(const Scenario& scenario) {
    Clear();
    scenario.Prepare();
    scenario.Run();
    EXPECT_THAT(platform.Complaints(), ::testing::IsEmpty());
    const std::vector<bool> loading = LoadingOf(log.Entries());
    EXPECT_EQ(static_cast<int>(loading.size()), log.Calls());
    return loading;
  }

  void ExpectNothingIsLeft() {
    EXPECT_EQ(Users().Live + runtime.LiveTextServices + runtime.LiveFontServices, 0);
  }

  // One failing call.
  void FailOnce(const Scenario& scenario, int n, bool loading) {
    Clear();
    log.FailCall(n, false);
    scenario.Prepare();
    const std::optional<Error> error = ErrorOf(scenario.Run);
    EXPECT_TRUE(log.Injected());
    ExpectNothingIsLeft();
    EXPECT_EQ(error.has_value(), !loading) << log.Entries()[0];
    if (!error) return;
    EXPECT_EQ(error->Status(), CallLog::FailureOf(n).Status());
    EXPECT_EQ(error->Description(), CallLog::FailureOf(n).Description());
    EXPECT_EQ(error->Source(), CallLog::FailureOf(n).Source());
    EXPECT_EQ(log.Calls(), n) << "nothing is called after the failure";
  }
  // Every call fails from the n-th on: the first one that is not part of a load reaches the caller.
  void FailForGood(const Scenario& scenario, int n) {
    Clear();
    log.FailCall(n, true);
    scenario.Prepare();
    const std::optional<Error> error = ErrorOf(scenario.Run);
    ExpectNothingIsLeft();
    ASSERT_TRUE(error) << "every run ends with calls that are not part of a load";
    EXPECT_GE(log.Calls(), n);
    EXPECT_EQ(error->Status(), CallLog::FailureOf(log.Calls()).Status()) << "the last call";
  }

  void FailEveryCall(const Scenario& scenario, int at_least) {
    const std::vector<bool> loading = Baseline(scenario);
    const int calls = static_cast<int>(loading.size());
    for (int n = 1; n <= calls; ++n) {
      SCOPED_TRACE("call " + std::to_string(n));
      FailOnce(scenario, n, loading[static_cast<std::size_t>(n - 1)]);
      FailForGood(scenario, n);
      if (HasFailure()) return;
    }
    EXPECT_EQ(Baseline(scenario), loading) << "the next call works";
    RecordProperty("FailedCalls", calls);
    std::cout << "calls failed in turn: " << calls
              << ", of them while loading: " << std::count(loading.begin(), loading.end(), true)
              << '\n';
    EXPECT_GE(calls, at_least);
  }
};

}  // namespace krx::test
