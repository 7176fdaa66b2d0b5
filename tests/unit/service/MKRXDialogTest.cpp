#include "service/MKRXDialog.h"

#include <array>
#include <random>

#include "base/Error.h"
#include "support/FormTest.h"

namespace krx::test {

using service::EncodeLineBreaks;
using service::MaxValue;

TEST(EncodeLineBreaks, PairOfCarriageReturnAndLineFeedIsOneBreak) {
  EXPECT_EQ(EncodeLineBreaks(u"a\r\nb"), u"a\\nb");
  EXPECT_EQ(EncodeLineBreaks(u"a\r\nb").size(), 4u);
}

TEST(EncodeLineBreaks, LineFeedBeforeCarriageReturnIsTwoBreaks) {
  EXPECT_EQ(EncodeLineBreaks(u"a\n\rb"), u"a\\n\\nb");
}

TEST(EncodeLineBreaks, SingleCharactersAreBreaksToo) {
  EXPECT_EQ(EncodeLineBreaks(u"a\nb\rc"), u"a\\nb\\nc");
  EXPECT_EQ(EncodeLineBreaks(u"\r\r\n\n"), u"\\n\\n\\n");
}

TEST(EncodeLineBreaks, OtherTextsStayAsTheyAre) {
  EXPECT_EQ(EncodeLineBreaks(u""), u"");
  EXPECT_EQ(EncodeLineBreaks(u"a\\nb \\ \t"), u"a\\nb \\ \t");
}

// One pass from left to right: a pair or a single character is one break.
String EncodedByModel(StringView text) {
  String out;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] == u'\r' && i + 1 < text.size() && text[i + 1] == u'\n') ++i;
    out += text[i] == u'\n' || text[i] == u'\r' ? String(u"\\n") : String(1, text[i]);
  }
  return out;
}

TEST(EncodeLineBreaks, RandomTextsAreEncodedAsTheModelDoes) {
  std::mt19937 random{3};
  for (int round = 0; round < 20000; ++round) {
    String text;
    for (auto left = random() % 12; left > 0; --left)
      text += u"\r\nab"[random() % 4];
    const String encoded = EncodeLineBreaks(text);
    ASSERT_EQ(encoded, EncodedByModel(text));
    ASSERT_EQ(encoded.find_first_of(u"\r\n"), String::npos);
  }
}

TEST(MaxValue, OfNothingIsZero) {
  EXPECT_EQ(MaxValue(std::span<const int>()), 0);
  EXPECT_EQ(MaxValue(std::span<const Twips>()), 0);
}

TEST(MaxValue, IsTheLargestElement) {
  EXPECT_EQ(MaxValue({3, 7, 7, 2}), 7);
  EXPECT_EQ(MaxValue({-3, -7}), -3);
  EXPECT_EQ(MaxValue({1.5f}), 1.5f);
  EXPECT_EQ(MaxValue({2.5f, 2.25f}), 2.5f);
}

// Compares by value alone, so the copies tell which of two equal elements was taken.
struct Ranked {
  int Value;
  char Copy = 0;
  explicit Ranked(int value, char copy = 0) : Value(value), Copy(copy) {}
  bool operator<(const Ranked& other) const { return Value < other.Value; }
};

TEST(MaxValue, TiesKeepTheEarlierElement) {
  const std::array values{Ranked(3, 'a'), Ranked(7, 'b'), Ranked(7, 'c')};
  EXPECT_EQ(MaxValue(std::span<const Ranked>(values)).Copy, 'b');
}

class Measuring : public FormTest {
 protected:
  Measuring() {
    form.keyOne.Font = krx::Font{u"x", 8};
    index.Font = krx::Font{u"y", 10};
  }

  ui::Label lblSize{form, u"lblSize"};
  ui::KRXIndex index{form, u"idxSample"};
};

TEST_F(Measuring, TakesTheDisplayedTextInTheControlsFont) {
  index.Text = u"ab\\ncde";
  EXPECT_EQ(service::MeasureTextHeight(index), 480);  // two lines of 240
  EXPECT_EQ(service::MeasureTextWidth(index), 300);   // 3 * 100
  form.keyOne.Caption = u"&Yes";
  EXPECT_EQ(service::MeasureTextHeight(form.keyOne), 192);
  EXPECT_EQ(service::MeasureTextWidth(form.keyOne), 240);
}

TEST_F(Measuring, EmptyTextIsOneLineHighAndHasNoWidth) {
  index.Text = u"before";
  service::MeasureTextWidth(index);
  index.Text = u"";
  EXPECT_EQ(service::MeasureTextHeight(index), 240);
  EXPECT_EQ(service::MeasureTextWidth(index), 0);
}

TEST_F(Measuring, SameTextIsMeasuredAfreshAfterTheLabelHasChanged) {
  index.Text = u"abc";
  service::MeasureTextWidth(index);
  lblSize.Width = 1;
  lblSize.Height = 1;
  EXPECT_EQ(service::MeasureTextWidth(index), 300);
  EXPECT_EQ(service::MeasureTextHeight(index), 240);
}

TEST_F(Measuring, FontThatCannotBeMeasuredIsAFailureEveryTime) {
  platform.Unmeasurable = {u"x"};
  form.keyOne.Caption = u"Yes";
  EXPECT_EQ(StatusOf([this] { service::MeasureTextWidth(form.keyOne); }), 0x80004005u);
  EXPECT_EQ(StatusOf([this] { service::MeasureTextWidth(form.keyOne); }), 0x80004005u);
  platform.Unmeasurable.clear();
  EXPECT_EQ(service::MeasureTextWidth(form.keyOne), 240);
}

TEST_F(Measuring, FormWithoutAMeasuringLabelIsError91) {
  SampleForm bare(platform, u"Bare");
  EXPECT_EQ(StatusOf([&] { service::MeasureTextWidth(bare.keyOne); }), kObjectNotSet);
}

TEST_F(Measuring, SelectAllTextSelectsFromTheStart) {
  form.txtName.Text = u"abc";
  form.txtName.SelStart = 2;
  service::SelectAllText(form.txtName);
  EXPECT_EQ(form.txtName.SelStart(), 0);
  EXPECT_EQ(form.txtName.SelLength(), 3);
  form.txtName.Text = u"";
  service::SelectAllText(form.txtName);
  EXPECT_EQ(form.txtName.SelLength(), 0);
}

TEST_F(Measuring, TypingReplacesAllThatIsSelected) {
  form.txtName.Text = u"old";
  form.txtName.GotFocus = [this] { service::SelectAllText(form.txtName); };
  Show(form, [this](Operator& op) {
    op.Type(u"new");
    EXPECT_EQ(form.txtName.Text(), u"new");
  });
}

}  // namespace krx::test
