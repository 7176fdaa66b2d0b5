#include "ui/Pictures.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <numeric>
#include <string>
#include <vector>

#include "ui/Coverage.h"

namespace krx::ui {

namespace {

constexpr Color kGround = 0xFFFFFF;
constexpr Inks kInks{0x000000, 0x202020, 0x404040, 0x606060, 0x808080};
constexpr std::array kAll{Picture::Cross,  Picture::Down,       Picture::Inside, Picture::Up,
                          Picture::Folder, Picture::OpenFolder, Picture::Drive,  Picture::File,
                          Picture::Above,  Picture::Back};

double Sum(const std::vector<double>& shares) {
  return std::accumulate(shares.begin(), shares.end(), 0.0);
}

TEST(Coverage, IsTheAreaOfThePolygonInEveryPixel) {
  Coverage coverage(4);
  coverage.Add(std::array<Dot, 4>{{{0.5, 1}, {2.25, 1}, {2.25, 2.5}, {0.5, 2.5}}});
  const std::vector<double> shares = coverage.Shares();
  const std::vector<double> wanted{0, 0, 0, 0, 0.5, 1, 0.25, 0, 0.25, 0.5, 0.125, 0, 0, 0, 0, 0};
  for (std::size_t i = 0; i < wanted.size(); ++i)
    EXPECT_NEAR(shares[i], wanted[i], 1e-12) << i;
}

// Half the width times the height, whatever its corners are.
TEST(Coverage, OfATriangleIsItsArea) {
  for (const Dot tip : {Dot{0, 8}, Dot{3.3, 7.1}, Dot{8, 8}, Dot{5, 0.75}}) {
    Coverage coverage(8);
    coverage.Add(std::array<Dot, 3>{{{0.2, 0.3}, {7.7, 0.3}, tip}});
    EXPECT_NEAR(Sum(coverage.Shares()), 7.5 * (tip.Y - 0.3) / 2, 1e-9) << tip.X;
  }
}

TEST(Coverage, LeavesOutWhatLiesOutside) {
  Coverage coverage(4);
  coverage.Add(std::array<Dot, 4>{{{-3, -2}, {9, -2}, {9, 7}, {-3, 7}}});
  EXPECT_NEAR(Sum(coverage.Shares()), 16, 1e-12);
}

class Sizes : public testing::TestWithParam<int> {
 protected:
  const int size = GetParam();
  std::vector<Color> Drawn(Picture picture) const { return Draw(picture, size, kInks, kGround); }
  Color At(const std::vector<Color>& pixels, int x, int y) const {
    return pixels[static_cast<std::size_t>(y * size + x)];
  }
};

TEST_P(Sizes, EveryPictureIsThereAndLeavesGroundAround) {
  for (const Picture picture : kAll) {
    const std::vector<Color> pixels = Drawn(picture);
    ASSERT_EQ(std::ssize(pixels), size * size);
    const auto ground = std::count(pixels.begin(), pixels.end(), kGround);
    const auto whole = size * size;
    EXPECT_GT(ground, whole / 10) << static_cast<int>(picture);
    EXPECT_LT(ground, whole * 9 / 10) << static_cast<int>(picture);
    // Strokes are dark enough to be seen.
    EXPECT_TRUE(std::any_of(pixels.begin(), pixels.end(), [](Color c) {
      return Contrast(c, kGround) >= 7;
    })) << static_cast<int>(picture);
  }
}

// Rounded values may differ by one.
bool Alike(Color a, Color b) {
  return std::abs(static_cast<int>(a & 0xFF) - static_cast<int>(b & 0xFF)) <= 1;
}

TEST_P(Sizes, PicturesWithTwoSidesAreSymmetric) {
  for (const Picture picture : {Picture::Cross, Picture::Down, Picture::Above, Picture::Up,
                                Picture::Inside, Picture::Back}) {
    const std::vector<Color> pixels = Drawn(picture);
    for (int a = 0; a < size; ++a) {
      for (int b = 0; b < size; ++b) {
        const bool level = picture == Picture::Inside || picture == Picture::Back;
        const Color here = level ? At(pixels, a, b) : At(pixels, b, a);
        const Color there = level ? At(pixels, a, size - 1 - b) : At(pixels, size - 1 - b, a);
        EXPECT_TRUE(Alike(here, there)) << static_cast<int>(picture) << ' ' << a << ' ' << b;
      }
    }
  }
}

TEST_P(Sizes, TheCrossReachesEveryCornerAndTheMiddle) {
  const std::vector<Color> pixels = Drawn(Picture::Cross);
  const int inside = size / 10 + 1;  // the ends of the bars are cut off slantwise
  for (const int x : {inside, size - 1 - inside}) {
    for (const int y : {inside, size - 1 - inside})
      EXPECT_LT(At(pixels, x, y) & 0xFF, 0x20u);
  }
  const auto drawn = [](Color c) { return c != kGround; };
  EXPECT_TRUE(std::any_of(pixels.begin(), pixels.begin() + size / 4, drawn));
  EXPECT_TRUE(std::any_of(pixels.end() - size / 4, pixels.end(), drawn));
  EXPECT_EQ(At(pixels, size / 2, size / 2), kInks.Line);
  EXPECT_EQ(At(pixels, size / 2, 0), kGround);
  EXPECT_EQ(At(pixels, 0, size / 2), kGround);
}

TEST_P(Sizes, CornersAreRoundAndMeetStraightSides) {
  constexpr Color kBorder = 0x0000FF;
  constexpr Color kFill = 0x00FF00;
  const int radius = size;
  const std::vector<Color> pixels = Draw(Corner{radius, 1, kGround, kBorder, kFill});
  const auto at = [&](int x, int y) {
    return pixels[static_cast<std::size_t>(y * 2 * radius + x)];
  };
  EXPECT_EQ(at(0, 0), kGround);
  EXPECT_EQ(at(2 * radius - 1, 2 * radius - 1), kGround);
  EXPECT_EQ(at(radius, radius), kFill);
  // Where the sides begin the border is as thick as theirs, but for the bend of one pixel.
  EXPECT_GT(at(radius, 0) & 0xFF, 0xF0u);
  EXPECT_LT(at(radius, 0) >> 16, 0x30u);
}

INSTANTIATE_TEST_SUITE_P(From8To64, Sizes, testing::Range(8, 65));

}  // namespace

}  // namespace krx::ui
