#include "support/DialogTest.h"

// Figures as in LayoutTest.cpp: 80 twips a character, 192 a line; the row of buttons starts at left
// 180 and top 1215, buttons are at least 1215 wide and 372 high, gaps are 180. The row's own width
// is what the placing reaches, the gap behind the last button included.
namespace krx::test {

class FMessageBoxButtonRow : public MessageBoxTest {};

TEST_F(FMessageBoxButtonRow, HelpButtonStandsOneAndAHalfGapsBehindTheLastAnswer) {
  const auto form = SetUpBox({.Style = kOKCancel + 16, .HelpFile = u"help.chm"});
  // OK 180, Cancel 180 + 1395 = 1575, help 2970 + 90 = 3060; row and form 3060 + 1395 = 4455.
  EXPECT_EQ(form->keyButton[0].Bounds(), (Rect{180, 1215, 1215, 372}));
  EXPECT_EQ(form->keyButton[1].Bounds(), (Rect{1575, 1215, 1215, 372}));
  EXPECT_EQ(form->keyHelp.Bounds(), (Rect{3060, 1215, 1215, 372}));
  EXPECT_EQ(form->Width(), 4455);
  const auto right = [](const ui::Control& c) { return c.Left() + c.Width(); };
  EXPECT_EQ(form->keyButton[1].Left() - right(form->keyButton[0]), 180);
  EXPECT_EQ(form->keyHelp.Left() - right(form->keyButton[1]), 270);
}

TEST_F(FMessageBoxButtonRow, ThreeAnswersStandSideBySide) {
  const auto form = SetUpBox({.Style = kAbortRetryIgnore + 32});
  // 180, 1575, 2970; row 2970 + 1395 = 4365.
  EXPECT_EQ(form->keyButton[0].Left(), 180);
  EXPECT_EQ(form->keyButton[1].Left(), 1575);
  EXPECT_EQ(form->keyButton[2].Bounds(), (Rect{2970, 1215, 1215, 372}));
  EXPECT_EQ(form->Width(), 4365);
}

TEST_F(FMessageBoxButtonRow, ThreeAnswersAndHelpFillTheRow) {
  const auto form = SetUpBox({.Style = kYesNoCancel, .HelpFile = u"h"});
  // 180, 1575, 2970, help 4365 + 90 = 4455; row 4455 + 1395 = 5850.
  EXPECT_EQ(form->keyButton[2].Left(), 2970);
  EXPECT_EQ(form->keyHelp.Bounds(), (Rect{4455, 1215, 1215, 372}));
  EXPECT_EQ(form->idxCaption.Width(), 5850);
  EXPECT_EQ(form->keyClose.Left(), 5595);
  EXPECT_EQ(form->Width(), 5850);
}

TEST_F(FMessageBoxButtonRow, HelpAloneKeepsItsHalfGap) {
  const auto form = SetUpBox({.Style = 6, .HelpFile = u"h"});
  // x 180 + 90 = 270; row 270 + 1395 = 1665. Caption 1045, message 790.
  EXPECT_EQ(form->keyHelp.Bounds(), (Rect{270, 1215, 1215, 372}));
  EXPECT_EQ(form->Width(), 1665);
  EXPECT_EQ(form->Height(), 1767);
}

TEST_F(FMessageBoxButtonRow, HiddenAnswersTakeNoPlace) {
  const auto form = SetUpBox({.Style = 6 + kDefaultButton3, .Button1 = u"A", .Button3 = u"C"});
  EXPECT_EQ(form->keyButton[0].Left(), 180);
  EXPECT_FALSE(form->keyButton[1].Visible());
  EXPECT_EQ(form->keyButton[2].Left(), 1575);
  EXPECT_EQ(form->Width(), 2970);
}

TEST_F(FMessageBoxButtonRow, MiddleAnswerAloneTakesTheFirstPlace) {
  const auto form = SetUpBox({.Style = 6 + kDefaultButton2, .Button2 = u"B"});
  EXPECT_EQ(form->keyButton[1].Bounds(), (Rect{180, 1215, 1215, 372}));
  EXPECT_EQ(form->Width(), 1575);
}

TEST_F(FMessageBoxButtonRow, ButtonGrowsWithItsText) {
  const auto form = SetUpBox({.Button1 = String(20, u'a'), .Button2 = String(13, u'b')});
  // 20 * 80 + 180 = 1780; 13 * 80 + 180 = 1220. Left of the second 180 + 1780 + 180 = 2140; row
  // 2140 + 1220 + 180 = 3540.
  EXPECT_EQ(form->keyButton[0].Bounds(), (Rect{180, 1215, 1780, 372}));
  EXPECT_EQ(form->keyButton[1].Bounds(), (Rect{2140, 1215, 1220, 372}));
  EXPECT_EQ(form->Width(), 3540);
}

TEST_F(FMessageBoxButtonRow, TwelveCharactersStillFitTheSmallestButton) {
  // 12 * 80 + 180 = 1140 < 1215.
  const auto form = SetUpBox({.Button1 = String(12, u'a')});
  EXPECT_EQ(form->keyButton[0].Width(), 1215);
}

TEST_F(FMessageBoxButtonRow, WidthOfHelpFollowsItsText) {
  runtime.Texts[u"Help"] = String(30, u'h');
  const auto form = SetUpBox({.HelpFile = u"h"});
  // Help 30 * 80 + 180 = 2580 at 180 + 1395 + 90 = 1665; row 1665 + 2580 + 180 = 4425.
  EXPECT_EQ(form->keyHelp.Bounds(), (Rect{1665, 1215, 2580, 372}));
  EXPECT_EQ(form->Width(), 4425);
}

TEST_F(FMessageBoxButtonRow, AccessKeyMarksTakeNoRoom) {
  // "&&" shows one "&": 13 characters shown, 13 * 80 + 180 = 1220.
  const auto form = SetUpBox({.Button1 = u"&a && bcdefghij"});
  EXPECT_EQ(form->keyButton[0].Width(), 1220);
}

TEST_F(FMessageBoxButtonRow, TallestCaptionSetsTheHeightOfAllButtons) {
  const auto form = SetUpBox({.Style = kOKCancel, .HelpFile = u"h", .Button3 = u"two\r\nlines"});
  // 2 * 192 + 180 = 564; form 1215 + 564 + 180 = 1959.
  for (const ui::KRXKey& key : form->keyButton)
    EXPECT_EQ(key.Height(), 564);
  EXPECT_EQ(form->keyHelp.Height(), 564);
  EXPECT_EQ(form->Height(), 1959);
}

TEST_F(FMessageBoxButtonRow, TallestHelpTextSetsTheHeightOfAllButtons) {
  runtime.Texts[u"Help"] = u"a\nb\nc";
  const auto form = SetUpBox({.HelpFile = u"h"});
  EXPECT_EQ(form->keyButton[0].Height(), 756);  // 3 * 192 + 180
}

TEST_F(FMessageBoxButtonRow, TextOfAHiddenHelpButtonDoesNotCount) {
  runtime.Texts[u"Help"] = u"a\nb\nc";
  const auto form = SetUpBox({});
  EXPECT_EQ(form->keyButton[0].Height(), 372);
}

TEST_F(FMessageBoxButtonRow, MinimumHeightHoldsForAnswersAndHelp) {
  dialog->Settings().ButtonMinHeight = 600.5f;
  const auto form = SetUpBox({.Style = kYesNo, .HelpFile = u"h"});
  EXPECT_EQ(form->keyButton[0].Bounds(), (Rect{180, 1215, 1215, 600.5f}));
  EXPECT_EQ(form->keyButton[1].Height(), 600.5f);
  EXPECT_EQ(form->keyHelp.Height(), 600.5f);
  EXPECT_EQ(form->Height(), 1995.5f);  // 1215 + 600.5 + 180
}

TEST_F(FMessageBoxButtonRow, MinimumHeightBelowTheTextsNeedChangesNothing) {
  dialog->Settings().ButtonMinHeight = 371;
  EXPECT_EQ(SetUpBox({})->keyButton[0].Height(), 372);
}

TEST_F(FMessageBoxButtonRow, HelpIsCentredTogetherWithTheAnswers) {
  const auto form = SetUpBox({.Text = String(100, u'm'), .HelpFile = u"h"});
  // Form: 180 + 8030 + 180 = 8390. Row: 180 + 1395 + 90 + 1395 = 3060; shift 2665.
  EXPECT_EQ(form->Width(), 8390);
  EXPECT_EQ(form->keyButton[0].Left(), 2845);
  EXPECT_EQ(form->keyHelp.Left(), 4330);  // 1665 + 2665
}

}  // namespace krx::test
