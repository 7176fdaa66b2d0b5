#include "support/FormTest.h"

namespace krx::test {

// A form with the input controls.
struct InputForm : ui::Form {
  explicit InputForm(ui::Platform& platform) : Form(platform, u"Inputs") {}
  ui::TextBox txtName{*this, u"txtName"};
  ui::PasswordBox txtPassword{*this, u"txtPassword"};
  ui::KRXComboBox cboName{*this, u"cboName"};
};

class Inputs : public FormTest {
 protected:
  Inputs() {
    inputs.txtName.Change = [this] { ++changes; };
    inputs.txtPassword.Change = [this] { ++changes; };
    inputs.cboName.Change = [this] { ++changes; };
    inputs.cboName.SelectionChanged = [this] { ++selections; };
  }

  InputForm inputs{platform};
  int changes = 0;
  int selections = 0;
};

TEST_F(Inputs, OperatorsEditReplacesAPartAndRaisesOneChange) {
  inputs.txtName.Text = u"abcdef";
  changes = 0;
  inputs.txtName.Edited(2, 2, u"XYZ");
  EXPECT_EQ(inputs.txtName.Text(), u"abXYZef");
  EXPECT_EQ(changes, 1);
  inputs.txtName.Edited(7, 5, u"!");
  EXPECT_EQ(inputs.txtName.Text(), u"abXYZef!");
  inputs.txtName.Edited(0, 0, u"");
  EXPECT_EQ(changes, 2) << "nothing was replaced";
}

TEST_F(Inputs, PasswordIsEditedTheSameWay) {
  inputs.txtPassword.Edited(0, 0, u"abcdef");
  inputs.txtPassword.Edited(2, 2, u"XYZ");
  EXPECT_EQ(inputs.txtPassword.Text().View(), u"abXYZef");
  EXPECT_EQ(inputs.txtPassword.TextLength(), 7u);
  EXPECT_EQ(changes, 2);
}

TEST_F(Inputs, PasswordIsDisplayedAsStarsOnly) {
  inputs.txtPassword.Text = Password(u"secret");
  EXPECT_EQ(inputs.txtPassword.DisplayedText(), u"******");
  EXPECT_EQ(inputs.txtPassword.PasswordChar, u'*');
  EXPECT_EQ(changes, 1);
}

TEST_F(Inputs, HeightNeverFallsBelowOneLine) {
  // 8.25 points: 8.25 * 24 + 90 = 288.
  for (ui::Control* const box :
       {static_cast<ui::Control*>(&inputs.txtName), static_cast<ui::Control*>(&inputs.txtPassword),
        static_cast<ui::Control*>(&inputs.cboName)}) {
    box->Height = 1000;
    EXPECT_EQ(box->Height(), 1000);
    box->Height = 0;
    EXPECT_EQ(box->Height(), 288);
    box->Font = Font{.Name = u"x", .Size = 20};
    EXPECT_EQ(box->Height(), 20 * 24 + 90);
  }
}

TEST_F(Inputs, ListKeepsItsOrderAndSelectsNothing) {
  for (const StringView name : {u"b", u"a", u"c"})
    inputs.cboName.AddItem(String(name), ui::KRXComboBox::kAtEnd);
  inputs.cboName.AddItem(u"first", 0);
  inputs.cboName.AddItem(u"last", 99);
  EXPECT_THAT(inputs.cboName.Items(), ::testing::ElementsAre(u"first", u"b", u"a", u"c", u"last"));
  EXPECT_EQ(inputs.cboName.ListIndex(), -1);
  EXPECT_EQ(inputs.cboName.Text(), u"");
  EXPECT_EQ(changes + selections, 0);
}

TEST_F(Inputs, SelectingAnEntryTakesItsText) {
  inputs.cboName.AddItem(u"a", -1);
  inputs.cboName.AddItem(u"b", -1);
  inputs.cboName.Select(1);
  EXPECT_EQ(inputs.cboName.Text(), u"b");
  EXPECT_EQ(inputs.cboName.ListIndex(), 1);
  EXPECT_EQ(changes, 1);
  EXPECT_EQ(selections, 1);
  inputs.cboName.Select(1);
  EXPECT_EQ(changes, 1) << "the text is the same";
  EXPECT_EQ(selections, 2);
  inputs.cboName.AddItem(u"before", 0);
  EXPECT_EQ(inputs.cboName.ListIndex(), 2) << "the selection stays with its entry";
}

TEST_F(Inputs, TextOfItsOwnDeselectsTheEntry) {
  inputs.cboName.AddItem(u"a", -1);
  inputs.cboName.Select(0);
  inputs.cboName.Text = u"other";
  EXPECT_EQ(inputs.cboName.ListIndex(), -1);
  EXPECT_EQ(inputs.cboName.Text(), u"other");
  EXPECT_EQ(selections, 1);
}

TEST_F(Inputs, EntryThatDoesNotExistIsRefused) {
  inputs.cboName.AddItem(u"a", -1);
  for (const int index : {-1, 1, 1000})
    EXPECT_EQ(StatusOf([&] { inputs.cboName.Select(index); }), 0x800A0000u + 381);
  EXPECT_EQ(inputs.cboName.Text(), u"");
}

}  // namespace krx::test
