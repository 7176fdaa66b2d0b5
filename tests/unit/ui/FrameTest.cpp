#include "support/FormTest.h"

namespace krx::test {

class Frames : public FormTest {
 protected:
  Frames() {
    fra.TabIndex = 1;  // before the text box
  }
  ui::Frame fra{form, u"fra"};
};

TEST_F(Frames, ShowTheirCaptionWithoutTheMark) {
  EXPECT_EQ(fra.DisplayedText(), u"");
  EXPECT_EQ(fra.AccessKey(), u'\0');
  fra.Caption = u"&User && class";
  EXPECT_EQ(fra.DisplayedText(), u"User & class");
  EXPECT_EQ(fra.AccessKey(), u'U');
}

TEST_F(Frames, TakeNoInput) {
  EXPECT_FALSE(fra.CanFocus());
}

TEST_F(Frames, LeadByTheirAccessKeyToTheFieldBehindThem) {
  fra.Caption = u"&User";
  form.keyThree.TabIndex = 0;
  Show(form, [](Operator& op) {
    EXPECT_EQ(op.Focus(), u"keyThree");
    op.AccessKey(u'u');
    EXPECT_EQ(op.Focus(), u"txtName");
  });
}

TEST_F(Frames, LeadNowhereWithoutACaption) {
  form.keyThree.TabIndex = 0;
  Show(form, [](Operator& op) {
    op.AccessKey(u'u');
    EXPECT_EQ(op.Focus(), u"keyThree");
  });
}

}  // namespace krx::test
