// Where the keyboard on the screen stands, and where the form goes for it.
#include <gtest/gtest.h>

#include <cmath>

#include "panel/Placement.h"

namespace krx::panel {
namespace {

// Pixels of a screen as lengths.
class Screen {
 public:
  Screen(int width, int height, int dpi)
      : pixel_(1440.0f / static_cast<Twips>(dpi)), width_(width), height_(height) {}

  Rect Pixels(int left, int top, int width, int height) const {
    const auto length = [this](int pixels) { return static_cast<Twips>(pixels) * pixel_; };
    return {length(left), length(top), length(width), length(height)};
  }

  // A form in the middle, with rows of fields from its top and buttons at its bottom, in pixels.
  Situation With(int form_width, int form_height, int fields) const {
    Situation now;
    now.Pixel = pixel_;
    now.Area = Pixels(0, 0, width_, height_);
    const int left = (width_ - form_width) / 2;
    const int top = std::max((height_ - form_height) / 2, 0);
    now.Form = Pixels(left, top, form_width, form_height);
    const int room = form_height - 30 - 40;
    for (int i = 0; i < fields; ++i) {
      const int at = top + 30 + room * (i + 1) / fields - 24;
      now.Fields.push_back(Pixels(left + 16, at, form_width - 32, 20));
    }
    now.Buttons = Pixels(left + 16, top + form_height - 36, form_width - 32, 28);
    return now;
  }

