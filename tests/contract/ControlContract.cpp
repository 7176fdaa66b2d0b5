

#include "ContractTest.h"

namespace krx::test {

namespace {

class ControlContract : public ContractTest {
 protected:
  void LogFocus(ui::Control& control, const char* name) {
    control.GotFocus = [this, name] { log.append("+").append(name); };
    control.LostFocus = [this, name] { log.append("-").append(name); };
  }
};

TEST_F(ControlContract, FocusEventsAreRaisedExactlyOnce) {
  LogFocus(form.txtName, "n");
  LogFocus(form.txtPassword, "p");
  LogFocus(form.keyOne, "1");
  Show([](Hand& hand) {
    hand.AwaitFocus(u"txtName");
    hand.Press(ui::kKeyTab);
    hand.AwaitFocus(u"txtPassword");
    hand.Click(u"keyOne");
    hand.AwaitFocus(u"keyOne");
    hand.AccessKey(u'n');
    hand.AwaitFocus(u"txtName");
    Leave(hand);
  });
  EXPECT_EQ(log, "+n-n+p-p+1-1+n");
}

TEST_F(ControlContract, AHandlerMayMoveTheFocusOn) {
  LogFocus(form.keyOne, "1");
  form.txtPassword.GotFocus = [&] {
    log += "+p";
    form.keyOne.SetFocus();
  };
  Show([](Hand& hand) {
    hand.AwaitFocus(u"txtName");
    hand.Press(ui::kKeyTab);
    hand.AwaitFocus(u"keyOne");
    Leave(hand);
  });
  EXPECT_EQ(log, "+p+1");
}

TEST_F(ControlContract, ChangeIsRaisedOncePerEdit) {
  form.txtName.Change = [&] { log += "n"; };
  form.txtPassword.Change = [&] { log += "p"; };
  Show([](Hand& hand) {
    hand.AwaitFocus(u"txtName");
    hand.Type(u"abc");
    hand.Press(ui::kKeyTab);
    hand.AwaitFocus(u"txtPassword");
    hand.Type(u"de");
    Leave(hand);
  });
  EXPECT_EQ(log, "nnnpp");
  EXPECT_EQ(ToUtf8(form.txtName.Text()), "abc");
  EXPECT_EQ(ToUtf8(form.txtPassword.Text().View()), "de");
}

TEST_F(ControlContract, ATextSetByTheFormRaisesChangeOnceAndOnlyWhenItDiffers) {
  form.txtName.Change = [&] { log += "n"; };
  form.txtPassword.Change = [&] { log += "p"; };
  form.keyOne.Click = [&] {
    for (int i = 0; i < 2; ++i) {
      form.txtName.Text = u"set";
      form.txtPassword.Text = Password(u"set");
    }
  };
  Show([](Hand& hand) {
    hand.Click(u"keyOne");
    Leave(hand);
  });
  EXPECT_EQ(log, "np");
}

TEST_F(ControlContract, TypingReplacesTheSelectionThatTheFormMade) {
  for (ui::EditBox* box :
       {static_cast<ui::EditBox*>(&form.txtName), static_cast<ui::EditBox*>(&form.txtPassword)}) {
    box->GotFocus = [box] {
      box->SelStart = 0;
      box->SelLength = static_cast<int>(box->TextLength());
    };
  }
  form.txtName.Text = u"old name";
  form.txtPassword.Text = Password(u"old word");
  Show([](Hand& hand) {
    hand.AwaitFocus(u"txtName");
    hand.Type(u"x");
    hand.Press(ui::kKeyTab);
    hand.AwaitFocus(u"txtPassword");
    hand.Type(u"yz");
    Leave(hand);
  });
  EXPECT_EQ(ToUtf8(form.txtName.Text()), "x");
  EXPECT_EQ(ToUtf8(form.txtPassword.Text().View()), "yz");
}

TEST_F(ControlContract, ALockedBoxTakesNoInputButTheFocus) {
  form.txtName.Text = u"fixed";
  form.txtName.Locked = true;
  Show([](Hand& hand) {
    hand.AwaitFocus(u"txtName");
    hand.Type(u"abc");
    Leave(hand);
  });
  EXPECT_EQ(ToUtf8(form.txtName.Text()), "fixed");
}

TEST_F(ControlContract, HiddenControlsAreReachedOnceTheyAreShown) {
  form.txtPassword.Visible = false;
  form.keyTwo.Visible = false;
  form.keyOne.Click = [&] {
    form.keyTwo.Visible = true;
    form.txtPassword.Visible = true;
  };
  Show([](Hand& hand) {
    hand.AwaitFocus(u"txtName");
    hand.Press(ui::kKeyTab);
    hand.AwaitFocus(u"keyOne");
    hand.Press(ui::kKeyEnter);
    hand.Press(ui::kKeyTab);
    hand.AwaitFocus(u"keyTwo");
    hand.Press(ui::kKeyTab, ui::kShift);
    hand.Press(ui::kKeyTab, ui::kShift);
    hand.AwaitFocus(u"txtPassword");
    hand.Type(u"a");
    Leave(hand);
  });
  EXPECT_EQ(ToUtf8(form.txtPassword.Text().View()), "a");
}

// What a handler does to the control that has the focus.
using Removal = void (*)(ui::Control&);

class FocusContract : public ControlContract, public testing::WithParamInterface<Removal> {
 protected:
  // Hides or disables the second box, which has the focus, from its own key.
  void ShowAndRemove(const HandScript& then) {
    form.txtPassword.KeyPress = [this](char16_t&) { GetParam()(form.txtPassword); };
    Show([&](Hand& hand) {
      hand.AwaitFocus(u"txtName");
      hand.Press(ui::kKeyTab);
      hand.AwaitFocus(u"txtPassword");
      hand.Type(u"x");
      then(hand);
      Leave(hand);
    });
  }
};

TEST_P(FocusContract, LeavesAControlThatGoesForTheFirstThatCanHaveIt) {
  LogFocus(form.txtName, "n");
  LogFocus(form.txtPassword, "p");
  ShowAndRemove([](Hand& hand) { hand.AwaitFocus(u"txtName"); });
  EXPECT_EQ(log, "+n-n+p-p+n");
}

TEST_P(FocusContract, GoesWhereTheHandlerOfTheLossLeadsIt) {
  LogFocus(form.txtName, "n");
  LogFocus(form.keyTwo, "2");
  form.txtPassword.LostFocus = [this] {
    log += "-p";
    form.keyTwo.SetFocus();
  };
  ShowAndRemove([](Hand& hand) { hand.AwaitFocus(u"keyTwo"); });
  EXPECT_EQ(log, "+n-n-p+2");
}

TEST_P(FocusContract, StaysWhereItIsWhenAnotherControlGoes) {
  LogFocus(form.txtName, "n");
  form.txtName.KeyPress = [this](char16_t&) { GetParam()(form.txtPassword); };
  Show([](Hand& hand) {
    hand.AwaitFocus(u"txtName");
    hand.Type(u"x");
    hand.Press(ui::kKeyTab);
    hand.AwaitFocus(u"keyOne");
    Leave(hand);
  });
  EXPECT_EQ(log, "+n-n");
}

INSTANTIATE_TEST_SUITE_P(Ways, FocusContract,
                         testing::Values([](ui::Control& c) { c.Visible = false; },
                                         [](ui::Control& c) { c.Enabled = false; }));

TEST_F(ControlContract, TheTabOrderMayChangeWhileTheFormIsShown) {
  form.keyOne.Click = [&] { form.keyTwo.TabIndex = 0; };
  Show([](Hand& hand) {
    hand.Click(u"keyOne");
    hand.AwaitFocus(u"keyOne");
    hand.Press(ui::kKeyTab);
    hand.AwaitFocus(u"keyClose");
    hand.Press(ui::kKeyTab);
    hand.AwaitFocus(u"keyTwo");
    hand.Press(ui::kKeyTab);
    hand.AwaitFocus(u"txtName");
    Leave(hand);
  });
}

}  // namespace

}  // namespace krx::test
