#include "support/DialogTest.h"

namespace krx::test {

namespace {

// Shown buttons as "caption=tag", left to right.
std::string ShownButtons(const msgbox::FMessageBox& form) {
  std::string all;
  for (const ui::KRXKey& key : form.keyButton) {
    if (!key.Visible()) continue;
    if (!all.empty()) all += ' ';
    all += ToUtf8(key.Caption()) + "=" + ToUtf8(key.Tag);
  }
  return all;
}

}  // namespace

class FMessageBoxButtons : public MessageBoxTest {
 protected:
  std::string Buttons(const BoxCall& call) { return ShownButtons(*SetUpBox(call)); }
};

// Callers write the numbers, so a name that stood for another one would change what they get.
TEST_F(FMessageBoxButtons, TheNumbersOfStylesAndResultsAreThoseOfTheField) {
  EXPECT_THAT(
      (std::vector{kOKOnly, kOKCancel, kAbortRetryIgnore, kYesNoCancel, kYesNo, kRetryCancel}),
      ::testing::ElementsAre(0, 1, 2, 3, 4, 5));
  EXPECT_THAT((std::vector{kCritical, kQuestion, kExclamation, kInformation}),
              ::testing::ElementsAre(16, 32, 48, 64));
  EXPECT_THAT((std::vector{kDefaultButton2, kDefaultButton3, kDefaultButton4}),
              ::testing::ElementsAre(256, 512, 768));
  EXPECT_THAT(
      (std::vector{service::kOK, service::kCancel, service::kAbort, service::kRetry,
                   service::kIgnore, service::kYes, service::kNo, service::kFirstFreeButton}),
      ::testing::ElementsAre(1, 2, 3, 4, 5, 6, 7, 11));
  EXPECT_THAT(
      (std::vector{ui::kStopIcon, ui::kQuestionIcon, ui::kExclamationIcon, ui::kInformationIcon}),
      ::testing::ElementsAre(32513, 32514, 32515, 32516));
}

TEST_F(FMessageBoxButtons, EverySetShowsItsTextsAndResultCodes) {
  EXPECT_EQ(Buttons({.Style = kOKOnly}), "OK=1");
  EXPECT_EQ(Buttons({.Style = kOKCancel}), "OK=1 Cancel=2");
  EXPECT_EQ(Buttons({.Style = kAbortRetryIgnore}), "Abort=3 Retry=4 Ignore=5");
  EXPECT_EQ(Buttons({.Style = kYesNoCancel}), "Yes=6 No=7 Cancel=2");
  EXPECT_EQ(Buttons({.Style = kYesNo}), "Yes=6 No=7");
  EXPECT_EQ(Buttons({.Style = kRetryCancel}), "Retry=4 Cancel&=2");
}

TEST_F(FMessageBoxButtons, SetsFromSixToFifteenHaveNoStandardButtons) {
  for (std::int32_t set = 6; set <= 15; ++set)
    EXPECT_EQ(Buttons({.Style = set}), "") << set;
}

TEST_F(FMessageBoxButtons, RetryCancelLooksItsCancelTextUpUnderAKeyOfItsOwn) {
  runtime.Texts[u"Cancel"] = u"Cancel of the other sets";
  runtime.Texts[u"Cancel&"] = u"Cancel of Retry";
  EXPECT_EQ(Buttons({.Style = kRetryCancel}), "Retry=4 Cancel of Retry=2");
  EXPECT_EQ(Buttons({.Style = kOKCancel}), "OK=1 Cancel of the other sets=2");
  EXPECT_EQ(Buttons({.Style = kYesNoCancel}), "Yes=6 No=7 Cancel of the other sets=2");
}

TEST_F(FMessageBoxButtons, KeepsAFreeCaptionOnTheSingleOkButton) {
  EXPECT_EQ(Buttons({.Style = kOKOnly, .Button1 = u"Start"}), "Start=11");
  EXPECT_THAT(log.EntriesOf("GetText OK"), ::testing::IsEmpty());
}

TEST_F(FMessageBoxButtons, SingleOkStandsBesideTheOtherFreeButtons) {
  EXPECT_EQ(Buttons({.Style = kOKOnly, .Button2 = u"B", .Button3 = u"C"}), "OK=1 B=12 C=13");
}

TEST_F(FMessageBoxButtons, OtherSetsOverwriteTheFreeButtonsThatTheyUse) {
  const auto with = [this](std::int32_t style) {
    return Buttons({.Style = style, .Button1 = u"A", .Button2 = u"B", .Button3 = u"C"});
  };
  EXPECT_EQ(with(0), "A=11 B=12 C=13");
  EXPECT_EQ(with(1), "OK=1 Cancel=2 C=13");
  EXPECT_EQ(with(2), "Abort=3 Retry=4 Ignore=5");
  EXPECT_EQ(with(3), "Yes=6 No=7 Cancel=2");
  EXPECT_EQ(with(4), "Yes=6 No=7 C=13");
  EXPECT_EQ(with(5), "Retry=4 Cancel&=2 C=13");
  EXPECT_EQ(with(6), "A=11 B=12 C=13");
  EXPECT_EQ(with(15), "A=11 B=12 C=13");
}

TEST_F(FMessageBoxButtons, FreeThirdButtonJoinsYesAndNo) {
  EXPECT_EQ(Buttons({.Style = kYesNo, .Button3 = u"Later"}), "Yes=6 No=7 Later=13");
}

TEST_F(FMessageBoxButtons, EachShownButtonReturnsItsCode) {
  const auto clicked = [this](std::int32_t style, StringView key) {
    return Show({.Style = style, .Button3 = u"C"}, [&](Operator& op) { op.Click(key); });
  };
  EXPECT_EQ(clicked(2, u"keyButton(0)"), 3);
  EXPECT_EQ(clicked(2, u"keyButton(1)"), 4);
  EXPECT_EQ(clicked(2, u"keyButton(2)"), 5);
  EXPECT_EQ(clicked(4, u"keyButton(0)"), 6);
  EXPECT_EQ(clicked(4, u"keyButton(1)"), 7);
  EXPECT_EQ(clicked(4, u"keyButton(2)"), 13);
  EXPECT_EQ(clicked(0, u"keyButton(0)"), 1);
  EXPECT_EQ(clicked(5, u"keyButton(1)"), 2);
}

TEST_F(FMessageBoxButtons, FreeButtonsReturnElevenTwelveAndThirteen) {
  const BoxCall call{.Button1 = u"A", .Button2 = u"B", .Button3 = u"C"};
  EXPECT_EQ(Show(call, [](Operator& op) { op.Click(u"keyButton(0)"); }), 11);
  EXPECT_EQ(Show(call, [](Operator& op) { op.Click(u"keyButton(1)"); }), 12);
  EXPECT_EQ(Show(call, [](Operator& op) { op.Click(u"keyButton(2)"); }), 13);
}

TEST_F(FMessageBoxButtons, ButtonWhoseTextIsEmptyIsHidden) {
  runtime.Texts[u"No"] = u"";
  EXPECT_EQ(Buttons({.Style = kYesNo}), "Yes=6");
}

TEST_F(FMessageBoxButtons, HelpButtonIsShownExactlyWithAHelpFile) {
  constexpr std::int32_t kHelpBit = 16384;
  EXPECT_FALSE(SetUpBox({})->keyHelp.Visible());
  EXPECT_FALSE(SetUpBox({.Style = kHelpBit})->keyHelp.Visible());
  EXPECT_TRUE(SetUpBox({.HelpFile = u"h"})->keyHelp.Visible());
  EXPECT_TRUE(SetUpBox({.Style = kHelpBit, .HelpFile = u"h"})->keyHelp.Visible());
}

TEST_F(FMessageBoxButtons, HelpCaptionIsClearedWithoutAHelpFile) {
  runtime.Texts[u"Help"] = u"Hint";
  EXPECT_EQ(SetUpBox({})->keyHelp.Caption(), u"");
  EXPECT_EQ(SetUpBox({.HelpFile = u"h"})->keyHelp.Caption(), u"Hint");
  EXPECT_EQ(SetUpBox({.HelpFile = u"h"})->keyHelp.Tag, u"");
}

TEST_F(FMessageBoxButtons, HelpTextIsLookedUpInEitherCase) {
  SetUpBox({});
  EXPECT_THAT(log.EntriesOf("GetText Help"), ::testing::ElementsAre("GetText Help -105"));
}

TEST_F(FMessageBoxButtons, EmptyFreeTextsChangeNothing) {
  msgbox::FMessageBox form(apartment);
  form.SetTextsEx(u"", u"B", u"", 0);
  EXPECT_EQ(form.keyButton[0].Caption(), u"");
  EXPECT_EQ(form.keyButton[0].Tag, u"");
  EXPECT_EQ(form.keyButton[1].Caption(), u"B");
  EXPECT_EQ(form.keyButton[1].Tag, u"12");
  EXPECT_EQ(form.keyButton[2].Tag, u"");
}

TEST_F(FMessageBoxButtons, FreeTextsGivenAfterTheStandardTextsComeTooLate) {
  // The set-up order matters: the single OK gives way only to a caption that is there before.
  msgbox::FMessageBox form(apartment);
  form.SetTexts(u"m", 0, u"t", u"", 0);
  EXPECT_EQ(form.keyButton[0].Caption(), u"OK");
  form.SetTextsEx(u"A", u"", u"", 0);
  EXPECT_EQ(form.Result, 1);
}

}  // namespace krx::test
