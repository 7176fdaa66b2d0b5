#include "support/DialogTest.h"
#include "ui/Keyboard.h"

namespace krx::test {

class FMessageBoxKeyboard : public MessageBoxTest {
 protected:
  std::int32_t Pressing(const BoxCall& call, int key) {
    return Show(call, [key](Operator& op) { op.Press(key); });
  }
};

TEST_F(FMessageBoxKeyboard, EnterAndSpacePressTheFocusedButton) {
  for (const int key : {ui::kKeyEnter, ui::kKeySpace}) {
    EXPECT_EQ(Pressing({.Style = 3}, key), 6);
    EXPECT_EQ(Pressing({.Style = 3 + 256}, key), 7);
    EXPECT_EQ(Pressing({.Style = 3 + 512}, key), 2);
  }
}

TEST_F(FMessageBoxKeyboard, EscapeClosesWithTheDefaultButtonsCode) {
  EXPECT_EQ(Pressing({.Style = 3 + 256}, ui::kKeyEscape), 7);
  EXPECT_EQ(Pressing({.Style = 6}, ui::kKeyEscape), 0);
}

TEST_F(FMessageBoxKeyboard, EscapeAfterWalkingStillReturnsTheDefaultButtonsCode) {
  EXPECT_EQ(Show({.Style = 4},
                 [](Operator& op) {
                   op.Press(ui::kKeyTab);
                   op.Press(ui::kKeyEscape);
                 }),
            6);
}

TEST_F(FMessageBoxKeyboard, TabWalksFromTheDefaultButtonThroughTheOthersAndHelp) {
  // The default button is moved to the front; the others keep their order.
  Show({.Style = 3 + 256, .HelpFile = u"h"}, [](Operator& op) {
    EXPECT_EQ(op.Focus(), u"keyButton(1)");
    op.Press(ui::kKeyTab);
    EXPECT_EQ(op.Focus(), u"keyButton(0)");
    op.Press(ui::kKeyTab);
    EXPECT_EQ(op.Focus(), u"keyButton(2)");
    op.Press(ui::kKeyTab);
    EXPECT_EQ(op.Focus(), u"keyHelp");
    op.Press(ui::kKeyTab);
    EXPECT_EQ(op.Focus(), u"keyButton(1)");
    op.Press(ui::kKeyTab, ui::kShift);
    EXPECT_EQ(op.Focus(), u"keyHelp");
    op.Click(u"keyClose");
  });
}

TEST_F(FMessageBoxKeyboard, TabSkipsHiddenButtons) {
  Show({.Style = 6, .Button1 = u"A", .Button3 = u"C"}, [](Operator& op) {
    op.Press(ui::kKeyTab);
    EXPECT_EQ(op.Focus(), u"keyButton(2)");
    op.Press(ui::kKeyTab);
    EXPECT_EQ(op.Focus(), u"keyButton(0)");
    op.Click(u"keyClose");
  });
}

TEST_F(FMessageBoxKeyboard, ArrowsWalkTheButtonsAroundTheEnds) {
  Show({.Style = 2}, [](Operator& op) {
    op.Press(ui::kKeyRight);
    EXPECT_EQ(op.Focus(), u"keyButton(1)");
    op.Press(ui::kKeyDown);
    EXPECT_EQ(op.Focus(), u"keyButton(2)");
    op.Press(ui::kKeyRight);
    EXPECT_EQ(op.Focus(), u"keyButton(0)");
    op.Press(ui::kKeyLeft);
    EXPECT_EQ(op.Focus(), u"keyButton(2)");
    op.Press(ui::kKeyUp);
    EXPECT_EQ(op.Focus(), u"keyButton(1)");
    op.Click(u"keyClose");
  });
}

TEST_F(FMessageBoxKeyboard, AccessKeyPressesItsButtonWithAndWithoutAlt) {
  runtime.Texts[u"No"] = u"&Nein";
  for (const bool alt : {true, false}) {
    EXPECT_EQ(Show({.Style = 4}, [alt](Operator& op) { op.AccessKey(u'N', alt); }), 7);
    EXPECT_EQ(Show({.Style = 4}, [alt](Operator& op) { op.AccessKey(u'n', alt); }), 7);
  }
}

TEST_F(FMessageBoxKeyboard, AmbiguousAccessKeyWalksThroughItsButtons) {
  runtime.Texts[u"Abort"] = u"&Abbrechen";
  runtime.Texts[u"Ignore"] = u"&Auslassen";
  EXPECT_EQ(Show({.Style = 2 + 256},
                 [](Operator& op) {
                   op.AccessKey(u'a');
                   EXPECT_EQ(op.Focus(), u"keyButton(0)");
                   op.AccessKey(u'a');
                   EXPECT_EQ(op.Focus(), u"keyButton(2)");
                   op.AccessKey(u'a');
                   EXPECT_EQ(op.Focus(), u"keyButton(0)");
                   op.Press(ui::kKeyEnter);
                 }),
            3);
}

TEST_F(FMessageBoxKeyboard, AccessKeyOfAHiddenHelpButtonDoesNothing) {
  runtime.Texts[u"Help"] = u"&Help";
  Show({}, [this](Operator& op) {
    op.AccessKey(u'h');
    EXPECT_TRUE(op.Form().Visible());
    EXPECT_THAT(platform.SentKeys, ::testing::IsEmpty());
    op.Click(u"keyClose");
  });
}

TEST_F(FMessageBoxKeyboard, HelpByKeyboardSendsItsKeysAndLeavesTheBoxOpen) {
  runtime.Texts[u"Help"] = u"&Help";
  Show({.HelpFile = u"h"}, [this](Operator& op) {
    op.AccessKey(u'h');
    op.Press(ui::kKeyEnter);
    op.Press(ui::kKeySpace);
    EXPECT_EQ(platform.SentKeys, (std::vector<String>{u"F1", u"F1", u"F1"}));
    EXPECT_TRUE(op.Form().Visible());
    op.Click(u"keyButton(0)");
  });
}

TEST_F(FMessageBoxKeyboard, OtherKeysLeaveTheBoxAsItIs) {
  Show({.Style = 4}, [](Operator& op) {
    for (const int key : std::initializer_list<int>{ui::kKeyBack, ui::kKeyHome, ui::kKeyF1, u'Q'})
      op.Press(key);
    op.Press(ui::kKeyEnter, ui::kControl);
    op.Press(ui::kKeyEscape, ui::kAlt);
    EXPECT_TRUE(op.Form().Visible());
    EXPECT_EQ(op.Focus(), u"keyButton(0)");
    op.Click(u"keyClose");
  });
}

TEST_F(FMessageBoxKeyboard, KeysWithoutAnyFocusDoNothingButEscape) {
  Show({.Style = 6}, [](Operator& op) {
    for (const int key : {ui::kKeyTab, ui::kKeyEnter, ui::kKeySpace, ui::kKeyRight})
      op.Press(key);
    EXPECT_EQ(op.Focus(), u"");
    EXPECT_TRUE(op.Form().Visible());
    op.Press(ui::kKeyEscape);
    EXPECT_FALSE(op.Form().Visible());
  });
}

}  // namespace krx::test
