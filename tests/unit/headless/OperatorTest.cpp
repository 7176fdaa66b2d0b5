#include <functional>
#include <stdexcept>

#include "support/FormTest.h"

namespace krx::test {

class OperatorActs : public FormTest {
 protected:
  using Act = std::function<void(Operator&)>;
  // A real operator could not do it.
  void ExpectImpossible(const Act& act) {
    Show(form, [&](Operator& op) { EXPECT_THROW(act(op), std::logic_error); });
  }
  void ExpectImpossibleOnceClosed(const Act& act) {
    Show(form, [&](Operator& op) {
      op.Form().Unload();
      EXPECT_THROW(act(op), std::logic_error);
    });
  }
};

TEST_F(OperatorActs, ReachNoControlThatIsNotThere) {
  ExpectImpossible([](Operator& op) { op.Click(u"keyNone"); });
  ExpectImpossible([](Operator& op) { op.Click(u"tmrSample"); });
}

TEST_F(OperatorActs, ReachNoHiddenOrDisabledControl) {
  form.keyOne.Visible = false;
  form.keyTwo.Enabled = false;
  ExpectImpossible([](Operator& op) { op.Click(u"keyOne"); });
  ExpectImpossible([](Operator& op) { op.Click(u"keyTwo"); });
  ExpectImpossible([](Operator& op) { op.MouseDown(u"keyOne", 1, 0, 0); });
}

TEST_F(OperatorActs, ReachNothingOnAClosedForm) {
  ExpectImpossibleOnceClosed([](Operator& op) { op.Click(u"keyOne"); });
  ExpectImpossibleOnceClosed([](Operator& op) { op.Press(ui::kKeyEnter); });
  ExpectImpossibleOnceClosed([](Operator& op) { op.Type(u"a"); });
  ExpectImpossibleOnceClosed([](Operator& op) { op.AccessKey(u'a'); });
  ExpectImpossibleOnceClosed([](Operator& op) { op.MouseDown(u"keyOne", 1, 0, 0); });
  ExpectImpossibleOnceClosed([](Operator& op) { op.MouseMove(u"keyOne", 1, 0, 0); });
  ExpectImpossibleOnceClosed([](Operator& op) { op.Uncover(); });
}

TEST_F(OperatorActs, TypeOnlyWhereTextIsTaken) {
  ExpectImpossible([](Operator& op) {
    op.Press(ui::kKeyTab);
    op.Type(u"a");
  });
}

TEST_F(OperatorActs, TypingReplacesTheSelectionAndMovesOn) {
  form.txtName.Text = u"abcdef";
  form.txtName.SelStart = 1;
  form.txtName.SelLength = 3;
  Show(form, [this](Operator& op) {
    op.Type(u"XY");
    EXPECT_EQ(form.txtName.Text(), u"aXYef");
    EXPECT_EQ(form.txtName.SelStart(), 3);
    EXPECT_EQ(form.txtName.SelLength(), 0);
  });
}

TEST_F(OperatorActs, TypingRaisesKeyPressAndChangeForEveryCharacter) {
  std::string order;
  form.txtName.KeyPress = [&](char16_t&) { order += 'k'; };
  form.txtName.Change = [&] { order += 'c'; };
  Show(form, [](Operator& op) { op.Type(u"ab"); });
  EXPECT_EQ(order, "kckc");
}

TEST_F(OperatorActs, ConsumedAndChangedCharactersAreTypedAsTheHandlerLeftThem) {
  form.txtName.KeyPress = [](char16_t& character) {
    if (character == u'x') character = 0;
    if (character == u'a') character = u'A';
  };
  Show(form, [this](Operator& op) {
    op.Type(u"xax");
    EXPECT_EQ(form.txtName.Text(), u"A");
  });
}

TEST_F(OperatorActs, LockedTextBoxKeepsItsText) {
  form.txtName.Text = u"a";
  form.txtName.Locked = true;
  Show(form, [this](Operator& op) {
    op.Type(u"b");
    EXPECT_EQ(form.txtName.Text(), u"a");
  });
}

TEST_F(OperatorActs, ClickFocusesAndPressesTheButton) {
  int clicks = 0;
  form.keyTwo.Click = [&] { ++clicks; };
  Show(form, [](Operator& op) {
    op.Click(u"keyTwo");
    EXPECT_EQ(op.Focus(), u"keyTwo");
  });
  EXPECT_EQ(clicks, 1);
}

TEST_F(OperatorActs, ClickOnAKeyOutsideTheTabOrderLeavesTheFocus) {
  form.keyTwo.TabStop = false;
  Show(form, [](Operator& op) {
    op.Click(u"keyTwo");
    EXPECT_EQ(op.Focus(), u"txtName");
  });
}

TEST_F(OperatorActs, MouseEventsCarryButtonAndPlace) {
  std::string seen;
  const auto note = [&seen](const char* what) {
    return [&seen, what](int button, int shift, Twips x, Twips y) {
      seen += what + std::to_string(button) + ' ' + std::to_string(shift) + ' ' +
              std::to_string(static_cast<int>(x)) + ' ' + std::to_string(static_cast<int>(y)) + ';';
    };
  };
  form.keyOne.MouseDown = note("down ");
  form.keyOne.MouseMove = note("move ");
  Show(form, [](Operator& op) {
    op.MouseDown(u"keyOne", ui::kRightButton, 3, 4);
    op.MouseMove(u"keyOne", ui::kLeftButton, 5, 6);
  });
  EXPECT_EQ(seen, "down 2 0 3 4;move 1 0 5 6;");
}

TEST_F(OperatorActs, ErrorOfTheScriptEndsTheShowing) {
  platform.Expect(u"Sample", [](Operator& op) { op.Click(u"keyNone"); });
  EXPECT_THROW(form.ShowModal(), std::logic_error);
  EXPECT_FALSE(form.Visible());
}

TEST_F(OperatorActs, FormClosedByItsFirstFocusIsNotHandedOver) {
  form.txtName.GotFocus = [this] { form.Unload(); };
  platform.Expect(u"Sample", [](Operator&) { FAIL() << "there is nothing on the screen"; });
  form.ShowModal();
}

}  // namespace krx::test
