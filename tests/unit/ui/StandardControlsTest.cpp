#include "support/FormTest.h"

// Headless metrics: s points give 10 s twips a character and 24 s a line; a text box adds 90.
namespace krx::test {

class StandardControls : public FormTest {
 protected:
  StandardControls() {
    form.lblName.Font = krx::Font{u"x", 8};
    form.txtName.Font = krx::Font{u"x", 8};
  }
};

TEST_F(StandardControls, LabelKeepsItsSizeUnlessItSizesItself) {
  form.lblName.Place({0, 0, 11, 22});
  form.lblName.Caption = u"text";
  EXPECT_EQ(form.lblName.Bounds(), (Rect{0, 0, 11, 22}));
}

TEST_F(StandardControls, LabelThatSizesItselfFollowsItsCaptionAndFont) {
  form.lblName.AutoSize = true;
  form.lblName.Caption = u"text";
  EXPECT_EQ(form.lblName.Width(), 320);   // 4 * 80
  EXPECT_EQ(form.lblName.Height(), 192);  // one line
  form.lblName.Caption = u"a\r\nlonger";
  EXPECT_EQ(form.lblName.Width(), 480);
  EXPECT_EQ(form.lblName.Height(), 384);
  form.lblName.Font = krx::Font{u"x", 10};
  EXPECT_EQ(form.lblName.Width(), 600);
  EXPECT_EQ(form.lblName.Height(), 480);
}

TEST_F(StandardControls, SwitchingAutoSizeOnMeasuresTheCaptionThatIsThere) {
  form.lblName.Caption = u"abc";
  form.lblName.AutoSize = true;
  EXPECT_EQ(form.lblName.Width(), 240);
  form.lblName.AutoSize = false;
  form.lblName.Width = 5;
  form.lblName.AutoSize = true;
  EXPECT_EQ(form.lblName.Width(), 240);
}

TEST_F(StandardControls, EmptyLabelIsOneLineHighAndHasNoWidth) {
  form.lblName.Caption = u"x";
  form.lblName.AutoSize = true;
  form.lblName.Caption = u"";
  EXPECT_EQ(form.lblName.Width(), 0);
  EXPECT_EQ(form.lblName.Height(), 192);
}

TEST_F(StandardControls, LabelMayShowItsMarks) {
  form.lblName.Caption = u"a && &b";
  EXPECT_EQ(form.lblName.DisplayedText(), u"a & b");
  EXPECT_EQ(form.lblName.AccessKey(), u'b');
  form.lblName.UseMnemonic = false;
  EXPECT_EQ(form.lblName.DisplayedText(), u"a && &b");
  EXPECT_EQ(form.lblName.AccessKey(), 0);
}

TEST_F(StandardControls, TextBoxOfNoHeightTakesItsNaturalOne) {
  form.txtName.Height = 0;
  EXPECT_EQ(form.txtName.Height(), 282);  // 192 + 90
  form.txtName.Height = 100;
  EXPECT_EQ(form.txtName.Height(), 282);
  form.txtName.Height = 500;
  EXPECT_EQ(form.txtName.Height(), 500);
  form.txtName.Height = 0;
  EXPECT_EQ(form.txtName.Height(), 282);
}

TEST_F(StandardControls, TextBoxGrowsWithItsFont) {
  form.txtName.Font = krx::Font{u"x", 20};
  EXPECT_EQ(form.txtName.Height(), 570);  // 480 + 90
}

TEST_F(StandardControls, TextBoxTellsOfEveryChangeOnce) {
  int changes = 0;
  form.txtName.Change = [&] { ++changes; };
  form.txtName.Text = u"a";
  form.txtName.Text = u"a";
  EXPECT_EQ(changes, 1);
  form.txtName.Edited(0, 1, u"ab");
  form.txtName.Edited(0, 2, u"ab");
  EXPECT_EQ(changes, 2);
  EXPECT_EQ(form.txtName.Text(), u"ab");
}

TEST_F(StandardControls, TextBoxShowsTheWindowColours) {
  EXPECT_EQ(form.txtName.BackColor(), ui::kWindowBackground);
  EXPECT_EQ(form.txtName.ForeColor(), ui::kWindowText);
  EXPECT_TRUE(form.txtName.TakesText());
  EXPECT_FALSE(form.keyOne.TakesText());
}

TEST_F(StandardControls, PictureBoxHoldsOneIcon) {
  ui::PictureBox picture(form, u"picSample");
  EXPECT_EQ(picture.Picture(), std::nullopt);
  picture.DrawIcon({32513}, 1, 2);
  EXPECT_EQ(picture.Picture(), (ui::PictureBox::Drawing{{32513}, 1, 2}));
}

TEST_F(StandardControls, FrameTakesNoInput) {
  const ui::Frame frame(form, u"fraSample");
  EXPECT_EQ(frame.Kind(), ui::Kind::Frame);
  EXPECT_FALSE(frame.CanFocus());
}

TEST_F(StandardControls, KeyShowsItsCaptionWithoutMarksAndWithLineFeeds) {
  form.keyOne.Caption = u"&a\r\n&&b";
  EXPECT_EQ(form.keyOne.DisplayedText(), u"a\n&b");
  EXPECT_EQ(form.keyOne.AccessKey(), u'a');
  EXPECT_EQ(form.keyOne.Picture().Pixels, 0);
}

}  // namespace krx::test
