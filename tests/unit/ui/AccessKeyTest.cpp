#include "support/FormTest.h"

namespace krx::test {

class AccessKey : public FormTest {
 protected:
  AccessKey() {
    form.keyOne.Caption = u"&One";
    form.keyTwo.Caption = u"&Two";
    form.keyThree.Caption = u"Three";
    form.lblName.Caption = u"&Name";
    for (ui::KRXKey* const key : {&form.keyOne, &form.keyTwo, &form.keyThree})
      key->Click = [this, key] { clicked += ToUtf8(key->Name()) + ' '; };
  }

  std::string clicked;
};

TEST_F(AccessKey, PressesItsButtonAndFocusesIt) {
  Show(form, [this](Operator& op) {
    op.AccessKey(u'T');
    EXPECT_EQ(op.Focus(), u"keyTwo");
    EXPECT_EQ(clicked, "keyTwo ");
  });
}

TEST_F(AccessKey, OfALabelLeadsToTheNextFieldOfTheTabOrder) {
  Show(form, [this](Operator& op) {
    form.keyTwo.SetFocus();
    op.AccessKey(u'n');
    EXPECT_EQ(op.Focus(), u"txtName");
    EXPECT_EQ(clicked, "");
  });
}

TEST_F(AccessKey, SharedByTwoButtonsWalksBetweenThemWithoutPressing) {
  form.keyThree.Caption = u"&Third";
  Show(form, [this](Operator& op) {
    op.AccessKey(u't');
    EXPECT_EQ(op.Focus(), u"keyTwo");
    op.AccessKey(u't');
    EXPECT_EQ(op.Focus(), u"keyThree");
    op.AccessKey(u't');
    EXPECT_EQ(op.Focus(), u"keyTwo");
    EXPECT_EQ(clicked, "");
  });
}

TEST_F(AccessKey, IsUniqueAgainOnceItsRivalIsHiddenOrDisabled) {
  form.keyThree.Caption = u"&Third";
  form.keyThree.Visible = false;
  Show(form, [this](Operator& op) {
    op.AccessKey(u't');
    EXPECT_EQ(clicked, "keyTwo ");
  });
}

TEST_F(AccessKey, OfAHiddenOrDisabledButtonDoesNothing) {
  form.keyOne.Visible = false;
  form.keyTwo.Enabled = false;
  Show(form, [this](Operator& op) {
    op.AccessKey(u'o');
    op.AccessKey(u't');
    EXPECT_EQ(op.Focus(), u"txtName");
    EXPECT_EQ(clicked, "");
  });
}

TEST_F(AccessKey, WithoutAltBelongsToTheTextBoxThatHasTheFocus) {
  Show(form, [this](Operator& op) {
    op.AccessKey(u'o', false);
    EXPECT_EQ(clicked, "");
    form.keyThree.SetFocus();
    op.AccessKey(u'o', false);
    EXPECT_EQ(clicked, "keyOne ");
  });
}

TEST_F(AccessKey, WithAltWorksFromATextBox) {
  Show(form, [this](Operator& op) {
    op.AccessKey(u'o', true);
    EXPECT_EQ(clicked, "keyOne ");
  });
}

TEST_F(AccessKey, UnmarkedCharactersDoNothing) {
  Show(form, [this](Operator& op) {
    form.keyOne.SetFocus();
    for (const char16_t character : {u'x', u'&', u'\0', u'e'})
      op.AccessKey(character);
    EXPECT_EQ(op.Focus(), u"keyOne");
    EXPECT_EQ(clicked, "");
  });
}

TEST_F(AccessKey, IsTheSameInEitherCase) {
  form.keyOne.Caption = u"\u00C4&\u00D6l";
  Show(form, [this](Operator& op) {
    op.AccessKey(u'\u00F6');
    op.AccessKey(u'\u00D6');
    EXPECT_EQ(clicked, "keyOne keyOne ");
  });
}

TEST_F(AccessKey, FollowsTheCaptionAsItIsNow) {
  form.keyOne.Caption = u"&Later";
  Show(form, [this](Operator& op) {
    op.AccessKey(u'o');
    EXPECT_EQ(clicked, "");
    op.AccessKey(u'l');
    EXPECT_EQ(clicked, "keyOne ");
  });
}

TEST_F(AccessKey, SaysWhetherItHasLedAnywhere) {
  Show(form, [this](Operator&) {
    EXPECT_TRUE(ui::DispatchAccessKey(form, u'n', true)) << "to the field behind the label";
    EXPECT_TRUE(ui::DispatchAccessKey(form, u'o', true));
    EXPECT_FALSE(ui::DispatchAccessKey(form, u'x', true));
    form.txtName.Enabled = false;
    for (ui::KRXKey* const key : {&form.keyOne, &form.keyTwo, &form.keyThree})
      key->Enabled = false;
    EXPECT_FALSE(ui::DispatchAccessKey(form, u'n', true)) << "a label without a field";
  });
}

}  // namespace krx::test
