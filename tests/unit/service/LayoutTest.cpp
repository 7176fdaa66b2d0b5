#include "service/Layout.h"

#include "support/FormTest.h"

namespace krx::test {

using service::ButtonHeight;
using service::ButtonWidth;
using service::CaptionHeight;
using service::CrossFor;

TEST(CaptionHeight, IsTheLargestOfTextAndPaddingTheSmallestAndTheMinimum) {
  EXPECT_EQ(CaptionHeight(300, 0), 330);
  EXPECT_EQ(CaptionHeight(255, 0), 285);
  EXPECT_EQ(CaptionHeight(256, 0), 286);
  EXPECT_EQ(CaptionHeight(100, 0), 285);
  EXPECT_EQ(CaptionHeight(100, 500), 500);
  EXPECT_EQ(CaptionHeight(100, -1), 285);
}

TEST(CaptionHeight, PaddingMayDiffer) {
  EXPECT_EQ(CaptionHeight(300, 0, 60), 360);
}

TEST(ButtonHeight, IsTextAnd180OrTheMinimum) {
  EXPECT_EQ(ButtonHeight(192, 0), 372);
  EXPECT_EQ(ButtonHeight(192, 372.5f), 372.5f);
  EXPECT_EQ(ButtonHeight(192, -500), 372);
}

TEST(ButtonWidth, IsTextAnd180OrTwoAndAHalfMinimumHeights) {
  EXPECT_EQ(ButtonWidth(400, 0), 580);
  EXPECT_EQ(ButtonWidth(400, 232), 580);  // 2.5 * 232 = 580
  EXPECT_EQ(ButtonWidth(400, 400), 1000);
  EXPECT_EQ(ButtonWidth(400, -400), 580);
}

TEST(ButtonRow, HiddenButtonsTakeNoPlace) {
  headless::HeadlessPlatform platform;
  ui::Form form(platform, u"Form");
  ui::KRXKey first(form, u"first");
  ui::KRXKey hidden(form, u"hidden");
  ui::KRXKey last(form, u"last");
  for (ui::KRXKey* const key : {&first, &hidden, &last})
    key->Width = 500;
  hidden.Visible = false;
  ui::KRXKey* const keys[] = {&first, &hidden, &last};
  EXPECT_EQ(service::RowWidth(keys, 60), 1060);
  EXPECT_EQ(service::PlaceRow(keys, 100, 40, 60), 1220);
  EXPECT_EQ(first.Left(), 100);
  EXPECT_EQ(last.Left(), 660);
  EXPECT_EQ(last.Top(), 40);
}

// At 15 twips a pixel a step of 8 pixels is 120 twips; the margin is 105.
TEST(CrossFor, TakesTheNearestStep) {
  EXPECT_EQ(CrossFor(105 + 120, 15).Pixels, 8);
  EXPECT_EQ(CrossFor(105 + 179, 15).Pixels, 8);
  EXPECT_EQ(CrossFor(105 + 180, 15).Pixels, 16);  // half a step rounds up
  EXPECT_EQ(CrossFor(105 + 240, 15).Pixels, 16);
  EXPECT_EQ(CrossFor(105 + 299, 15).Pixels, 16);
  EXPECT_EQ(CrossFor(105 + 300, 15).Pixels, 24);
  EXPECT_EQ(CrossFor(105 + 839, 15).Pixels, 56);
  EXPECT_EQ(CrossFor(105 + 840, 15).Pixels, 56);
  EXPECT_EQ(CrossFor(105 + 900, 15).Pixels, 64);
}

TEST(CrossFor, StaysBetween8And64Pixels) {
  EXPECT_EQ(CrossFor(105 + 59, 15).Pixels, 8);
  EXPECT_EQ(CrossFor(105, 15).Pixels, 8);
  EXPECT_EQ(CrossFor(0, 15).Pixels, 8);
  EXPECT_EQ(CrossFor(-1e30f, 15).Pixels, 8);
  EXPECT_EQ(CrossFor(105 + 1020, 15).Pixels, 64);
  EXPECT_EQ(CrossFor(1e30f, 15).Pixels, 64);
}

TEST(CrossFor, FollowsTheResolution) {
  EXPECT_EQ(CrossFor(225, 12).Pixels, 8);          // 120 dpi: 120 / 12 / 8 = 1.25
  EXPECT_EQ(CrossFor(225, 10).Pixels, 16);         // 144 dpi: 1.5
  EXPECT_EQ(CrossFor(225, 7.5f).Pixels, 16);       // 192 dpi: 2
  EXPECT_EQ(CrossFor(660 - 60, 7.5f).Pixels, 64);  // 495 / 7.5 / 8 = 8.25
}

// 8 points: a character is 80 wide, a label 192 and a text box 282 high, so a field is
// 9 * 282 = 2538 wide.
class LayOutRows : public FormTest {
 protected:
  LayOutRows() {
    for (ui::Control* const control : std::initializer_list<ui::Control*>{
             &form.lblName, &form.txtName, &lblPassword, &txtPassword})
      control->Font = krx::Font{u"x", 8};
    form.lblName.Caption = u"Name";
    lblPassword.Caption = u"Password";
    frame.Left = 100;
    frame.Top = 300;
  }

