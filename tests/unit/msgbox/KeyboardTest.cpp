#include "support/DialogTest.h"
#include "support/Walk.h"
#include "ui/Keyboard.h"

namespace krx::test {

struct Ending {
  const char* Name;
  std::int32_t Style;
  std::vector<int> Keys;
  std::int32_t Result;
};

// Keys that end a box, and the code that it returns then.
class FMessageBoxEnd : public MessageBoxTest, public ::testing::WithParamInterface<Ending> {};

TEST_P(FMessageBoxEnd, ReturnsItsCode) {
  const Ending& ending = GetParam();
  EXPECT_EQ(Show({.Style = ending.Style},
                 [&](Operator& op) {
                   for (const int key : ending.Keys) {
                     EXPECT_TRUE(op.Form().Visible());
                     op.Press(key);
                   }
                   EXPECT_FALSE(op.Form().Visible());
                 }),
            ending.Result);
}

const Ending kEndings[] = {
    {"EnterPressesTheFirstButton", 3, {ui::kKeyEnter}, 6},
    {"EnterPressesTheSecondButtonWhereThatHasTheFocus",
     kYesNoCancel + kDefaultButton2,
     {ui::kKeyEnter},
     7},
    {"EnterPressesTheThirdButtonWhereThatHasTheFocus",
     kYesNoCancel + kDefaultButton3,
     {ui::kKeyEnter},
     2},
    {"SpacePressesTheFirstButton", 3, {ui::kKeySpace}, 6},
    {"SpacePressesTheSecondButtonWhereThatHasTheFocus",
     kYesNoCancel + kDefaultButton2,
     {ui::kKeySpace},
     7},
    {"SpacePressesTheThirdButtonWhereThatHasTheFocus",
     kYesNoCancel + kDefaultButton3,
     {ui::kKeySpace},
     2},
    {"EscapeReturnsTheDefaultButtonsCode", kYesNoCancel + kDefaultButton2, {ui::kKeyEscape}, 7},
    {"EscapeReturnsZeroWithoutAButton", 6, {ui::kKeyEscape}, 0},
    {"EscapeAfterWalkingStillReturnsTheDefaultButtonsCode", 4, {ui::kKeyTab, ui::kKeyEscape}, 6},
    {"OnlyEscapeEndsABoxWithoutAnyFocus",
     6,
     {ui::kKeyTab, ui::kKeyEnter, ui::kKeySpace, ui::kKeyRight, ui::kKeyEscape},
     0},
};
INSTANTIATE_TEST_SUITE_P(Keys, FMessageBoxEnd, ::testing::ValuesIn(kEndings), NameOfRow<Ending>);

constexpr StringView kFirst = u"keyButton(0)";
constexpr StringView kSecond = u"keyButton(1)";
constexpr StringView kThird = u"keyButton(2)";
constexpr StringView kHelp = u"keyHelp";

struct Round {
  const char* Name;
  BoxCall Call;
  StringView Start;
  std::vector<Stroke> Strokes;
};

// Keys that leave a box open, and where they lead.
class FMessageBoxFocus : public MessageBoxTest, public ::testing::WithParamInterface<Round> {};

TEST_P(FMessageBoxFocus, GoesWhereTheKeysLead) {
  Show(GetParam().Call, [](Operator& op) {
    EXPECT_EQ(op.Focus(), GetParam().Start);
    Walk(op, GetParam().Strokes);
    EXPECT_TRUE(op.Form().Visible());
    op.Click(u"keyClose");
  });
}

const Round kRounds[] = {
    // The default button is moved to the front; the others keep their order.
    {"TabWalksFromTheDefaultButtonThroughTheOthersAndHelp",
     {.Style = kYesNoCancel + kDefaultButton2, .HelpFile = u"h"},
     kSecond,
     {{ui::kKeyTab, kFirst},
      {ui::kKeyTab, kThird},
      {ui::kKeyTab, kHelp},
      {ui::kKeyTab, kSecond},
      {ui::kKeyTab, kHelp, ui::kShift}}},
    {"TabSkipsHiddenButtons",
     {.Style = 6, .Button1 = u"A", .Button3 = u"C"},
     kFirst,
     {{ui::kKeyTab, kThird}, {ui::kKeyTab, kFirst}}},
    {"ArrowsWalkTheButtonsAroundTheEnds",
     {.Style = kAbortRetryIgnore},
     kFirst,
     {{ui::kKeyRight, kSecond},
      {ui::kKeyDown, kThird},
      {ui::kKeyRight, kFirst},
      {ui::kKeyLeft, kThird},
      {ui::kKeyUp, kSecond}}},
    {"OtherKeysLeaveTheBoxAsItIs",
     {.Style = kYesNo},
     kFirst,
     {{ui::kKeyBack, kFirst},
      {ui::kKeyHome, kFirst},
      {ui::kKeyF1, kFirst},
      {u'Q', kFirst},
      {ui::kKeyEnter, kFirst, ui::kControl},
      {ui::kKeyEscape, kFirst, ui::kAlt}}},
    {"KeysWithoutAnyFocusGiveNone",
     {.Style = 6},
     u"",
     {{ui::kKeyTab, u""}, {ui::kKeyEnter, u""}, {ui::kKeySpace, u""}, {ui::kKeyRight, u""}}},
};
INSTANTIATE_TEST_SUITE_P(Keys, FMessageBoxFocus, ::testing::ValuesIn(kRounds), NameOfRow<Round>);

class FMessageBoxKeyboard : public MessageBoxTest {};

TEST_F(FMessageBoxKeyboard, AccessKeyPressesItsButtonWithAndWithoutAlt) {
  runtime.Texts[u"No"] = u"&Never";
  for (const bool alt : {true, false}) {
    EXPECT_EQ(Show({.Style = kYesNo}, [alt](Operator& op) { op.AccessKey(u'N', alt); }), 7);
    EXPECT_EQ(Show({.Style = kYesNo}, [alt](Operator& op) { op.AccessKey(u'n', alt); }), 7);
  }
}

TEST_F(FMessageBoxKeyboard, AmbiguousAccessKeyWalksThroughItsButtons) {
  runtime.Texts[u"Abort"] = u"&Aus";
  runtime.Texts[u"Ignore"] = u"&An";
  EXPECT_EQ(Show({.Style = kAbortRetryIgnore + kDefaultButton2},
                 [](Operator& op) {
                   op.AccessKey(u'a');
                   EXPECT_EQ(op.Focus(), kFirst);
                   op.AccessKey(u'a');
                   EXPECT_EQ(op.Focus(), kThird);
                   op.AccessKey(u'a');
                   EXPECT_EQ(op.Focus(), kFirst);
                   op.Press(ui::kKeyEnter);
                 }),
            3);
}

TEST_F(FMessageBoxKeyboard, AccessKeyOfAHiddenHelpButtonDoesNothing) {
  runtime.Texts[u"Help"] = u"&Hint";
  Show({}, [this](Operator& op) {
    op.AccessKey(u'h');
    EXPECT_TRUE(op.Form().Visible());
    EXPECT_THAT(platform.SentKeys, ::testing::IsEmpty());
    op.Click(u"keyClose");
  });
}

TEST_F(FMessageBoxKeyboard, HelpByKeyboardSendsItsKeysAndLeavesTheBoxOpen) {
  runtime.Texts[u"Help"] = u"&Hint";
  Show({.HelpFile = u"h"}, [this](Operator& op) {
    op.AccessKey(u'h');
    op.Press(ui::kKeyEnter);
    op.Press(ui::kKeySpace);
    EXPECT_EQ(platform.SentKeys, (std::vector<String>{u"F1", u"F1", u"F1"}));
    EXPECT_TRUE(op.Form().Visible());
    op.Click(u"keyButton(0)");
  });
}

}  // namespace krx::test
