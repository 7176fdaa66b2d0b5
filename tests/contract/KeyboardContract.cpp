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
