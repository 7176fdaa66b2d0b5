#include "ui/DragScroll.h"

#include <gtest/gtest.h>

#include <cmath>

namespace krx::ui {

namespace {

constexpr DragScroll::List kHundred{400, 100, 10};  // 400 twips high, 10 of 100 rows in sight
constexpr int kLastTop = 90;
constexpr double kFrame = 15;  // milliseconds

// Drags a touch that began at 5000 by `way` twips per step, then lets go at once.
double Throw(DragScroll& drag, Twips way, int steps = 5) {
  Twips y = 5000;
  double now = 0;
  for (int i = 0; i < steps; ++i)
    drag.Move(y += way, now += kFrame);
  drag.End(now);
  return now;
}

TEST(DragScroll, ATouchThatStaysInPlaceIsAClick) {
  DragScroll drag;
  drag.Begin(kHundred, 20, 1000, 0);
  EXPECT_TRUE(drag.Touched());
  EXPECT_TRUE(drag.End(80));
  EXPECT_FALSE(drag.Touched());
  EXPECT_FALSE(drag.Gliding());
}

TEST(DragScroll, AFingerThatTremblesStillClicks) {
  DragScroll drag;
  drag.Begin(kHundred, 20, 1000, 0);
  EXPECT_EQ(drag.Move(1000 + DragScroll::kClickTolerance, 20), 20);
  EXPECT_EQ(drag.Move(1000 - DragScroll::kClickTolerance, 40), 20);
  EXPECT_FALSE(drag.Dragging());
  EXPECT_TRUE(drag.End(50));
}

TEST(DragScroll, OnceDraggedATouchIsNoClickEvenWhereItBegan) {
  DragScroll drag;
  drag.Begin(kHundred, 20, 1000, 0);
  drag.Move(1000 + DragScroll::kClickTolerance + 1, 20);
  EXPECT_TRUE(drag.Dragging());
  EXPECT_EQ(drag.Move(1000, 200), 20);
  EXPECT_FALSE(drag.End(400));
}

TEST(DragScroll, TheRowsFollowTheFinger) {
  DragScroll drag;
  drag.Begin(kHundred, 20, 1000, 0);
  // 800 twips down are two rows of 400: the list shows what stands two rows higher.
  EXPECT_EQ(drag.Move(1800, 20), 18);
  // Half a row makes the next one the nearest; less does not.
  EXPECT_EQ(drag.Move(1401, 40), 19);
  EXPECT_EQ(drag.Move(1199, 60), 20);
  EXPECT_EQ(drag.Move(-1000, 80), 25);
}

TEST(DragScroll, TheRowsStopAtBothEnds) {
  DragScroll drag;
  drag.Begin(kHundred, 2, 1000, 0);
  EXPECT_EQ(drag.Move(9000, 20), 0);
  drag.Stop();
  drag.Begin(kHundred, 88, 9000, 100);
  EXPECT_EQ(drag.Move(1000, 120), kLastTop);
}

TEST(DragScroll, BeyondTheEndTheRowsTurnWithTheFinger) {
  DragScroll drag;
  drag.Begin(kHundred, 2, 1000, 0);
  EXPECT_EQ(drag.Move(9000, 20), 0);
  EXPECT_EQ(drag.Move(8200, 40), 2);  // 800 twips back are two rows
}

TEST(DragScroll, AListThatFitsDoesNotMove) {
  DragScroll drag;
  drag.Begin({400, 10, 10}, 0, 1000, 0);
  EXPECT_EQ(drag.Move(5000, 20), 0);
  EXPECT_EQ(drag.Move(-5000, 40), 0);
  EXPECT_FALSE(drag.End(41));
  drag.Glide(60);
  EXPECT_FALSE(drag.Gliding());
}

TEST(DragScroll, AnEmptyListDoesNotMove) {
  DragScroll drag;
  drag.Begin({0, 0, 0}, 0, 1000, 0);
  EXPECT_EQ(drag.Move(5000, 20), 0);
  EXPECT_FALSE(drag.End(200));
}

TEST(DragScroll, LetGoInMotionTheRowsGlideOnAndComeToRest) {
  DragScroll drag;
  drag.Begin(kHundred, 40, 5000, 0);
  double now = Throw(drag, -60);  // 4 twips per millisecond
  ASSERT_TRUE(drag.Gliding());
  int top = 40;
  int steps = 0;
  for (; drag.Gliding() && steps < 1000; ++steps) {
    const int next = drag.Glide(now += kFrame);
    EXPECT_GE(next, top);
    top = next;
  }
  // 300 twips of the finger, then 4 * 325 * (1 - 0.4 / 4) = 1170: 1470 twips are 3.7 rows.
  EXPECT_EQ(top, 44);
  // The speed of 4 falls below 0.4 after 325 * ln 10 = 748 milliseconds, in the 50th frame of 15.
  EXPECT_EQ(steps, 50);
  EXPECT_EQ(drag.Glide(now + 1000), 44);
}

TEST(DragScroll, GlidesTheOtherWayToo) {
  DragScroll drag;
  drag.Begin(kHundred, kLastTop, 5000, 0);
  double now = Throw(drag, 60);
  ASSERT_TRUE(drag.Gliding());
  int top = kLastTop;
  while (drag.Gliding())
    top = drag.Glide(now += kFrame);
  EXPECT_EQ(top, kLastTop - 4);
}

TEST(DragScroll, GlidingEndsAtTheLastRow) {
  DragScroll drag;
  drag.Begin(kHundred, 85, 5000, 0);
  double now = Throw(drag, -300);
  int top = 0;
  int steps = 0;
  for (; drag.Gliding(); ++steps)
    top = drag.Glide(now += kFrame);
  EXPECT_EQ(top, kLastTop);
  EXPECT_LT(steps, 10);
}

TEST(DragScroll, AFingerThatRestsBeforeItGoesLeavesTheRowsAtRest) {
  DragScroll drag;
  drag.Begin(kHundred, 40, 5000, 0);
  drag.Move(4000, 30);
  EXPECT_FALSE(drag.End(300));
  EXPECT_FALSE(drag.Gliding());
}

TEST(DragScroll, AllSamplesInOneMillisecondMakeNoSpeed) {
  DragScroll drag;
  drag.Begin(kHundred, 40, 5000, 7);
  drag.Move(1000, 7);
  EXPECT_FALSE(drag.End(7));
  EXPECT_FALSE(drag.Gliding());
}

TEST(DragScroll, TouchingAGlidingListStopsItAndIsNoClick) {
  DragScroll drag;
  drag.Begin(kHundred, 40, 5000, 0);
  const double now = Throw(drag, -60);
  ASSERT_TRUE(drag.Gliding());
  const int top = drag.Glide(now + kFrame);
  drag.Begin(kHundred, top, 2000, now + 2 * kFrame);
  EXPECT_FALSE(drag.Gliding());
  EXPECT_FALSE(drag.End(now + 200));
  EXPECT_FALSE(drag.Gliding());
  EXPECT_EQ(drag.Glide(now + 300), top);
}

TEST(DragScroll, StopEndsTouchAndGlidingWithoutAClick) {
  DragScroll drag;
  drag.Begin(kHundred, 40, 5000, 0);
  drag.Stop();
  EXPECT_FALSE(drag.End(10));
  drag.Begin(kHundred, 40, 5000, 20);
  Throw(drag, -60);
  drag.Stop();
  EXPECT_FALSE(drag.Gliding());
  EXPECT_FALSE(drag.Touched());
}

}  // namespace

}  // namespace krx::ui