  ui::Frame frame{form, u"fraSample"};
  ui::Label lblPassword{form, u"lblPassword"};
  ui::TextBox txtPassword{form, u"txtPassword"};
};

TEST_F(LayOutRows, StacksLabelsAndFieldsAndSizesTheFrame) {
  const service::InputRow rows[] = {{form.lblName, form.txtName}, {lblPassword, txtPassword}};
  service::LayOutRows(frame, rows, 150);
  // Left 100 + 150. Label 300 + 150 = 450; field 450 + 192 + 45 = 687; next label
  // 687 + 282 + 105 = 1074; next field 1074 + 192 + 45 = 1311, ends at 1593. Frame: 2538 + 2 * 150
  // wide, 1593 + 150 - 300 = 1443 high.
  EXPECT_EQ(form.lblName.Bounds(), (Rect{250, 450, 320, 192}));
  EXPECT_EQ(form.txtName.Bounds(), (Rect{250, 687, 2538, 282}));
  EXPECT_EQ(lblPassword.Bounds(), (Rect{250, 1074, 640, 192}));
  EXPECT_EQ(txtPassword.Bounds(), (Rect{250, 1311, 2538, 282}));
  EXPECT_EQ(frame.Bounds(), (Rect{100, 300, 2838, 1443}));
}

TEST_F(LayOutRows, FieldsShrinkToTheirNaturalHeight) {
  form.txtName.Height = 1000;
  const service::InputRow rows[] = {{form.lblName, form.txtName}};
  service::LayOutRows(frame, rows, 150);
  EXPECT_EQ(form.txtName.Bounds(), (Rect{250, 687, 2538, 282}));
  EXPECT_EQ(frame.Bounds(), (Rect{100, 300, 2838, 819}));  // 687 + 282 + 150 - 300
}

TEST_F(LayOutRows, WidestFieldSetsTheFramesWidth) {
  txtPassword.Font = krx::Font{u"x", 20};  // 480 + 90 = 570 high, 5130 wide
  const service::InputRow rows[] = {{form.lblName, form.txtName}, {lblPassword, txtPassword}};
  service::LayOutRows(frame, rows, 100);
  EXPECT_EQ(form.txtName.Width(), 2538);
  EXPECT_EQ(txtPassword.Width(), 5130);
  EXPECT_EQ(frame.Width(), 5330);
}

TEST_F(LayOutRows, FrameWithoutRowsIsItsTwoMargins) {
  service::LayOutRows(frame, {}, 150);
  EXPECT_EQ(frame.Bounds(), (Rect{100, 300, 300, 300}));
}

}  // namespace krx::test
