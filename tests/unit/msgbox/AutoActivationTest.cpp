#include <chrono>

#include "support/DialogTest.h"

namespace krx::test {

using namespace std::chrono_literals;

class FMessageBoxAutoActivation : public MessageBoxTest {};

TEST_F(FMessageBoxAutoActivation, ClosesTheBoxAfterFiveSecondsToTheMillisecond) {
  const auto result =
      Show({.Style = kYesNo + kDefaultButton2, .AutoActivation = 5}, [](Operator& op) {
        op.Wait(4999ms);
        EXPECT_TRUE(op.Form().Visible());
        op.Wait(1ms);
        EXPECT_FALSE(op.Form().Visible());
      });
  EXPECT_EQ(result, 7);
}

TEST_F(FMessageBoxAutoActivation, CountsFromTheMomentTheBoxIsShown) {
  platform.Advance(12345ms);
  Show({.AutoActivation = 1}, [this](Operator& op) {
    op.Wait(999ms);
    EXPECT_TRUE(op.Form().Visible());
    op.Wait(1ms);
    EXPECT_FALSE(op.Form().Visible());
    EXPECT_EQ(platform.Now(), 13345ms);
  });
}

TEST_F(FMessageBoxAutoActivation, ZeroAndNegativeValuesLeaveTheTimerOff) {
  for (const std::int32_t seconds : {0, -1, std::numeric_limits<std::int32_t>::min()}) {
    Show({.AutoActivation = seconds}, [](Operator& op) {
      op.Wait(24h);
      EXPECT_TRUE(op.Form().Visible());
      op.Click(u"keyClose");
    });
  }
}

TEST_F(FMessageBoxAutoActivation, GreatestValueCountsWithoutOverflow) {
  Show({.AutoActivation = std::numeric_limits<std::int32_t>::max()}, [](Operator& op) {
    op.Wait(1h);
    EXPECT_TRUE(op.Form().Visible());
    op.Click(u"keyClose");
  });
}

TEST_F(FMessageBoxAutoActivation, TimerIsOffOnceTheCounterHasReachedZero) {
  Show({.AutoActivation = 2}, [](Operator& op) {
    auto& form = dynamic_cast<msgbox::FMessageBox&>(op.Form());
    op.Wait(1s);
    EXPECT_TRUE(form.tmrAutoActivation.Enabled());
    op.Wait(1s);
    EXPECT_FALSE(form.tmrAutoActivation.Enabled());
  });
}

TEST_F(FMessageBoxAutoActivation, NoTickReachesAClosedBox) {
  int ticks = 0;
  const auto result =
      Show({.Style = kOKCancel + kDefaultButton2, .AutoActivation = 2}, [&](Operator& op) {
        dynamic_cast<msgbox::FMessageBox&>(op.Form()).tmrAutoActivation.Tick = [&] { ++ticks; };
        op.Wait(1s);
        op.Click(u"keyButton(0)");
        op.Wait(1min);
      });
  EXPECT_EQ(ticks, 1);
  EXPECT_EQ(result, 1);
  platform.Advance(1min);
  EXPECT_EQ(ticks, 1);
}

TEST_F(FMessageBoxAutoActivation, HelpDoesNotStopTheCountdown) {
  const auto result = Show({.HelpFile = u"h", .AutoActivation = 3}, [](Operator& op) {
    op.Wait(2s);
    op.Click(u"keyHelp");
    op.Wait(999ms);
    EXPECT_TRUE(op.Form().Visible());
    op.Wait(1ms);
    EXPECT_FALSE(op.Form().Visible());
  });
  EXPECT_EQ(result, 1);
}

TEST_F(FMessageBoxAutoActivation, ClosesABoxWithoutAnyAnswer) {
  EXPECT_EQ(Show({.Style = 6, .AutoActivation = 1}, [](Operator& op) { op.Wait(1s); }), 0);
}

TEST_F(FMessageBoxAutoActivation, ReturnsTheDefaultFreeButton) {
  const BoxCall call{.Style = 6 + kDefaultButton3, .Button3 = u"C", .AutoActivation = 1};
  EXPECT_EQ(Show(call, [](Operator& op) { op.Wait(1s); }), 13);
}

TEST_F(FMessageBoxAutoActivation, EachBoxHasItsOwnCountdown) {
  Show({.AutoActivation = 10}, [this](Operator& outer) {
    outer.Wait(3s);
    EXPECT_EQ(Show({.Style = kYesNo, .AutoActivation = 5},
                   [&](Operator& inner) {
                     inner.Wait(5s);
                     EXPECT_FALSE(inner.Form().Visible());
                   }),
              6);
    EXPECT_TRUE(outer.Form().Visible());
    outer.Wait(1999ms);
    EXPECT_TRUE(outer.Form().Visible());
    outer.Wait(1ms);
    EXPECT_FALSE(outer.Form().Visible());
  });
}

}  // namespace krx::test
