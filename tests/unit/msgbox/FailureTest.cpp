#include <functional>

#include "support/DialogTest.h"

// Every call that a box makes to what the host gives (services and their creation, the
// application's name, text measuring) is failed in turn, once and for good, until a run gets by
// without a failure.
namespace krx::test {

class FMessageBoxFailures : public MessageBoxTest {
 protected:
  using Method = std::function<std::int32_t()>;

  FMessageBoxFailures() {
    platform.MeasuringIsCounted = true;
    dialog->SetHostApp(std::make_shared<FakeApplication>(log, u"Panel"));
  }

  void ExpectFailureOf(int n, const std::optional<Error>& error) {
    const Error expected = CallLog::FailureOf(n);
    ASSERT_TRUE(error) << "the failure was lost";
    EXPECT_EQ(error->Status(), expected.Status());
    EXPECT_EQ(error->Description(), expected.Description());
    EXPECT_EQ(error->Source(), expected.Source());
    EXPECT_EQ(log.Calls(), n) << "nothing is called after the failure";
    EXPECT_EQ(runtime.LiveTextServices, 0);
    EXPECT_EQ(runtime.LiveFontServices, 0);
    EXPECT_EQ(log.LiveApplications, 1);
  }

  // Fails the calls one by one, each time followed by a box that works; returns how many there are.
  int FailEachCall(bool persistent, const Method& method, std::int32_t first_answer) {
    for (int n = 1;; ++n) {
      SCOPED_TRACE("call " + std::to_string(n));
      // Answered by the first run that gets as far as showing a box.
      platform.Expect(u"FMessageBox", [](Operator& op) { op.Click(u"keyButton(0)"); });
      log.FailCall(n, persistent);
      const std::optional<Error> error = ErrorOf([&] { EXPECT_EQ(method(), first_answer); });
      if (!log.Injected()) {
        EXPECT_FALSE(error);
        return n - 1;
      }
      ExpectFailureOf(n, error);
      log.FailNothing();
      EXPECT_EQ(method(), first_answer) << "the next box works";
      if (HasFailure()) return n;
    }
  }

  // Once and for good; the number of calls goes into the test's record.
  void FailEveryCall(const Method& method, std::int32_t first_answer, int at_least) {
    const int once = FailEachCall(false, method, first_answer);
    const int for_good = FailEachCall(true, method, first_answer);
    RecordProperty("FailedCalls", once);
    std::cout << "calls failed in turn: " << once << " once, " << for_good << " for good\n";
    EXPECT_EQ(once, for_good);
    EXPECT_GE(once, at_least);
  }
};

// At least: both services created (2), six font classes selected and got (12), texts, the name.
TEST_F(FMessageBoxFailures, EveryCallOfTheSimpleMethodMayFail) {
  FailEveryCall([this] { return dialog->KRMsgBox(u"m", 3 + 16, u"", u"h.chm"); }, 6,
                2 + 12 + 4 + 1);
}

TEST_F(FMessageBoxFailures, EveryCallOfTheExtendedMethodMayFail) {
  const service::FreeButtons extra{u"A", u"B", u"C", 5};
  FailEveryCall([&] { return dialog->KRMsgBoxEx(u"m", 1, u"", u"", 0, extra); }, 1, 2 + 12 + 3 + 1);
}

TEST_F(FMessageBoxFailures, EveryCallOfAWrappedMessageMayFail) {
  const String text = String(100, u'a') + u' ' + String(100, u'b');
  FailEveryCall([&] { return dialog->KRMsgBox(text, 4, u"t"); }, 6, 2 + 12 + 3);
}

TEST_F(FMessageBoxFailures, UnmeasurableFontReachesTheCaller) {
  platform.Unmeasurable = {u"KRDialogsButton"};
  EXPECT_EQ(StatusOf([&] { Open({}); }), 0x80004005u);
  platform.Unmeasurable.clear();
  EXPECT_EQ(ResultWhenClosed({}), 1);
}

// As in a session that is locked: help cannot come, but the box goes on waiting for its answer.
TEST_F(FMessageBoxFailures, KeysThatCannotBeSentLeaveTheBoxOpen) {
  platform.SendKeysFails = true;
  platform.Expect(u"FMessageBox", [](Operator& op) {
    op.Click(u"keyHelp");
    EXPECT_TRUE(op.Form().Visible());
    op.Click(u"keyClose");
  });
  EXPECT_EQ(Open({.Style = kOKCancel + kDefaultButton2, .HelpFile = u"h"}), 2);
}

TEST_F(FMessageBoxFailures, ButtonWhoseTagIsNoNumberIsATypeMismatch) {
  platform.Expect(u"FMessageBox", [](Operator& op) {
    op.Get(u"keyButton(0)").Tag = u"one";
    op.Click(u"keyButton(0)");
  });
  EXPECT_EQ(StatusOf([&] { Open({}); }), kTypeMismatch);
}

TEST_F(FMessageBoxFailures, FailureInANestedBoxLeavesTheOuterOneUsable) {
  EXPECT_EQ(Show({.Style = kYesNo},
                 [this](Operator& op) {
                   platform.Unmeasurable = {u"KRDialogsText"};
                   EXPECT_EQ(StatusOf([&] { Open({}); }), 0x80004005u);
                   platform.Unmeasurable.clear();
                   op.Click(u"keyButton(1)");
                 }),
            7);
}

}  // namespace krx::test
