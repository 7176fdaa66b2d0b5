#include "ContractTest.h"

namespace krx::test {

namespace {

using KeyboardContract = ContractTest;

TEST_F(KeyboardContract, EscPressesTheCancelKeyOnce) {
  Show(Leave);
  EXPECT_EQ(form.Cancels, 1);
}

TEST_F(KeyboardContract, TabWalksTheTabOrderBothWays) {
  Show([](Hand& hand) {
    hand.AwaitFocus(u"txtName");
    for (const auto* const next : {u"txtPassword", u"keyOne", u"keyTwo", u"keyClose", u"txtName"}) {
      hand.Press(ui::kKeyTab);
      hand.AwaitFocus(next);
    }
    hand.Press(ui::kKeyTab, ui::kShift);
    hand.AwaitFocus(u"keyClose");
    Leave(hand);
  });
}

TEST_F(KeyboardContract, EnterPressesTheFocusedButton) {
  form.keyTwo.TabIndex = 0;
  form.keyTwo.Click = [&] { log += "two"; };
  Show([](Hand& hand) {
    hand.AwaitFocus(u"keyTwo");
    hand.Press(ui::kKeyEnter);
    Leave(hand);
  });
  EXPECT_EQ(log, "two");
}

TEST_F(KeyboardContract, EnterInABoxIsACharacterForItsHandlers) {
  form.txtName.KeyPress = [&](char16_t& c) {
    if (c == ui::kKeyEnter) log += "enter";
  };
  Show([](Hand& hand) {
    hand.AwaitFocus(u"txtName");
    hand.Press(ui::kKeyEnter);
    Leave(hand);
  });
  EXPECT_EQ(log, "enter");
  EXPECT_EQ(form.txtName.Text(), u"");
}

TEST_F(KeyboardContract, AccessKeysPressButtonsAndLeadToTheFieldsOfLabels) {
  form.keyTwo.Click = [&] { log += "two"; };
  Show([](Hand& hand) {
    hand.AccessKey(u't');
    hand.AwaitFocus(u"keyTwo");
    hand.AccessKey(u'n');
    hand.AwaitFocus(u"txtName");
    Leave(hand);
  });
  EXPECT_EQ(log, "two");
}

// Keys, access keys and the mouse; the clock stands still until it is told to go on.
TEST_F(KeyboardContract, NothingAnswersAFormBeforeItsFirstDelayIsOver) {
  form.Panel.FirstAnswerDelay = 1;
  form.keyOne.TabIndex = 0;
  form.keyOne.Click = [&] { log += "one "; };
  port->StopClock();
  Show([&](Hand& hand) {
    hand.AwaitFocus(u"keyOne");
    hand.PassTime(999);
    for (const int key : {ui::kKeyEnter, ui::kKeySpace, ui::kKeyEscape})
      hand.Press(key);
    hand.AccessKey(u'o');
    hand.Click(u"keyOne");
    hand.Press(ui::kKeyTab);  // has its turn behind all of them
    hand.AwaitFocus(u"txtName");
    EXPECT_EQ(log, "");
    hand.PassTime(1);
    hand.Click(u"keyOne");
    hand.Await([&] { return log == "one "; });
    Leave(hand);
  });
  EXPECT_EQ(log, "one ");
  EXPECT_EQ(form.Cancels, 1);
}

// The order in which handlers hear of a key, of what it types and of what it does.
class KeyOrder : public ContractTest {
 protected:
  void NoteKeys(ui::Control& control) {
    control.KeyDown = [this](int& key, int) { Note("D", key); };
    control.KeyPress = [this](char16_t& character) { Note("P", character); };
    // The key that closed the form before may be released here.
    control.KeyUp = [this](int& key, int) {
      if (key != ui::kKeyEscape) Note("U", key);
    };
  }
  void Note(const char* what, int key) { log += what + std::to_string(key) + ' '; }
};

TEST_F(KeyOrder, ALetterGoesDownIsTypedChangesTheTextAndIsReleased) {
  NoteKeys(form.txtName);
  form.txtName.Change = [this] { log += "change "; };
  Show([this](Hand& hand) {
    hand.AwaitFocus(u"txtName");
    hand.Type(u"a");
    hand.Await([this] { return log.ends_with("U65 "); });
    Leave(hand);
  });
  EXPECT_EQ(log, "D65 P97 change U65 ");
}

TEST_F(KeyOrder, AKeyTakenAsItGoesDownTypesNothing) {
  NoteKeys(form.txtName);
  form.txtName.KeyDown = [this](int& key, int) { Note("D", std::exchange(key, 0)); };
  Show([this](Hand& hand) {
    hand.AwaitFocus(u"txtName");
    hand.Type(u"a");
    hand.Await([this] { return log.ends_with("U65 "); });
    Leave(hand);
  });
  EXPECT_EQ(log, "D65 U65 ");
  EXPECT_EQ(form.txtName.Text(), u"");
}

TEST_F(KeyOrder, SpacePressesAButtonOnceItIsReleased) {
  form.keyOne.TabIndex = 0;
  NoteKeys(form.keyOne);
  form.keyOne.Click = [this] { log += "click "; };
  Show([this](Hand& hand) {
    hand.AwaitFocus(u"keyOne");
    hand.Press(ui::kKeySpace);
    hand.Await([this] { return log.ends_with("click "); });
    Leave(hand);
  });
  EXPECT_EQ(log, "D32 P32 U32 click ");
}

TEST_F(KeyboardContract, TheFocusMovesOnFromAControlThatIsDisabledOrHidden) {
  form.txtName.LostFocus = [&] { log += "lost name "; };
  form.txtPassword.LostFocus = [&] { log += "lost password "; };
  form.txtPassword.KeyPress = [&](char16_t&) { form.txtPassword.Visible = false; };
  form.txtName.KeyPress = [&](char16_t&) { form.txtName.Enabled = false; };
  Show([&](Hand& hand) {
    hand.AwaitFocus(u"txtName");
    hand.Type(u"a");
    hand.AwaitFocus(u"txtPassword");
    hand.Type(u"b");
    hand.AwaitFocus(u"keyOne");
    Leave(hand);
  });
  EXPECT_EQ(log, "lost name lost password ");
}

TEST_F(KeyboardContract, ADisabledButtonIsNeitherPressedNorReached) {
  form.keyOne.Enabled = false;
  form.keyOne.Click = [&] { log += "one"; };
  Show([](Hand& hand) {
    hand.AccessKey(u'o');
    hand.Press(ui::kKeyTab);
    hand.Press(ui::kKeyTab);
    hand.AwaitFocus(u"keyTwo");
    Leave(hand);
  });
  EXPECT_EQ(log, "");
}

}  // namespace

}  // namespace krx::test
