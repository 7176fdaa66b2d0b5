#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

#include "ports/win32/Texts.h"
#include "ports/win32/Win32Platform.h"

namespace krx::test {

namespace {

using win32::Scale;
using win32::SharedFont;

constexpr int kMargin = 40;  // around the measured area, to catch what is drawn outside of it

// A picture in memory on which texts are drawn black on white.
class Canvas {
 public:
  Canvas(int width, int height) : width_(width), height_(height), dc_(CreateCompatibleDC(nullptr)) {
    BITMAPINFO info{};
    info.bmiHeader = {sizeof(BITMAPINFOHEADER), width, -height, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
    void* bits = nullptr;
    bitmap_ = CreateDIBSection(dc_, &info, DIB_RGB_COLORS, &bits, nullptr, 0);
    pixels_ = static_cast<const DWORD*>(bits);
    before_ = SelectObject(dc_, bitmap_);
    PatBlt(dc_, 0, 0, width, height, WHITENESS);
  }
  ~Canvas() {
    SelectObject(dc_, before_);
    DeleteObject(bitmap_);
    DeleteDC(dc_);
  }
  HDC Dc() const { return dc_; }

  // The rectangle that encloses everything drawn.
  RECT Ink() const {
    GdiFlush();
    RECT ink{width_, height_, 0, 0};
    for (int y = 0; y < height_; ++y) {
      for (int x = 0; x < width_; ++x) {
        if ((pixels_[y * width_ + x] & 0xFFFFFF) == 0xFFFFFF) continue;
        const RECT here{x, y, x + 1, y + 1};
        ink = {std::min(ink.left, here.left), std::min(ink.top, here.top),
               std::max(ink.right, here.right), std::max(ink.bottom, here.bottom)};
      }
    }
    return ink;
  }

 private:
  int width_;
  int height_;
  HDC dc_;
  HBITMAP bitmap_;
  HGDIOBJ before_;
  const DWORD* pixels_;
};

TEST(Measuring, PixelsSurviveTheWayToTwipsAndBack) {
  for (const int dpi : {96, 120, 144, 192}) {
    for (int pixels = -5000; pixels <= 5000; ++pixels)
      ASSERT_EQ(Scale{dpi}.Pixels(Scale{dpi}.ToTwips(pixels)), pixels) << dpi;
  }
  EXPECT_EQ(Scale{96}.ToTwips(1), 15);
  EXPECT_EQ(Scale{120}.ToTwips(1), 12);
  EXPECT_EQ(Scale{144}.ToTwips(1), 10);
  EXPECT_EQ(Scale{192}.ToTwips(1), 7.5f);
  EXPECT_EQ(Scale{120}.Pixels(285), 24);  // 23.75
}

TEST(Measuring, DrawnTextsStayInsideTheirMeasure) {
  win32::Texts texts;
  for (const int dpi : {96, 120, 144, 192}) {
    for (const float size : {8.25f, 9.f, 12.f, 24.f}) {
      const SharedFont font = texts.FontFor({u"Tahoma", size}, {dpi});
      for (const StringView text : {StringView(u"Wage & \u00C4gypten"), StringView(u"a\tb\t\tc"),
                                    StringView(u"two\nlines, gjpqy"), StringView(u"\n\nlast")}) {
        const SIZE measured = texts.Measure(font, text);
        Canvas canvas(measured.cx + 2 * kMargin, measured.cy + 2 * kMargin);
        const RECT area{kMargin, kMargin, kMargin + measured.cx, kMargin + measured.cy};
        texts.Draw(canvas.Dc(), font, text, area, 0);
        const RECT ink = canvas.Ink();
        EXPECT_GE(ink.left, area.left - 1) << dpi << ' ' << size << ' ' << ToUtf8(text);
        EXPECT_LE(ink.right, area.right + 1) << dpi << ' ' << size << ' ' << ToUtf8(text);
        EXPECT_GE(ink.top, area.top) << dpi << ' ' << size << ' ' << ToUtf8(text);
        EXPECT_LE(ink.bottom, area.bottom) << dpi << ' ' << size << ' ' << ToUtf8(text);
        EXPECT_GT(ink.right, area.left + measured.cx / 2) << "nothing was drawn";
      }
    }
  }
}

TEST(Measuring, AnEmptyTextIsOneLineHigh) {
  win32::Win32Platform platform;
  const Font font;
  const Size empty = platform.MeasureText(font, u"");
  EXPECT_EQ(empty.Width, 0);
  EXPECT_GT(empty.Height, 0);
  EXPECT_EQ(platform.MeasureText(font, u"x").Height, empty.Height);
  EXPECT_EQ(platform.MeasureText(font, u"x\ny\n").Height, 3 * empty.Height);
  EXPECT_GT(platform.TextBoxHeight(font), empty.Height);
}

TEST(Measuring, AWideTextIsAsWideAsItsWidestLine) {
  win32::Win32Platform platform;
  const Font font;
  const Twips wide = platform.MeasureText(font, u"a long line").Width;
  EXPECT_EQ(platform.MeasureText(font, u"x\na long line\ny").Width, wide);
  EXPECT_GT(platform.MeasureText(font, u"a\tb").Width, platform.MeasureText(font, u"ab").Width);
}

TEST(Measuring, ManyFontsKeepNoMoreThanTheLastOnes) {
  win32::Texts texts;
  std::vector<std::weak_ptr<const win32::FontHandle>> seen;
  for (int i = 0; i < 200; ++i)
    seen.push_back(texts.FontFor({u"Tahoma", 8.f + static_cast<float>(i)}, {96}));
  const auto alive = std::count_if(seen.begin(), seen.end(), [](auto& f) { return !f.expired(); });
  EXPECT_LE(alive, 24);
  EXPECT_GE(alive, 8);
}

TEST(Measuring, AStockIconThatTheSystemLacksIsAnError) {
  win32::Win32Platform platform;
  EXPECT_EQ(platform.LoadStockIcon(32513).Id, 32513);
  EXPECT_THROW(platform.LoadStockIcon(999), Error);
}

TEST(Measuring, AForeignHostKeepsItsOwnResolution) {
  const HDC dc = GetDC(nullptr);
  const int before = GetDeviceCaps(dc, LOGPIXELSX);
  win32::Win32Platform platform;
  platform.TwipsPerPixel();
  platform.WorkArea();
  EXPECT_EQ(GetDeviceCaps(dc, LOGPIXELSX), before);
  ReleaseDC(nullptr, dc);
}

}  // namespace

}  // namespace krx::test
