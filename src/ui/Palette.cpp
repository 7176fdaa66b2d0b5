#include "ui/Palette.h"

#include <algorithm>
#include <cmath>

namespace krx::ui {

namespace {

// A colour as it is usually written, red first.
constexpr Color Rgb(std::uint32_t value) {
  return (value & 0xFFu) << 16 | (value & 0xFF00u) | value >> 16;
}

// For rooms with daylight.
constexpr Palette kLight{
    .Face = Rgb(0xF2F4F6),
    .Text = Rgb(0x1B1F24),
    .Field = Rgb(0xFFFFFF),
    .FieldText = Rgb(0x1B1F24),
    .Border = Rgb(0x767E88),
    .Line = Rgb(0xC6CCD3),
    .Focus = Rgb(0x0E3E78),
    .Key = Rgb(0xFFFFFF),
    .KeyHot = Rgb(0xE6EFF9),
    .KeyText = Rgb(0x1B1F24),
    .KeyPressed = Rgb(0xC9DCF0),
    .PressedText = Rgb(0x1B1F24),
    .Accent = Rgb(0x1D5FA6),
    .AccentHot = Rgb(0x2A6FB9),
    .AccentPressed = Rgb(0x154A85),
    .AccentText = Rgb(0xFFFFFF),
    .DisabledKey = Rgb(0xE6E9EC),
    .DisabledText = Rgb(0x565E67),
    .Caption = Rgb(0x24486E),
    .CaptionHot = Rgb(0x3A6190),
    .CaptionPressed = Rgb(0x16304C),
    .CaptionText = Rgb(0xFFFFFF),
    .Selection = Rgb(0x1D5FA6),
    .SelectionText = Rgb(0xFFFFFF),
    .Quiet = Rgb(0xCFE0F2),
    .QuietText = Rgb(0x1B1F24),
    .Hot = Rgb(0xEAF2FA),
    .Header = Rgb(0xE9ECEF),
    .Ink = Rgb(0x59626C),
    .Folder = Rgb(0xF2C14E),
    .FolderInside = Rgb(0xFBE3A6),
    .Metal = Rgb(0xB4BCC5),
    .Paper = Rgb(0xFFFFFF),
};

// For control rooms at night.
constexpr Palette kDark{
    .Face = Rgb(0x23282D),
    .Text = Rgb(0xE4E8EB),
    .Field = Rgb(0x171A1E),
    .FieldText = Rgb(0xE4E8EB),
    .Border = Rgb(0x848D97),
    .Line = Rgb(0x3C434B),
    .Focus = Rgb(0xA9D0F5),
    .Key = Rgb(0x343B43),
    .KeyHot = Rgb(0x424B55),
    .KeyText = Rgb(0xEDF0F2),
    .KeyPressed = Rgb(0x1A1E22),
    .PressedText = Rgb(0xEDF0F2),
    .Accent = Rgb(0x7DB4E6),
    .AccentHot = Rgb(0x9AC6EE),
    .AccentPressed = Rgb(0x5B98D0),
    .AccentText = Rgb(0x0C1722),
    .DisabledKey = Rgb(0x2B3137),
    .DisabledText = Rgb(0x9CA4AD),
    .Caption = Rgb(0x30404F),
    .CaptionHot = Rgb(0x435668),
    .CaptionPressed = Rgb(0x1D2832),
    .CaptionText = Rgb(0xEDF0F2),
    .Selection = Rgb(0x7DB4E6),
    .SelectionText = Rgb(0x0C1722),
    .Quiet = Rgb(0x2F4660),
    .QuietText = Rgb(0xE4E8EB),
    .Hot = Rgb(0x242A31),
    .Header = Rgb(0x2B3137),
    .Ink = Rgb(0xAEB6BF),
    .Folder = Rgb(0xC79A3A),
    .FolderInside = Rgb(0xE0BC6C),
    .Metal = Rgb(0x6B747D),
    .Paper = Rgb(0x2B3137),
};

// Beside process displays, where strong colours belong to alarms alone.
constexpr Palette kGrey{
    .Face = Rgb(0xC9CBCD),
    .Text = Rgb(0x1C1D1F),
    .Field = Rgb(0xDFE0E2),
    .FieldText = Rgb(0x1C1D1F),
    .Border = Rgb(0x5C6064),
    .Line = Rgb(0xA9ACB0),
    .Focus = Rgb(0x27313B),
    .Key = Rgb(0xD9DBDD),
    .KeyHot = Rgb(0xE6E7E9),
    .KeyText = Rgb(0x1C1D1F),
    .KeyPressed = Rgb(0xB4B8BC),
    .PressedText = Rgb(0x1C1D1F),
    .Accent = Rgb(0x47535F),
    .AccentHot = Rgb(0x566370),
    .AccentPressed = Rgb(0x353F49),
    .AccentText = Rgb(0xF2F3F4),
    .DisabledKey = Rgb(0xC2C4C7),
    .DisabledText = Rgb(0x484C51),
    .Caption = Rgb(0x53595F),
    .CaptionHot = Rgb(0x666C73),
    .CaptionPressed = Rgb(0x3D4247),
    .CaptionText = Rgb(0xF2F3F4),
    .Selection = Rgb(0x47535F),
    .SelectionText = Rgb(0xF2F3F4),
    .Quiet = Rgb(0xB3BCC4),
    .QuietText = Rgb(0x1C1D1F),
    .Hot = Rgb(0xD3D5D8),
    .Header = Rgb(0xCFD1D4),
    .Ink = Rgb(0x4B4F54),
    .Folder = Rgb(0xA9A28F),
    .FolderInside = Rgb(0xC4BEAF),
    .Metal = Rgb(0x9DA1A6),
    .Paper = Rgb(0xE9EAEB),
};

// Indexes of the system's colours.
enum SystemIndex : std::uint32_t {
  kCaption = 2,
  kWindow = 5,
  kWindowFrame = 6,
  kText = 8,
  kCaptionText = 9,
  kHighlight = 13,
  kHighlightText = 14,
  kFace = 15,
  kGrayText = 17,
  kFaceText = 18,
};

Palette OfTheSystem(const std::function<Color(std::uint32_t)>& system) {
  Palette palette{};
  palette.Face = palette.Key = palette.DisabledKey = palette.Header = system(kFace);
  palette.Text = palette.KeyText = palette.Border = palette.Line = system(kFaceText);
  palette.Field = palette.Hot = palette.Paper = system(kWindow);
  palette.FieldText = palette.Ink = system(kText);
  palette.Folder = palette.FolderInside = palette.Metal = palette.Field;
  palette.Focus = palette.FieldText;
  palette.Accent = palette.KeyPressed = palette.Selection = palette.Quiet = system(kHighlight);
  palette.AccentText = palette.PressedText = palette.SelectionText = palette.QuietText =
      system(kHighlightText);
  palette.KeyHot = palette.Key;
  palette.AccentHot = palette.AccentPressed = palette.Accent;
  palette.DisabledText = system(kGrayText);
  palette.Caption = palette.CaptionHot = palette.CaptionPressed = system(kCaption);
  palette.CaptionText = system(kCaptionText);
  return palette;
}

double Linear(std::uint32_t part) {
  constexpr double kKnee = 0.04045;
  const double value = part / 255.0;
  return value <= kKnee ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
}

double Luminance(Color color) {
  return 0.2126 * Linear(color & 0xFFu) + 0.7152 * Linear(color >> 8 & 0xFFu) +
         0.0722 * Linear(color >> 16 & 0xFFu);
}

}  // namespace

Palette PaletteOf(Theme theme, const std::function<Color(std::uint32_t)>& system) {
  switch (theme) {
    case Theme::Dark:
      return kDark;
    case Theme::Grey:
      return kGrey;
    case Theme::HighContrast:
      return OfTheSystem(system);
    case Theme::Light:
      break;
  }
  return kLight;
}

Color Themed(const Palette& palette, Color color) {
  switch (color) {
    case SystemColor(kCaption):
      return palette.Caption;
    case SystemColor(kCaptionText):
      return palette.CaptionText;
    case SystemColor(kWindow):
      return palette.Field;
    case SystemColor(kText):
      return palette.FieldText;
    case SystemColor(kWindowFrame):
      return palette.Border;
    case SystemColor(kHighlight):
      return palette.Selection;
    case SystemColor(kHighlightText):
      return palette.SelectionText;
    case SystemColor(kFace):
      return palette.Face;
    case SystemColor(kGrayText):
      return palette.DisabledText;
    case SystemColor(kFaceText):
      return palette.Text;
    default:
      return color;
  }
}

double Contrast(Color one, Color other) {
  const double a = Luminance(one);
  const double b = Luminance(other);
  constexpr double kFlare = 0.05;
  return (std::max(a, b) + kFlare) / (std::min(a, b) + kFlare);
}

Color Mixed(Color part, Color rest, double share) {
  Color mixed = 0;
  for (const int shift : {0, 8, 16}) {
    const double value = (part >> shift & 0xFFu) * share + (rest >> shift & 0xFFu) * (1 - share);
    mixed |= static_cast<Color>(std::lround(value)) << shift;
  }
  return mixed;
}

}  // namespace krx::ui
