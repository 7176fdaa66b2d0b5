#include <vector>

#include "ContractTest.h"

namespace krx::test {

namespace {

using MeasuringContract = ContractTest;

TEST_F(MeasuringContract, TheEmptyTextIsOneLineHighAndHasNoWidth) {
  const Font font;
  EXPECT_EQ(platform.MeasureText(font, u"").Width, 0);
  EXPECT_GT(platform.MeasureText(font, u"").Height, 0);
  EXPECT_EQ(platform.MeasureText(font, u"").Height, platform.MeasureText(font, u"Ag").Height);
}

TEST_F(MeasuringContract, LinesAddUpAndTheWidestOneCounts) {
  const Font font;
  const Size line = platform.MeasureText(font, u"wide line");
  const Size three = platform.MeasureText(font, u"i\nwide line\n");
  EXPECT_FLOAT_EQ(three.Height, 3 * line.Height);
  EXPECT_FLOAT_EQ(three.Width, line.Width);
}

TEST_F(MeasuringContract, TheWidestOfManyTextsIsAsWideAsItIsAlone) {
  const Font font;
  const std::vector<String> texts{u"short", u"", u"by far the widest of them", u"middling", u"W"};
  const auto text = [&](std::size_t i) { return StringView(texts[i]); };
  EXPECT_FLOAT_EQ(platform.WidestText(font, texts.size(), text),
                  platform.MeasureText(font, texts[2]).Width);
  EXPECT_FLOAT_EQ(platform.WidestText(font, 2, text), platform.MeasureText(font, texts[0]).Width);
  EXPECT_EQ(platform.WidestText(font, 0, text), 0);
  Font bold = font;
  bold.Weight = 700;
  EXPECT_FLOAT_EQ(platform.WidestText(bold, texts.size(), text),
                  platform.MeasureText(bold, texts[2]).Width);
}

TEST_F(MeasuringContract, EqualCharactersAreEquallyWide) {
  const Font font;
  const Twips one = platform.MeasureText(font, u"n").Width;
  EXPECT_GT(one, 0);
  EXPECT_NEAR(platform.MeasureText(font, String(20, u'n')).Width, 20 * one,
              platform.TwipsPerPixel());
}

TEST_F(MeasuringContract, ATextOfTwoPartsIsAsWideAsBoth) {
  const Font font;
  const auto width = [&](StringView text) { return platform.MeasureText(font, text).Width; };
  EXPECT_NEAR(width(u"left and right"), width(u"left ") + width(u"and right"),
              platform.TwipsPerPixel());
}

TEST_F(MeasuringContract, ATextBoxIsNeverLowerThanItsFontNeeds) {
  Font large;
  large.Size = 20;
  const Twips natural = platform.TextBoxHeight(form.txtName.Font());
  EXPECT_GT(natural, platform.MeasureText(form.txtName.Font(), u"").Height);
  for (ui::EditBox* box :
       {static_cast<ui::EditBox*>(&form.txtName), static_cast<ui::EditBox*>(&form.txtPassword)}) {
    EXPECT_EQ(box->Height(), natural);
    box->Height = natural + 300;
    EXPECT_EQ(box->Height(), natural + 300);
    box->Height = natural - 1;
    EXPECT_EQ(box->Height(), natural);
    box->Font = large;
    EXPECT_EQ(box->Height(), platform.TextBoxHeight(large));
  }
  EXPECT_GT(platform.TextBoxHeight(large), natural);
}

}  // namespace

}  // namespace krx::test
