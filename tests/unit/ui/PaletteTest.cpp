#include "ui/Palette.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include "base/String.h"

namespace krx::ui {

namespace {

constexpr Color kBlack = 0x000000;
constexpr Color kWhite = 0xFFFFFF;

// A scheme of high contrast as systems have them, by the index of the colours.
Color BlackScheme(std::uint32_t index) {
  switch (index) {
    case 13:  // highlight
      return 0xFFEB1A;
    case 17:  // grey text
      return 0x3FF23F;
    case 14:  // text on the highlight
    case 2:   // caption
    case 5:   // window
    case 15:  // face
      return kBlack;
    default:
      return kWhite;
  }
}

TEST(Contrast, IsThatOfTheRelativeLuminances) {
  EXPECT_NEAR(Contrast(kBlack, kWhite), 21, 1e-9);
  EXPECT_NEAR(Contrast(kWhite, kWhite), 1, 1e-9);
  // 0x77 / 255 is 0.46667; ((0.46667 + 0.055) / 1.055) ^ 2.4 = 0.18447; 1.05 / 0.23447.
  EXPECT_NEAR(Contrast(0x777777, kWhite), 4.478, 0.001);
  // Red comes in the lowest byte and counts 0.2126: 1.05 / 0.2626.
  EXPECT_NEAR(Contrast(0x0000FF, kWhite), 3.998, 0.001);
  EXPECT_EQ(Contrast(0x123456, 0xABCDEF), Contrast(0xABCDEF, 0x123456));
}

TEST(Mixed, TakesItsShareOfEveryPart) {
  EXPECT_EQ(Mixed(kWhite, kBlack, 0), kBlack);
  EXPECT_EQ(Mixed(kWhite, kBlack, 1), kWhite);
  EXPECT_EQ(Mixed(0x400080, 0x004000, 0.25), 0x103020u);
}

class Palettes : public testing::TestWithParam<Theme> {
 protected:
  const Palette palette = PaletteOf(GetParam(), &BlackScheme);
};

struct Pair {
  const char* What;
  Color Palette::*On;
  Color Palette::*Ground;
};

TEST_P(Palettes, EveryTextIsReadInEveryState) {
  const std::vector<Pair> texts{
      {"a label", &Palette::Text, &Palette::Face},
      {"a field", &Palette::FieldText, &Palette::Field},
      {"a title", &Palette::Text, &Palette::Header},
      {"a key", &Palette::KeyText, &Palette::Key},
      {"a hot key", &Palette::KeyText, &Palette::KeyHot},
      {"the default key", &Palette::AccentText, &Palette::Accent},
      {"the hot default key", &Palette::AccentText, &Palette::AccentHot},
      {"the pressed default key", &Palette::AccentText, &Palette::AccentPressed},
      {"a pressed key", &Palette::PressedText, &Palette::KeyPressed},
      {"a disabled key", &Palette::DisabledText, &Palette::DisabledKey},
      {"a disabled label", &Palette::DisabledText, &Palette::Face},
      {"a disabled field", &Palette::DisabledText, &Palette::Field},
      {"a disabled title", &Palette::DisabledText, &Palette::Header},
      {"the caption line", &Palette::CaptionText, &Palette::Caption},
      {"the hot cross", &Palette::CaptionText, &Palette::CaptionHot},
      {"the pressed cross", &Palette::CaptionText, &Palette::CaptionPressed},
      {"the selected row", &Palette::SelectionText, &Palette::Selection},
      {"the selected row of another list", &Palette::QuietText, &Palette::Quiet},
      {"the row under the pointer", &Palette::FieldText, &Palette::Hot},
  };
  for (const Pair& text : texts)
    EXPECT_GE(Contrast(palette.*text.On, palette.*text.Ground), 4.5) << text.What;
}

TEST_P(Palettes, OutlinesMarksAndTheFocusAreSeen) {
  const std::vector<Pair> marks{
      {"a field on the form", &Palette::Border, &Palette::Face},
      {"a field", &Palette::Border, &Palette::Field},
      {"a key", &Palette::Border, &Palette::Key},
      {"the default key", &Palette::Accent, &Palette::Face},
      {"the focus on the form", &Palette::Focus, &Palette::Face},
      {"the focus of a field", &Palette::Focus, &Palette::Field},
      {"the focus of a row", &Palette::Focus, &Palette::Hot},
      {"the selected row", &Palette::Selection, &Palette::Field},
      {"a picture", &Palette::Ink, &Palette::Field},
      {"a picture under the pointer", &Palette::Ink, &Palette::Hot},
  };
  for (const Pair& mark : marks)
    EXPECT_GE(Contrast(palette.*mark.On, palette.*mark.Ground), 3) << mark.What;
}

TEST_P(Palettes, ReplaceTheColoursOfTheModel) {
  EXPECT_EQ(Themed(palette, kButtonFace), palette.Face);
  EXPECT_EQ(Themed(palette, kButtonText), palette.Text);
  EXPECT_EQ(Themed(palette, kWindowBackground), palette.Field);
  EXPECT_EQ(Themed(palette, kWindowText), palette.FieldText);
  EXPECT_EQ(Themed(palette, kActiveCaption), palette.Caption);
  EXPECT_EQ(Themed(palette, kActiveCaptionText), palette.CaptionText);
  // Window frame, selection, its text and disabled text, by the system's numbers.
  EXPECT_EQ(Themed(palette, SystemColor(6)), palette.Border);
  EXPECT_EQ(Themed(palette, SystemColor(13)), palette.Selection);
  EXPECT_EQ(Themed(palette, SystemColor(14)), palette.SelectionText);
  EXPECT_EQ(Themed(palette, SystemColor(17)), palette.DisabledText);
  EXPECT_EQ(Themed(palette, 0x123456), 0x123456u);
  EXPECT_EQ(Themed(palette, SystemColor(24)), SystemColor(24));
}

INSTANTIATE_TEST_SUITE_P(All, Palettes,
                         testing::Values(Theme::Light, Theme::Dark, Theme::Grey,
                                         Theme::HighContrast),
                         [](const auto& theme) {
                           std::string name = ToUtf8(NameOf(theme.param));
                           std::erase(name, '-');
                           return name;
                         });

int Chroma(Color color) {
  const auto [least, most] =
      std::minmax({static_cast<int>(color & 0xFF), static_cast<int>(color >> 8 & 0xFF),
                   static_cast<int>(color >> 16 & 0xFF)});
  return most - least;
}

// Strong colours beside a process display belong to its alarms.
TEST(Grey, HasNoStrongColour) {
  const Palette palette = PaletteOf(Theme::Grey, &BlackScheme);
  for (const Color area : {palette.Face, palette.Field, palette.Key, palette.Header, palette.Line})
    EXPECT_LE(Chroma(area), 8) << area;
  for (const Color color :
       {palette.Accent, palette.AccentHot, palette.AccentPressed, palette.Focus, palette.Selection,
        palette.Quiet, palette.Caption, palette.CaptionHot, palette.Folder, palette.FolderInside})
    EXPECT_LE(Chroma(color), 28) << color;
}

TEST(Dark, IsDarkAndLightIsLight) {
  EXPECT_GT(Contrast(PaletteOf(Theme::Dark, &BlackScheme).Face, kWhite), 12);
  EXPECT_GT(Contrast(PaletteOf(Theme::Light, &BlackScheme).Face, kBlack), 12);
}

TEST(HighContrast, HasTheColoursOfTheSystemAlone) {
  const Palette palette =
      PaletteOf(Theme::HighContrast, [](std::uint32_t index) { return 1000 + index; });
  EXPECT_EQ(palette.Face, 1015u);
  EXPECT_EQ(palette.Text, 1018u);
  EXPECT_EQ(palette.Field, 1005u);
  EXPECT_EQ(palette.FieldText, 1008u);
  EXPECT_EQ(palette.Caption, 1002u);
  EXPECT_EQ(palette.CaptionText, 1009u);
  EXPECT_EQ(palette.Selection, 1013u);
  EXPECT_EQ(palette.SelectionText, 1014u);
  EXPECT_EQ(palette.DisabledText, 1017u);
  for (const Color Palette::*color :
       {&Palette::Border,        &Palette::Line,         &Palette::Focus,
        &Palette::Key,           &Palette::KeyHot,       &Palette::KeyPressed,
        &Palette::PressedText,   &Palette::Accent,       &Palette::AccentHot,
        &Palette::AccentPressed, &Palette::Quiet,        &Palette::QuietText,
        &Palette::Hot,           &Palette::Header,       &Palette::Ink,
        &Palette::Folder,        &Palette::FolderInside, &Palette::Metal,
        &Palette::Paper,         &Palette::CaptionHot,   &Palette::CaptionPressed,
        &Palette::DisabledKey})
    EXPECT_GE(palette.*color, 1000u);
}

}  // namespace

}  // namespace krx::ui
