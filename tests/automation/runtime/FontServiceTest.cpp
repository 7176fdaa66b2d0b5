#include <gtest/gtest.h>

#include "ModuleCopy.h"

namespace krx::runtime {
namespace {

using com::ComPtr;

// Font objects tell the size of the real font, which is a whole number of pixels of a 96 dpi
// screen.
constexpr double kOnePixel = 0.75;

class FontServiceTest : public testing::Test {
 protected:
  static void Select(IFontService& fonts, StringView name) {
    com::Check(fonts.SelectFontClass(com::Bstr(name).Get()));
  }
  static ComPtr<IFont> FontOf(IFontService& fonts) {
    ComPtr<IFontDisp> font;
    com::Check(fonts.GetFont(font.Put()));
    return font.As<IFont>();
  }
  static double SizeOf(IFont& font) {
    CY size{};
    com::Check(font.get_Size(&size));
    return static_cast<double>(size.int64) / 10000;
  }
  static bool IsBold(IFont& font) {
    BOOL bold = FALSE;
    com::Check(font.get_Bold(&bold));
    return bold != FALSE;
  }

  // The face that the system takes for a described font; font objects tell this one.
  static std::wstring RealFace(const LOGFONTW& described) {
    const HDC screen = CreateCompatibleDC(nullptr);
    const HFONT font = CreateFontIndirectW(&described);
    const HGDIOBJ before = SelectObject(screen, font);
    wchar_t face[LF_FACESIZE] = {};
    GetTextFaceW(screen, LF_FACESIZE, face);
    SelectObject(screen, before);
    DeleteObject(font);
    DeleteDC(screen);
    return face;
  }

  ModuleCopy module_;
  ComPtr<IFontService> fonts_ = module_.Fonts();
};

TEST_F(FontServiceTest, GivesTheFontOfEachClass) {
  const struct {
    StringView Name;
    double Size;
    bool Bold;
  } classes[] = {
      {u"KRDialogsCaption", 9, true}, {u"KRDialogsText", 9, false},
      {u"KRDialogsButton", 9, false}, {u"KRDialogsInput", 9, false},
      {u"KRPanelCaption", 14, true},  {u"KRPanelText", 14, false},
      {u"KRPanelButton", 16, false},  {u"KRPanelInput", 16, false},
      {u"Unknown", 9, false},         {u"", 9, false},
  };
  for (const auto& [name, size, bold] : classes) {
    Select(*fonts_, u"KRPanelCaption");
    Select(*fonts_, name);
    const auto font = FontOf(*fonts_);
    EXPECT_NEAR(size, SizeOf(*font), kOnePixel) << ToUtf8(name);
    EXPECT_EQ(bold, IsBold(*font)) << ToUtf8(name);
  }
}

TEST_F(FontServiceTest, GivesTheTextFontBeforeAnyClassIsSelected) {
  const auto font = FontOf(*fonts_);
  EXPECT_NEAR(9, SizeOf(*font), kOnePixel);
  EXPECT_FALSE(IsBold(*font));
}

TEST_F(FontServiceTest, UsesTheFaceOfTheSystemsMessages) {
  NONCLIENTMETRICSW metrics{};
  metrics.cbSize = sizeof(metrics);
  ASSERT_TRUE(SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, metrics.cbSize, &metrics, 0));
  com::Bstr name;
  ASSERT_EQ(S_OK, FontOf(*fonts_)->get_Name(name.Put()));
  EXPECT_EQ(RealFace(metrics.lfMessageFont), com::ToWide(name.Text()));
}

TEST_F(FontServiceTest, KeepsACurrentClassPerObject) {
  const auto other = module_.Fonts();
  Select(*fonts_, u"KRPanelButton");
  Select(*other, u"KRDialogsCaption");
  EXPECT_NEAR(16, SizeOf(*FontOf(*fonts_)), kOnePixel);
  EXPECT_NEAR(9, SizeOf(*FontOf(*other)), kOnePixel);
}

TEST_F(FontServiceTest, HandsOutAFontOfItsOwnEachTime) {
  const auto first = FontOf(*fonts_);
  com::Check(first->put_Bold(TRUE));
  EXPECT_FALSE(IsBold(*FontOf(*fonts_)));
}

TEST_F(FontServiceTest, RefusesAMissingOutput) {
  EXPECT_EQ(E_POINTER, fonts_->GetFont(nullptr));
}

}  // namespace
}  // namespace krx::runtime
