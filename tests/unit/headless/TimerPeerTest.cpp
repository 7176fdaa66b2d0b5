#include <chrono>
#include <memory>
#include <string>
#include <vector>

#include "support/FormTest.h"

namespace krx::test {

using namespace std::chrono_literals;

class Timer : public FormTest {
 protected:
  Timer() {
    form.tmrSample.Tick = [this] { ticks.push_back(platform.Now().count()); };
  }
  using Times = std::vector<long>;

  Times ticks;
};

TEST_F(Timer, TicksAtItsExactTimesWhileItsFormIsShown) {
  form.tmrSample.Interval = 300;
  form.tmrSample.Enabled = true;
  Show(form, [](Operator& op) { op.Wait(1s); });
  EXPECT_EQ(ticks, (Times{300, 600, 900}));
  EXPECT_EQ(platform.Now(), 1s);
}

TEST_F(Timer, DoesNotTickWhileItsFormIsNotShown) {
  form.tmrSample.Interval = 100;
  form.tmrSample.Enabled = true;
  platform.Advance(1s);
  EXPECT_EQ(ticks, Times{});
  Show(form, [](Operator& op) {
    op.Form().Hide();
    op.Wait(1s);
  });
  platform.Advance(1s);
  EXPECT_EQ(ticks, Times{});
}

TEST_F(Timer, IsOffUnlessItIsEnabledAndHasAnInterval) {
  Show(form, [this](Operator& op) {
    form.tmrSample.Enabled = true;
    op.Wait(1s);
    form.tmrSample.Enabled = false;
    form.tmrSample.Interval = 10;
    op.Wait(1s);
    form.tmrSample.Enabled = true;
    form.tmrSample.Interval = -10;
    op.Wait(1s);
  });
  EXPECT_EQ(ticks, Times{});
}

TEST_F(Timer, NewIntervalCountsFromNow) {
  form.tmrSample.Interval = 1000;
  form.tmrSample.Enabled = true;
  Show(form, [this](Operator& op) {
    op.Wait(900ms);
    form.tmrSample.Interval = 200;
    op.Wait(300ms);
  });
  EXPECT_EQ(ticks, Times{1100});
}

TEST_F(Timer, MayStopItself) {
  form.tmrSample.Interval = 10;
  form.tmrSample.Enabled = true;
  form.tmrSample.Tick = [this] {
    ticks.push_back(0);
    form.tmrSample.Enabled = false;
  };
  Show(form, [](Operator& op) { op.Wait(1s); });
  EXPECT_EQ(ticks.size(), 1u);
}

TEST_F(Timer, MayCloseItsForm) {
  form.tmrSample.Interval = 10;
  form.tmrSample.Enabled = true;
  form.tmrSample.Tick = [this] {
    ticks.push_back(0);
    form.Unload();
  };
  Show(form, [](Operator& op) { op.Wait(1s); });
  EXPECT_EQ(ticks.size(), 1u);
}

TEST_F(Timer, ErrorOfAHandlerEndsTheShowing) {
  form.tmrSample.Interval = 10;
  form.tmrSample.Enabled = true;
  form.tmrSample.Tick = [] { throw Error(9, u"nine"); };
  EXPECT_EQ(StatusOf([this] { Show(form, [](Operator& op) { op.Wait(1s); }); }), 9u);
  EXPECT_EQ(platform.Now(), 10ms);
}

TEST_F(Timer, TicksOfSeveralTimersComeInTheirOrder) {
  std::string order;
  ui::Timer slow(form, u"tmrSlow");
  ui::Timer fast(form, u"tmrFast");
  slow.Interval = 50;
  fast.Interval = 20;
  slow.Enabled = true;
  fast.Enabled = true;
  slow.Tick = [&] { order += 's'; };
  fast.Tick = [&] { order += 'f'; };
  Show(form, [](Operator& op) { op.Wait(90ms); });
  EXPECT_EQ(order, "ffsff");  // 20 40 50 60 80
}

TEST_F(Timer, TicksOfTheSameTimeComeInTheOrderOfTheirStart) {
  // Many timers, so that the order of their addresses is hardly that of their start.
  std::vector<std::unique_ptr<ui::Timer>> timers;
  std::string order;
  for (char name = 'a'; name < 'k'; ++name) {
    auto timer = std::make_unique<ui::Timer>(form, String(1, static_cast<char16_t>(name)));
    timer->Interval = 100;
    timer->Tick = [&order, name] { order += name; };
    timers.insert(timers.begin() + (name % 3) * static_cast<int>(timers.size()) / 3,
                  std::move(timer));
  }
  Show(form, [&](Operator& op) {
    for (char name = 'j'; name >= 'a'; --name)
      dynamic_cast<ui::Timer&>(*form.Find(String(1, static_cast<char16_t>(name)))).Enabled = true;
    op.Wait(200ms);
  });
  EXPECT_EQ(order, "jihgfedcbajihgfedcba");
}

TEST_F(Timer, ClockNeverGoesBackWhenAHandlerWaitsItself) {
  SampleForm inner(platform, u"Inner");
  form.tmrSample.Interval = 100;
  form.tmrSample.Enabled = true;
  form.tmrSample.Tick = [&] {
    form.tmrSample.Enabled = false;
    platform.Expect(u"Inner", [&](Operator& op) {
      op.Wait(1s);
      inner.Hide();
    });
    inner.ShowModal();
  };
  Show(form, [this](Operator& op) {
    op.Wait(200ms);
    EXPECT_EQ(platform.Now(), 1100ms);  // the inner operator waited a second from 100 ms on
  });
}

TEST_F(Timer, TicksOnWhileAnotherFormIsInFront) {
  SampleForm inner(platform, u"Inner");
  form.tmrSample.Interval = 100;
  form.tmrSample.Enabled = true;
  Show(form, [&](Operator&) { Show(inner, [](Operator& op) { op.Wait(250ms); }); });
  EXPECT_EQ(ticks, (Times{100, 200}));
}

}  // namespace krx::test
