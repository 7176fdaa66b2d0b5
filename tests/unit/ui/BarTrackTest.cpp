#include "ui/BarTrack.h"

#include <gtest/gtest.h>

namespace krx::ui {

namespace {

using Part = BarTrack::Part;

// 300 pixels with arrows of 20 leave 260; a tenth of the rows in sight is a thumb of 26.
BarTrack TenthInSight(int top) {
  return {300, 20, 16, {100, 10, top}};
}

TEST(BarTrack, HasAnArrowAtEachEndAndPagesAroundTheThumb) {
  const BarTrack track = TenthInSight(45);  // 45 of 90 rows: 20 + (260 - 26) / 2
  EXPECT_EQ(track.ThumbTop(), 137);
  EXPECT_EQ(track.ThumbEnd(), 163);
  EXPECT_EQ(track.At(-1), Part::None);
  EXPECT_EQ(track.At(0), Part::LineUp);
  EXPECT_EQ(track.At(19), Part::LineUp);
  EXPECT_EQ(track.At(20), Part::PageUp);
  EXPECT_EQ(track.At(136), Part::PageUp);
  EXPECT_EQ(track.At(137), Part::Thumb);
  EXPECT_EQ(track.At(162), Part::Thumb);
  EXPECT_EQ(track.At(163), Part::PageDown);
  EXPECT_EQ(track.At(279), Part::PageDown);
  EXPECT_EQ(track.At(280), Part::LineDown);
  EXPECT_EQ(track.At(299), Part::LineDown);
  EXPECT_EQ(track.At(300), Part::None);
}

TEST(BarTrack, ItsThumbTouchesTheArrowsAtBothEndsOfTheRows) {
  EXPECT_EQ(TenthInSight(0).ThumbTop(), 20);
  EXPECT_EQ(TenthInSight(90).ThumbEnd(), 280);
  EXPECT_EQ(TenthInSight(1000).ThumbEnd(), 280) << "beyond the last row";
}

TEST(BarTrack, GoesByRowsAndPagesToTheEndsAndNoFurther) {
  EXPECT_EQ(TenthInSight(45).After(Part::LineUp), 44);
  EXPECT_EQ(TenthInSight(45).After(Part::LineDown), 46);
  EXPECT_EQ(TenthInSight(45).After(Part::PageUp), 35);
  EXPECT_EQ(TenthInSight(45).After(Part::PageDown), 55);
  EXPECT_EQ(TenthInSight(45).After(Part::Thumb), 45);
  EXPECT_EQ(TenthInSight(0).After(Part::LineUp), 0);
  EXPECT_EQ(TenthInSight(3).After(Part::PageUp), 0);
  EXPECT_EQ(TenthInSight(85).After(Part::PageDown), 90);
  EXPECT_EQ(TenthInSight(90).After(Part::LineDown), 90);
}

TEST(BarTrack, TheRowsFollowTheThumb) {
  const BarTrack track = TenthInSight(0);
  EXPECT_EQ(track.TopFor(20), 0);
  EXPECT_EQ(track.TopFor(137), 45);
  EXPECT_EQ(track.TopFor(254), 90);
  EXPECT_EQ(track.TopFor(-500), 0);
  EXPECT_EQ(track.TopFor(5000), 90);
}

TEST(BarTrack, ItsThumbIsNeverTooSmallToBeHeld) {
  const BarTrack track(300, 20, 16, {2'000'000'000, 10, 1'000'000'000});
  EXPECT_EQ(track.ThumbEnd() - track.ThumbTop(), 16);
  EXPECT_EQ(track.ThumbTop(), 142) << "20 + (260 - 16) / 2";
  EXPECT_EQ(track.TopFor(264), 1'999'999'990);
}

TEST(BarTrack, OneThatIsTooShortHasArrowsAlone) {
  const BarTrack track(50, 20, 16, {100, 10, 0});
  EXPECT_EQ(track.At(19), Part::LineUp);
  EXPECT_EQ(track.At(25), Part::None);
  EXPECT_EQ(track.At(30), Part::LineDown);
  const BarTrack shortest(30, 20, 16, {100, 10, 0});
  EXPECT_EQ(shortest.Arrow(), 15);
  EXPECT_EQ(shortest.At(14), Part::LineUp);
  EXPECT_EQ(shortest.At(15), Part::LineDown);
  EXPECT_EQ(shortest.TopFor(20), 0);
}

TEST(BarTrack, RowsThatAllCanBeSeenAreNotScrolled) {
  EXPECT_FALSE((BarTrack::Rows{10, 10, 0}).Scroll());
  EXPECT_TRUE((BarTrack::Rows{11, 10, 0}).Scroll());
  EXPECT_FALSE((BarTrack::Rows{11, 0, 0}).Scroll()) << "no row has room";
  EXPECT_EQ(BarTrack(300, 20, 16, {10, 10, 0}).At(100), Part::None);
}

}  // namespace

}  // namespace krx::ui
