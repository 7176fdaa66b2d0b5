#include "support/FormTest.h"

namespace krx::test {

class Control : public FormTest {};

TEST_F(Control, PlacingSetsAllFourLengths) {
  form.keyOne.Place({1, 2, 3, 4});
  EXPECT_EQ(form.keyOne.Bounds(), (Rect{1, 2, 3, 4}));
  EXPECT_EQ(form.keyOne.Left(), 1);
  EXPECT_EQ(form.keyOne.Height(), 4);
}

TEST_F(Control, OnlyEnabledVisibleTabStopsCanTakeTheFocus) {
  EXPECT_TRUE(form.keyOne.CanFocus());
  EXPECT_TRUE(form.txtName.CanFocus());
  EXPECT_FALSE(form.lblName.CanFocus());
  form.keyOne.TabStop = false;
  EXPECT_FALSE(form.keyOne.CanFocus());
  form.keyTwo.Enabled = false;
  EXPECT_FALSE(form.keyTwo.CanFocus());
  form.keyThree.Visible = false;
  EXPECT_FALSE(form.keyThree.CanFocus());
}

TEST_F(Control, KindsAndParentsAreKnown) {
  EXPECT_EQ(form.keyOne.Kind(), ui::Kind::Key);
  EXPECT_EQ(form.lblName.Kind(), ui::Kind::Label);
  EXPECT_EQ(form.txtName.Kind(), ui::Kind::TextBox);
  EXPECT_EQ(form.tmrSample.Kind(), ui::Kind::Timer);
  EXPECT_EQ(&form.keyOne.Parent(), &form);
}

TEST(Caption, IsShownWithoutItsAccessKeyMark) {
  EXPECT_EQ(ui::WithoutAccessKey(u"&Yes"), u"Yes");
  EXPECT_EQ(ui::WithoutAccessKey(u"Sa&ve"), u"Save");
  EXPECT_EQ(ui::WithoutAccessKey(u"a && b"), u"a & b");
  EXPECT_EQ(ui::WithoutAccessKey(u"&&&x"), u"&x");
  EXPECT_EQ(ui::WithoutAccessKey(u"Cancel&"), u"Cancel");
  EXPECT_EQ(ui::WithoutAccessKey(u"&"), u"");
  EXPECT_EQ(ui::WithoutAccessKey(u""), u"");
}

TEST(Caption, AccessKeyIsTheFirstMarkedCharacter) {
  EXPECT_EQ(ui::AccessKeyOf(u"&Yes"), u'Y');
  EXPECT_EQ(ui::AccessKeyOf(u"a && &B &C"), u'B');
  EXPECT_EQ(ui::AccessKeyOf(u"&\u00C4ndern"), u'\u00C4');
  EXPECT_EQ(ui::AccessKeyOf(u"&1"), u'1');
}

TEST(Caption, WithoutAMarkThereIsNoAccessKey) {
  EXPECT_EQ(ui::AccessKeyOf(u"Yes"), 0);
  EXPECT_EQ(ui::AccessKeyOf(u"Cancel&"), 0);
  EXPECT_EQ(ui::AccessKeyOf(u"a && b"), 0);
  EXPECT_EQ(ui::AccessKeyOf(u"a&&"), 0);
  EXPECT_EQ(ui::AccessKeyOf(u""), 0);
}

TEST(Caption, EveryLineBreakIsOneLineFeed) {
  EXPECT_EQ(ui::NormalizeLineBreaks(u"a\r\nb\nc\rd\n\re"), u"a\nb\nc\nd\n\ne");
}

TEST(SystemColor, HasTheHighestBitAndItsIndex) {
  EXPECT_EQ(ui::kWindowBackground, 0x80000005u);
  EXPECT_EQ(ui::kButtonFace, 0x8000000Fu);
}

}  // namespace krx::test
