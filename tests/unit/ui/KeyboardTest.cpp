#include "ui/Keyboard.h"

#include "support/FormTest.h"

namespace krx::test {

class Keyboard : public FormTest {};

TEST_F(Keyboard, TabWalksTheTabOrderAroundItsEnd) {
  Show(form, [](Operator& op) {
    for (const StringView next : {u"keyOne", u"keyTwo", u"keyThree", u"txtName"}) {
      op.Press(ui::kKeyTab);
      EXPECT_EQ(op.Focus(), next);
    }
  });
}

TEST_F(Keyboard, ShiftTabWalksBack) {
  Show(form, [](Operator& op) {
    for (const StringView next : {u"keyThree", u"keyTwo", u"keyOne", u"txtName"}) {
      op.Press(ui::kKeyTab, ui::kShift);
      EXPECT_EQ(op.Focus(), next);
    }
  });
}

TEST_F(Keyboard, TabSkipsWhatCannotTakeTheFocus) {
  form.keyOne.Visible = false;
  form.keyTwo.Enabled = false;
  Show(form, [](Operator& op) {
    op.Press(ui::kKeyTab);
    EXPECT_EQ(op.Focus(), u"keyThree");
  });
}

TEST_F(Keyboard, TabWithoutAFocusBeginsAtTheFirstOrTheLastControl) {
  Show(form, [this](Operator& op) {
    form.FocusMovedTo(nullptr);
    op.Press(ui::kKeyTab);
    EXPECT_EQ(op.Focus(), u"txtName");
    form.FocusMovedTo(nullptr);
    op.Press(ui::kKeyTab, ui::kShift);
    EXPECT_EQ(op.Focus(), u"keyThree");
  });
}

TEST_F(Keyboard, TabOnAFormWithoutControlsDoesNothing) {
  ui::Form empty(platform, u"Empty");
  Show(empty, [](Operator& op) {
    op.Press(ui::kKeyTab);
    op.Press(ui::kKeyEnter);
    EXPECT_EQ(op.Focus(), u"");
  });
}

TEST_F(Keyboard, EscapePressesTheCancelKey) {
  int clicks = 0;
  form.keyThree.Click = [&] { ++clicks; };
  form.CancelKey = &form.keyThree;
  Show(form, [this](Operator& op) {
    op.Press(ui::kKeyEscape);
    form.keyThree.Enabled = false;
    op.Press(ui::kKeyEscape);
    form.keyThree.Enabled = true;
    form.keyThree.Visible = false;
    op.Press(ui::kKeyEscape);
  });
  EXPECT_EQ(clicks, 1);
}

TEST_F(Keyboard, EscapeWithoutACancelKeyGoesToTheFocusedControl) {
  int escapes = 0;
  form.txtName.KeyDown = [&](int& key, int) { escapes += key == ui::kKeyEscape; };
  Show(form, [](Operator& op) { op.Press(ui::kKeyEscape); });
  EXPECT_EQ(escapes, 1);
}

TEST_F(Keyboard, EnterPressesTheFocusedButtonOnce) {
  int clicks = 0;
  form.keyOne.Click = [&] { ++clicks; };
  Show(form, [this](Operator& op) {
    form.keyOne.SetFocus();
    op.Press(ui::kKeyEnter);
  });
  EXPECT_EQ(clicks, 1);
}

TEST_F(Keyboard, EnterInATextBoxIsItsOwnKeyPress) {
  std::vector<char16_t> pressed;
  form.txtName.KeyPress = [&](char16_t& character) { pressed.push_back(character); };
  Show(form, [](Operator& op) { op.Press(ui::kKeyEnter); });
  EXPECT_EQ(pressed, std::vector<char16_t>{u'\r'});
}

TEST_F(Keyboard, DisabledButtonIsNotPressedByEnterOrSpace) {
  int clicks = 0;
  form.keyOne.Click = [&] { ++clicks; };
  Show(form, [this](Operator& op) {
    form.keyOne.SetFocus();
    form.keyOne.Enabled = false;
    op.Press(ui::kKeyEnter);
    op.Press(ui::kKeySpace);
  });
  EXPECT_EQ(clicks, 0);
}

TEST_F(Keyboard, ArrowsWalkFromButtonToButtonPastTextBoxes) {
  Show(form, [this](Operator& op) {
    form.keyThree.SetFocus();
    op.Press(ui::kKeyRight);
    EXPECT_EQ(op.Focus(), u"keyOne");
    op.Press(ui::kKeyUp);
    EXPECT_EQ(op.Focus(), u"keyThree");
  });
}

TEST_F(Keyboard, ArrowsInATextBoxAreItsOwn) {
  Show(form, [](Operator& op) {
    for (const int key : {ui::kKeyLeft, ui::kKeyUp, ui::kKeyRight, ui::kKeyDown})
      op.Press(key);
    EXPECT_EQ(op.Focus(), u"txtName");
  });
}

TEST_F(Keyboard, ControlAndAltCombinationsAreNoDialogKeys) {
  int closes = 0;
  form.CancelKey = &form.keyThree;
  form.keyThree.Click = [&] { ++closes; };
  Show(form, [](Operator& op) {
    op.Press(ui::kKeyTab, ui::kControl);
    op.Press(ui::kKeyEscape, ui::kAlt);
    op.Press(ui::kKeyEscape, ui::kControl | ui::kShift);
    EXPECT_EQ(op.Focus(), u"txtName");
  });
  EXPECT_EQ(closes, 0);
}

TEST_F(Keyboard, KeyDownComesBeforeKeyUpAndMayConsumeTheKey) {
  std::string order;
  form.keyOne.KeyDown = [&](int& key, int shift) {
    order += "down " + std::to_string(key) + ' ' + std::to_string(shift);
    key = 0;
  };
  form.keyOne.KeyUp = [&](int& key, int) { order += " up " + std::to_string(key); };
  form.keyOne.Click = [&] { order += " click"; };
  Show(form, [this](Operator& op) {
    form.keyOne.SetFocus();
    op.Press(ui::kKeySpace, ui::kShift);
  });
  EXPECT_EQ(order, "down 32 1 up 32");
}

TEST_F(Keyboard, DialogKeysDoNotReachTheFocusedControl) {
  int downs = 0;
  form.keyOne.KeyDown = [&](int&, int) { ++downs; };
  Show(form, [this](Operator& op) {
    form.keyOne.SetFocus();
    op.Press(ui::kKeyEnter);
    op.Press(ui::kKeyTab);
  });
  EXPECT_EQ(downs, 0);
}

}  // namespace krx::test