 private:
  Twips pixel_;
  int width_;
  int height_;
};

Twips Bottom(const Rect& rect) {
  return rect.Top + rect.Height;
}

Twips KeyWidth(const Situation& now, const Shape& shape) {
  return (shape.Bounds.Width - kEdges - shape.Gap) / now.KeysPerRow - shape.Gap;
}

Twips KeyHeight(const Situation& now, const Shape& shape) {
  const int rows = now.Rows + (shape.Spare ? now.SpareRows : 0);
  return (shape.Bounds.Height - kEdges - shape.Gap) / static_cast<Twips>(rows) - shape.Gap;
}

// What is above the keyboard, or below one at the top, and on the screen.
bool InSight(const Situation& now, const Shape& shape, Rect rect, Twips top) {
  rect.Top += top - now.Form.Top;
  const Twips from = shape.AtTop ? Bottom(shape.Bounds) : now.Area.Top;
  const Twips to = shape.AtTop ? Bottom(now.Area) : shape.Bounds.Top;
  return rect.Top >= from && Bottom(rect) <= to;
}

void ExpectAllInSight(const Situation& now) {
  const Shape shape = ShapeFor(now);
  for (const Rect& field : now.Fields) {
    const Twips top = TopFor(now, shape, field);
    EXPECT_TRUE(InSight(now, shape, field, top));
    EXPECT_TRUE(InSight(now, shape, *now.Buttons, top));
  }
}

struct ScreenCase {
  int Width, Height, Dpi;
};
constexpr ScreenCase kScreens[] = {{800, 480, 96},   {1280, 800, 96},  {1920, 1080, 96},
                                   {800, 480, 192},  {1280, 800, 192}, {1920, 1080, 192},
                                   {1024, 600, 120}, {1366, 768, 144}};

TEST(Placement, KeysAreNeverTooSmallAndLargeWhereThereIsRoom) {
  for (const ScreenCase& screen : kScreens) {
    for (const int share : {30, 60, 90, 100}) {
      const int height = screen.Height * share / 100;
      const Situation now =
          Screen(screen.Width, screen.Height, screen.Dpi).With(screen.Width / 2, height, 3);
      const Shape shape = ShapeFor(now);
      EXPECT_GE(KeyHeight(now, shape), 7 * kMillimetre - 0.5f) << screen.Width << " " << share;
      EXPECT_GE(KeyWidth(now, shape), 7 * kMillimetre - 0.5f) << screen.Width << " " << share;
      EXPECT_GE(shape.Bounds.Left, 0);
      EXPECT_LE(shape.Bounds.Left + shape.Bounds.Width, now.Area.Width);
    }
  }
  const Situation roomy = Screen(1280, 800, 96).With(300, 200, 2);
  EXPECT_GE(KeyWidth(roomy, ShapeFor(roomy)), 12 * kMillimetre);
  EXPECT_GE(KeyHeight(roomy, ShapeFor(roomy)), 9 * kMillimetre);
  EXPECT_TRUE(ShapeFor(roomy).Spare);
}

TEST(Placement, AFormThatIsNotInTheWayStaysWhereItIs) {
  const Situation now = Screen(1280, 800, 96).With(300, 200, 2);
  const Shape shape = ShapeFor(now);
  EXPECT_FALSE(shape.AtTop);
  EXPECT_FLOAT_EQ(Bottom(now.Area), Bottom(shape.Bounds));
  EXPECT_FLOAT_EQ(now.Form.Top, TopFor(now, shape, now.Fields[0]));
}

// 480 lines: 200 of the form, five rows of 10 mm (38 pixels each) with gaps of 3 and the edges.
TEST(Placement, AFormThatIsInTheWayGoesUpAsAWhole) {
  const Situation now = Screen(800, 480, 96).With(300, 200, 2);
  const Shape shape = ShapeFor(now);
  EXPECT_FLOAT_EQ((5 * (38 + 3) + 3 + 2) * 15.0f, shape.Bounds.Height);
  const Twips top = TopFor(now, shape, now.Fields[0]);
  EXPECT_LT(top, now.Form.Top);
  EXPECT_TRUE(Inside(now, top));
  EXPECT_LE(top + now.Form.Height, shape.Bounds.Top);
  EXPECT_FLOAT_EQ(top, TopFor(now, shape, now.Fields[1])) << "the same for every field";
}

TEST(Placement, AHighFormGetsALowKeyboard) {
  // 480 lines: the form leaves 170; five rows of 9 mm (35) with gaps take 195, four 157.
  const Situation now = Screen(800, 480, 96).With(300, 310, 4);
  const Shape shape = ShapeFor(now);
  EXPECT_FALSE(shape.Spare);
  EXPECT_GE(KeyHeight(now, shape), 9 * kMillimetre - 0.5f);
  EXPECT_TRUE(Inside(now, TopFor(now, shape, now.Fields[0])));
  ExpectAllInSight(now);
}

TEST(Placement, AFormAsHighAsTheScreenLeavesItWithWhatIsNotNeeded) {
  const Situation now = Screen(800, 480, 96).With(400, 470, 6);
  // From the first field to the buttons it is 400 lines high: nothing has room for both.
  const Shape shape = ShapeFor(now);
  EXPECT_GE(KeyHeight(now, shape), 7 * kMillimetre - 0.5f);
  for (const Rect& field : now.Fields)
    EXPECT_TRUE(InSight(now, shape, field, TopFor(now, shape, field))) << "the field comes first";
  const Rect& last = now.Fields.back();
  const Twips top = TopFor(now, shape, last);
  EXPECT_FALSE(Inside(now, top));
  EXPECT_TRUE(InSight(now, shape, *now.Buttons, top));
}

TEST(Placement, FieldAndButtonsAreInSightWhereTheyFit) {
  for (const ScreenCase& screen : kScreens) {
    // 28 mm of keyboard with its gaps, in pixels, is what the lowest one takes.
    const int lowest = 33 * screen.Dpi * 10 / 254 + 4;
    const int room = screen.Height - lowest;
    for (const int height : {room / 3, room / 2, room - 10}) {
      if (height < 150) continue;  // no form of ours is lower
      SCOPED_TRACE(screen.Height * 1000 + height);
      ExpectAllInSight(Screen(screen.Width, screen.Height, screen.Dpi).With(300, height, 2));
    }
  }
}

TEST(Placement, AKeyboardAtTheTopNeedsNoFormToMove) {
  // Too high for any keyboard beside it, but fields and buttons are in its lower half.
  Situation now = Screen(800, 480, 96).With(300, 460, 1);
  now.Fields = {Screen(800, 480, 96).Pixels(260, 300, 280, 20)};
  const Shape shape = ShapeFor(now);
  EXPECT_TRUE(shape.AtTop);
  EXPECT_FLOAT_EQ(0, shape.Bounds.Top);
  EXPECT_FLOAT_EQ(now.Form.Top, TopFor(now, shape, now.Fields[0]));
  ExpectAllInSight(now);
}

TEST(Placement, EverythingStandsOnWholePixels) {
  for (const ScreenCase& screen : kScreens) {
    const Situation now =
        Screen(screen.Width, screen.Height, screen.Dpi).With(301, screen.Height * 2 / 3, 3);
    const Shape shape = ShapeFor(now);
    for (const Twips length : {shape.Bounds.Left, shape.Gap, TopFor(now, shape, now.Fields[0])})
      EXPECT_NEAR(std::round(length / now.Pixel), length / now.Pixel, 0.02);
  }
}

}  // namespace
}  // namespace krx::panel
