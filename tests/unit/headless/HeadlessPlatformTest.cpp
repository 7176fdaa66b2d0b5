#include "support/FormTest.h"

namespace krx::test {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class HeadlessPlatform : public ::testing::Test {
 protected:
  headless::HeadlessPlatform platform;
  SampleForm form{platform};
};

TEST_F(HeadlessPlatform, CharacterIsTenTimesAndLineTwentyFourTimesTheFontsPoints) {
  EXPECT_EQ(platform.MeasureText({u"x", 8}, u"abcd"), (Size{320, 192}));
  EXPECT_EQ(platform.MeasureText({u"x", 10.5f}, u"ab"), (Size{210, 252}));
}

TEST_F(HeadlessPlatform, BoldCharacterIsElevenTimesTheFontsPoints) {
  EXPECT_EQ(platform.MeasureText({u"x", 8, 600}, u"abcd"), (Size{352, 192}));
  EXPECT_EQ(platform.MeasureText({u"x", 8, 599}, u"abcd"), (Size{320, 192}));
}

TEST_F(HeadlessPlatform, TextIsAsWideAsItsWidestLine) {
  EXPECT_EQ(platform.MeasureText({u"x", 8}, u"a\nbcd\n"), (Size{240, 576}));
}

TEST_F(HeadlessPlatform, EmptyTextIsOneLineHigh) {
  EXPECT_EQ(platform.MeasureText({u"x", 8}, u""), (Size{0, 192}));
}

TEST_F(HeadlessPlatform, SurrogatePairIsOneCharacter) {
  EXPECT_EQ(platform.MeasureText({u"x", 8}, u"\U0001F600a"), (Size{160, 192}));
}

TEST_F(HeadlessPlatform, ListedFontsFailToMeasure) {
  platform.Unmeasurable = {u"bad"};
  EXPECT_NE(StatusOf([&] { platform.MeasureText({u"bad", 8}, u"a"); }), 0u);
  EXPECT_EQ(StatusOf([&] { platform.MeasureText({u"good", 8}, u"a"); }), 0u);
}

TEST_F(HeadlessPlatform, TextBoxIsNinetyHigherThanALine) {
  EXPECT_EQ(platform.TextBoxHeight({u"x", 8}), 282);
}

TEST_F(HeadlessPlatform, ComplainsAboutAFormThatNobodyExpected) {
  form.ShowModal();
  EXPECT_FALSE(form.Visible());
  EXPECT_THAT(platform.Complaints(), ElementsAre("unexpected form: Sample"));
}

TEST_F(HeadlessPlatform, ComplainsAboutAnotherFormThanTheExpectedOne) {
  platform.Expect(u"Other", [](headless::Operator&) { FAIL() << "not this form"; });
  form.ShowModal();
  EXPECT_THAT(platform.Complaints(),
              ElementsAre("unexpected form: Sample", "expected form was never shown: Other"));
}

TEST_F(HeadlessPlatform, AStandingScriptAnswersWhatNobodyExpectsNext) {
  int answered = 0;
  platform.Always[u"Sample"] = [&](headless::Operator& op) {
    ++answered;
    op.Form().Hide();
  };
  form.ShowModal();
  platform.Expect(u"Sample", [](headless::Operator& op) { op.Form().Hide(); });
  form.ShowModal();
  EXPECT_EQ(answered, 1);
  EXPECT_THAT(platform.Complaints(), IsEmpty());
}

TEST_F(HeadlessPlatform, ComplainsAboutAFormThatStaysOpen) {
  platform.Expect(u"Sample", [](headless::Operator&) {});
  form.ShowModal();
  EXPECT_THAT(platform.Complaints(), ElementsAre("form left open: Sample"));
}

TEST_F(HeadlessPlatform, ComplainsAboutAFormThatNeverCame) {
  platform.Expect(u"Sample", [](headless::Operator&) {});
  EXPECT_THAT(platform.Complaints(), ElementsAre("expected form was never shown: Sample"));
}

TEST_F(HeadlessPlatform, ExpectationsAreMetInTheirOrder) {
  std::string order;
  platform.Expect(u"Sample", [&](headless::Operator& op) {
    order += '1';
    op.Form().Hide();
  });
  platform.Expect(u"Sample", [&](headless::Operator& op) {
    order += '2';
    op.Form().Hide();
  });
  form.ShowModal();
  form.ShowModal();
  EXPECT_EQ(order, "12");
  EXPECT_THAT(platform.Complaints(), IsEmpty());
}

TEST_F(HeadlessPlatform, WritesDownWhatTheFormsAskForBesides) {
  platform.SetPointer(ui::Pointer::Hourglass);
  platform.SetPointer(ui::Pointer::Default);
  platform.ProcessEvents();
  platform.SendKeys(u"{F1}");
  platform.BoxAnswer = 6;
  EXPECT_EQ(platform.ShowMessageBox(u"text", 4, u"title"), 6);
  EXPECT_THAT(platform.Pointers, ElementsAre(ui::Pointer::Hourglass, ui::Pointer::Default));
  EXPECT_EQ(platform.EventsProcessed, 1);
  EXPECT_EQ(platform.SentKeys, std::vector<String>{u"{F1}"});
  EXPECT_EQ(platform.Boxes.at(0), (headless::HeadlessPlatform::Box{u"text", 4, u"title"}));
  EXPECT_EQ(platform.LoadStockIcon(32513).Id, 32513);
}

TEST_F(HeadlessPlatform, RefusesMalformedKeystrokes) {
  EXPECT_EQ(StatusOf([&] { platform.SendKeys(u"{"); }), 0x800A0005u);
  EXPECT_TRUE(platform.SentKeys.empty());
}

TEST_F(HeadlessPlatform, SystemColoursDifferFromEachOther) {
  EXPECT_EQ(platform.ResolveColor(0x00123456), 0x00123456u);
  EXPECT_NE(platform.ResolveColor(ui::kButtonFace), platform.ResolveColor(ui::kWindowBackground));
}

}  // namespace krx::test
