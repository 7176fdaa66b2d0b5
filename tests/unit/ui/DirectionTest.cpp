#include "ui/Direction.h"

#include "support/FormTest.h"
#include "ui/RowList.h"

namespace krx::test {

class Direction : public FormTest {};

TEST_F(Direction, IsAskedOnceHoweverOftenTheFormIsShown) {
  int asked = 0;
  form.AsksRightToLeft = [&] { return ++asked > 0; };
  for (int i = 0; i < 3; ++i)
    Show(form, [](Operator& op) { EXPECT_TRUE(op.Form().RightToLeft()); });
  EXPECT_EQ(asked, 1);
}

TEST_F(Direction, IsLeftToRightWhereNobodyKnows) {
  Show(form, [](Operator& op) { EXPECT_FALSE(op.Form().RightToLeft()); });
}

TEST_F(Direction, OfAFormTurnsTheArrowsBetweenItsButtons) {
  form.AsksRightToLeft = [] { return true; };
  form.keyOne.TabIndex = 0;
  Show(form, [](Operator& op) {
    op.Press(ui::kKeyLeft);
    EXPECT_EQ(op.Focus(), u"keyTwo");
    op.Press(ui::kKeyRight);
    EXPECT_EQ(op.Focus(), u"keyOne");
    op.Press(ui::kKeyDown);
    EXPECT_EQ(op.Focus(), u"keyTwo");
    op.Press(ui::kKeyUp);
    EXPECT_EQ(op.Focus(), u"keyOne");
  });
}

TEST_F(Direction, OfAFormTurnsTheArrowsOfItsListsAndOfNothingElse) {
  ui::ListView list(form, u"lvw");
  std::string log;
  const auto note = [&](int& key, int) { log += std::to_string(key) + ' '; };
  list.KeyDown = note;
  form.txtName.KeyDown = note;
  form.AsksRightToLeft = [] { return true; };
  Show(form, [&](Operator& op) {
    op.Press(ui::kKeyLeft);
    list.SetFocus();
    op.Press(ui::kKeyLeft);
    op.Press(ui::kKeyRight);
    op.Press(ui::kKeyDown);
  });
  EXPECT_EQ(log, "37 39 37 40 ");
}

TEST(InsideRightToLeft, PathsNamesNumbersAndWordsOfTheOtherDirectionKeepTheirOrder) {
  for (const StringView text :
       {u"C:\\", u"-1", u"Report (1).txt", u"(a)", u"\u00C4ndern", u"\u0416"}) {
    const String mark(1, u'\u200E');
    EXPECT_EQ(ui::InsideRightToLeft(text), mark + String(text) + mark) << ToUtf8(text);
  }
}

TEST(InsideRightToLeft, WhatIsWrittenSoOrHasNoDirectionStaysAsItIs) {
  for (const StringView text :
       {u"", u" +", u"..", u"\u05E9\u05DC\u05D5\u05DD.txt", u"1 \u0645\u0644\u0641 a", u"\uFE91"})
    EXPECT_EQ(ui::InsideRightToLeft(text), text) << ToUtf8(text);
}

class CapsLock : public FormTest {
 protected:
  ui::PasswordBox txtPassword{form, u"txtPassword"};
};

TEST_F(CapsLock, IsToldWhileAPasswordIsEntered) {
  form.CapsLockWords = [] { return String(u"Caps Lock is on"); };
  EXPECT_EQ(ui::CapsLockHint(txtPassword, true), u"Caps Lock is on");
  EXPECT_EQ(ui::CapsLockHint(txtPassword, false), u"");
  EXPECT_EQ(ui::CapsLockHint(form.txtName, true), u"");
  txtPassword.Enabled = false;
  EXPECT_EQ(ui::CapsLockHint(txtPassword, true), u"");
}

TEST_F(CapsLock, IsNotToldWithoutWords) {
  EXPECT_EQ(ui::CapsLockHint(txtPassword, true), u"");
}

}  // namespace krx::test
