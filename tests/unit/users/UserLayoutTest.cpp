#include "users/UsersTest.h"

// Figures: 8 points everywhere unless a test sets other fonts, so a character is 80 twips wide, a
// line 192 and a field 192 + 90 = 282 high. The form's and the frame's margin is 120, and 60 are
// between two buttons.
//
// Without panel settings the caption line is max(192 + 30, 285) = 285, or 192 + 60 = 252 < 285, and
// the close button 285 - 60 = 225 square. The frame starts at 285 + 120 = 405, the first label at
// 405 + 120 = 525 and its field at 525 + 192 + 45 = 762; the next row is 192 + 45 + 282 + 105 = 624
// lower. A field is 9 * 282 = 2538 wide, the frame 2538 + 240 = 2778, its right edge 2898.
//
// Buttons are 192 + 180 = 372 high; "keyOK" is 5 * 80 + 180 = 580 wide, "keyCancel" and "keyLogOut"
// are 9 * 80 + 180 = 900.
namespace krx::test {

class UserLayout : public UsersTest {
 protected:
  UserLayout() {
    Users().Current = {u"anna", u"operators", true};
    Users().Records[u"anna"] = {};
  }

  void Panel() {
    dialog->Settings().ButtonMinHeight = 900;
    dialog->Settings().CaptionMinHeight = 600;
  }
  void Show(const String& form, Script script) {
    platform.Expect(form, [script](Operator& op) {
      script(op);
      op.Click(u"keyClose");
    });
    if (form == u"FLogOn") dialog->KRUserLogOn();
    if (form == u"FLogOnCombo") dialog->KRUserLogOnCombo();
    if (form == u"FChangePassword") dialog->KRChangePassword();
    if (form == u"FWhoAmI") dialog->KRWhoAmI();
  }
  static Rect At(Operator& op, StringView control) { return op.Get(control).Bounds(); }
  static Size Outer(Operator& op) { return {op.Form().Width(), op.Form().Height()}; }

  static String NameField(Operator& op) {
    return op.Form().Name() == u"FLogOn" ? u"txtName" : u"cboName";
  }
  static String LogOffKey(Operator& op) {
    return op.Form().Name() == u"FLogOn" ? u"keyLogOut" : u"keyLogOff";
  }
};

TEST_F(UserLayout, LogOnStacksTwoRowsAboveThreeButtons) {
  for (const String form : {u"FLogOn", u"FLogOnCombo"}) {
    Show(form, [](Operator& op) {
      // Second row: 525 + 624 = 1149 and 762 + 624 = 1386, ending at 1668. Frame: 1668 + 120 - 405
      // = 1383 high, ending at 1788; buttons at 1788 + 15 = 1803. Row: 580 + 900 + 900 + 2 * 60 =
      // 2500, from 2898 - 2500 = 398. Form: 2898 + 120 = 3018 by 1803 + 372 + 120 = 2295.
      EXPECT_EQ(At(op, u"fra"), (Rect{120, 405, 2778, 1383}));
      EXPECT_EQ(At(op, u"lblName"), (Rect{240, 525, 7 * 80, 192}));
      EXPECT_EQ(At(op, NameField(op)), (Rect{240, 762, 2538, 282}));
      EXPECT_EQ(At(op, u"lblPassword"), (Rect{240, 1149, 11 * 80, 192}));
      EXPECT_EQ(At(op, u"txtPassword"), (Rect{240, 1386, 2538, 282}));
      EXPECT_EQ(At(op, u"keyOK"), (Rect{398, 1803, 580, 372}));
      EXPECT_EQ(At(op, u"keyCancel"), (Rect{1038, 1803, 900, 372}));
      EXPECT_EQ(At(op, LogOffKey(op)), (Rect{1998, 1803, 900, 372}));
      EXPECT_EQ(Outer(op), (Size{3018, 2295}));
      // 3018 - 30 - 225 = 2763, and 30 above and below.
      EXPECT_EQ(At(op, u"idxCaption"), (Rect{0, 0, 3018, 285}));
      EXPECT_EQ(At(op, u"keyClose"), (Rect{2763, 30, 225, 225}));
    });
  }
}

TEST_F(UserLayout, PanelSettingsMakeLogOnFitForFingers) {
  Panel();
  for (const String form : {u"FLogOn", u"FLogOnCombo"}) {
    Show(form, [](Operator& op) {
      // Caption 600, close button 540. Everything 600 - 285 = 315 lower; buttons at 2118, 900 high
      // and 2.5 * 900 = 2250 wide, in a row of 3 * 2250 + 2 * 60 = 6870; the frame stands in
      // the middle above it, at 120 + (6870 - 2778) / 2 = 2166, and its fields 120 further.
      // Form: 120 + 6870 + 120 = 7110 by 2118 + 900 + 120 = 3138.
      EXPECT_EQ(At(op, u"fra"), (Rect{2166, 720, 2778, 1383}));
      EXPECT_EQ(At(op, u"txtPassword"), (Rect{2286, 1701, 2538, 282}));
      EXPECT_EQ(At(op, u"keyOK"), (Rect{120, 2118, 2250, 900}));
      EXPECT_EQ(At(op, u"keyCancel"), (Rect{2430, 2118, 2250, 900}));
      EXPECT_EQ(At(op, LogOffKey(op)), (Rect{4740, 2118, 2250, 900}));
      EXPECT_EQ(Outer(op), (Size{7110, 3138}));
      EXPECT_EQ(At(op, u"idxCaption"), (Rect{0, 0, 7110, 600}));
      EXPECT_EQ(At(op, u"keyClose"), (Rect{6540, 30, 540, 540}));
      // (540 - 105) / 15 / 8 = 3.6 steps of 8 pixels.
      EXPECT_EQ(op.Get<ui::KRXKey>(u"keyClose").Picture().Pixels, 32);
    });
  }
}

TEST_F(UserLayout, ChangePasswordStacksSixRows) {
  Show(u"FChangePassword", [](Operator& op) {
    const std::array fields{u"txtName",        u"txtFullName", u"txtComment",
                            u"txtActPassword", u"txtPassword", u"txtPassword2"};
    for (std::size_t i = 0; i < fields.size(); ++i) {
      const Twips down = 624 * static_cast<Twips>(i);
      const String label = u"lblChangePW(" + ToString(static_cast<std::int32_t>(i)) + u")";
      EXPECT_EQ(op.Get(label).Top(), 525 + down);
      EXPECT_EQ(op.Get(label).Left(), 240);
      EXPECT_EQ(At(op, fields[i]), (Rect{240, 762 + down, 2538, 282}));
    }
    // Last field: 762 + 5 * 624 + 282 = 4164. Frame: 4164 + 120 - 405 = 3879, ending at 4284;
    // buttons at 4299. Row: 580 + 60 + 900 = 1540, from 2898 - 1540 = 1358.
    EXPECT_EQ(At(op, u"fra"), (Rect{120, 405, 2778, 3879}));
    EXPECT_EQ(At(op, u"keyOK"), (Rect{1358, 4299, 580, 372}));
    EXPECT_EQ(At(op, u"keyCancel"), (Rect{1998, 4299, 900, 372}));
    EXPECT_EQ(Outer(op), (Size{3018, 4791}));
    EXPECT_EQ(At(op, u"idxCaption"), (Rect{0, 0, 3018, 285}));
    EXPECT_EQ(At(op, u"keyClose"), (Rect{2763, 30, 225, 225}));
  });
}

TEST_F(UserLayout, PanelSettingsMakeChangePasswordFitForFingers) {
  Panel();
  Show(u"FChangePassword", [](Operator& op) {
    // Buttons at 4299 + 315 = 4614. Row: 2 * 2250 + 60 = 4560, wider than the frame, which stands
    // at 120 + (4560 - 2778) / 2 = 1011. Form: 120 + 4560 + 120 = 4800 by 4614 + 900 + 120 = 5634.
    // Close button at 4800 - 30 - 540 = 4230.
    EXPECT_EQ(At(op, u"fra"), (Rect{1011, 720, 2778, 3879}));
    EXPECT_EQ(At(op, u"keyOK"), (Rect{120, 4614, 2250, 900}));
    EXPECT_EQ(At(op, u"keyCancel"), (Rect{2430, 4614, 2250, 900}));
    EXPECT_EQ(Outer(op), (Size{4800, 5634}));
    EXPECT_EQ(At(op, u"idxCaption"), (Rect{0, 0, 4800, 600}));
    EXPECT_EQ(At(op, u"keyClose"), (Rect{4230, 30, 540, 540}));
  });
}

TEST_F(UserLayout, WhoAmIStacksFourRows) {
  Show(u"FWhoAmI", [](Operator& op) {
    const std::array labels{u"lblWhoAmI(0)", u"lblWhoAmI(1)", u"lblWhoAmI(3)", u"lblWhoAmI(2)"};
    const std::array fields{u"txtFullName", u"txtName", u"txtUserClass", u"txtComment"};
    for (std::size_t i = 0; i < fields.size(); ++i) {
      const Twips down = 624 * static_cast<Twips>(i);
      EXPECT_EQ(op.Get(labels[i]).Top(), 525 + down);
      EXPECT_EQ(At(op, fields[i]), (Rect{240, 762 + down, 2538, 282}));
    }
    // Last field: 762 + 3 * 624 + 282 = 2916. Frame: 2916 + 120 - 405 = 2631, ending at 3036;
    // button at 3051, from 2898 - 580 = 2318. Form: 3051 + 372 + 120 = 3543 high.
    EXPECT_EQ(At(op, u"fra"), (Rect{120, 405, 2778, 2631}));
    EXPECT_EQ(At(op, u"keyOK"), (Rect{2318, 3051, 580, 372}));
    EXPECT_EQ(Outer(op), (Size{3018, 3543}));
    EXPECT_EQ(At(op, u"keyClose"), (Rect{2763, 30, 225, 225}));
  });
}

TEST_F(UserLayout, PanelSettingsMakeWhoAmIFitForFingers) {
  Panel();
  Show(u"FWhoAmI", [](Operator& op) {
    // Button at 3051 + 315 = 3366, from 2898 - 2250 = 648. Form: 3366 + 900 + 120 = 4386 high.
    EXPECT_EQ(At(op, u"fra"), (Rect{120, 720, 2778, 2631}));
    EXPECT_EQ(At(op, u"keyOK"), (Rect{648, 3366, 2250, 900}));
    EXPECT_EQ(Outer(op), (Size{3018, 4386}));
    EXPECT_EQ(At(op, u"idxCaption"), (Rect{0, 0, 3018, 600}));
    EXPECT_EQ(At(op, u"keyClose"), (Rect{2448, 30, 540, 540}));
  });
}

TEST_F(UserLayout, ButtonOfWhoAmIFollowsTheMinimumHeight) {
  dialog->Settings().ButtonMinHeight = 500;
  Show(u"FWhoAmI", [](Operator& op) {
    EXPECT_EQ(At(op, u"keyOK"), (Rect{2898 - 1250, 3051, 1250, 500}));
  });
}

TEST_F(UserLayout, ButtonOfWhoAmIAlwaysEndsWithTheFrame) {
  dialog->Settings().ButtonMinHeight = 2000;
  Show(u"FWhoAmI", [](Operator& op) {
    // 2.5 * 2000 = 5000 wide, from 120 to 5120; the frame starts at 5120 - 2778 = 2342.
    EXPECT_EQ(At(op, u"keyOK"), (Rect{120, 3051, 5000, 2000}));
    EXPECT_EQ(At(op, u"fra"), (Rect{2342, 405, 2778, 2631}));
    EXPECT_EQ(At(op, u"txtName"), (Rect{2462, 1386, 2538, 282}));
    EXPECT_EQ(At(op, u"lblWhoAmI(1)"), (Rect{2462, 1149, 560, 192}));
    EXPECT_EQ(op.Form().Width(), 5240);
  });
}

// 10 points: a line of 240, so 30 more is 270, below 285, and 60 more is 300.
TEST_F(UserLayout, CaptionOfChangePasswordIsPaddedTwiceAsMuch) {
  runtime.Fonts[u"KRDialogsCaption"] = {.Name = u"KRDialogsCaption", .Size = 10};
  for (const String form : {u"FLogOn", u"FLogOnCombo", u"FWhoAmI"})
    Show(form, [](Operator& op) { EXPECT_EQ(op.Get(u"idxCaption").Height(), 285); });
  Show(u"FChangePassword", [](Operator& op) {
    EXPECT_EQ(op.Get(u"idxCaption").Height(), 300);
    EXPECT_EQ(op.Get(u"keyClose").Height(), 240);
  });
  // 12 points: a line of 288.
  runtime.Fonts[u"KRDialogsCaption"].Size = 12;
  for (const String form : {u"FLogOn", u"FLogOnCombo", u"FWhoAmI"})
    Show(form, [](Operator& op) { EXPECT_EQ(op.Get(u"idxCaption").Height(), 318); });
  Show(u"FChangePassword", [](Operator& op) { EXPECT_EQ(op.Get(u"idxCaption").Height(), 348); });
}

TEST_F(UserLayout, EveryPartFollowsItsOwnFont) {
  runtime.Fonts[u"KRDialogsText"] = {.Name = u"KRDialogsText", .Size = 10};
  runtime.Fonts[u"KRDialogsInput"] = {.Name = u"KRDialogsInput", .Size = 14};
  runtime.Fonts[u"KRDialogsButton"] = {.Name = u"KRDialogsButton", .Size = 20};
  Show(u"FLogOn", [](Operator& op) {
    // Label 240 high; field 14 * 24 + 90 = 426 high and 3834 wide, at 525 + 240 + 45 = 810, ending
    // at 1236. Next label 1341, field 1626 to 2052. Frame: 3834 + 240 = 4074 by 2052 + 120 - 405 =
    // 1767. Buttons: 20 * 24 + 180 = 660 high, 5 * 200 + 180 = 1180 and twice 9 * 200 + 180 = 1980
    // wide, the row 1180 + 2 * 1980 + 120 = 5260 at 405 + 1767 + 15 = 2187. The frame stands in the
    // middle above the row, at 120 + (5260 - 4074) / 2 = 713, and its fields 120 further.
    EXPECT_EQ(At(op, u"lblName"), (Rect{833, 525, 700, 240}));
    EXPECT_EQ(At(op, u"txtName"), (Rect{833, 810, 3834, 426}));
    EXPECT_EQ(At(op, u"lblPassword"), (Rect{833, 1341, 1100, 240}));
    EXPECT_EQ(At(op, u"txtPassword"), (Rect{833, 1626, 3834, 426}));
    EXPECT_EQ(At(op, u"fra"), (Rect{713, 405, 4074, 1767}));
    EXPECT_EQ(At(op, u"keyOK"), (Rect{120, 2187, 1180, 660}));
    EXPECT_EQ(At(op, u"keyCancel"), (Rect{1360, 2187, 1980, 660}));
    EXPECT_EQ(At(op, u"keyLogOut"), (Rect{3400, 2187, 1980, 660}));
    EXPECT_EQ(Outer(op), (Size{5500, 2967}));
  });
}

TEST_F(UserLayout, LongTitleIsNotCutByTheCloseButton) {
  runtime.Texts[u"capLogon"] = String(60, u't');
  Show(u"FLogOn", [](Operator& op) {
    // 60 * 80 + 2 * 90 of indent + 225 + 30 = 5235; the buttons stay with the frame.
    EXPECT_EQ(op.Form().Width(), 5235);
    EXPECT_EQ(At(op, u"idxCaption"), (Rect{0, 0, 5235, 285}));
    EXPECT_EQ(At(op, u"keyLogOut"), (Rect{1998, 1803, 900, 372}));
  });
}

TEST_F(UserLayout, LongLabelIsNotCutByTheForm) {
  runtime.Texts[u"lblPassword"] = String(40, u'l');
  Show(u"FLogOn", [](Operator& op) {
    EXPECT_EQ(At(op, u"lblPassword"), (Rect{240, 1149, 3200, 192}));
    EXPECT_EQ(At(op, u"fra").Width, 2778) << "the frame is as wide as its fields";
    EXPECT_EQ(op.Form().Width(), 240 + 3200 + 120);
  });
}

// What cannot be measured keeps a size at which the dialog can be used.
TEST_F(UserLayout, UnmeasurableFontsLeaveTheDialogUsable) {
  platform.Unmeasurable = {u"KRDialogsCaption", u"KRDialogsText", u"KRDialogsButton",
                           u"KRDialogsInput", u"Tahoma"};
  Panel();
  Show(u"FLogOn", [](Operator& op) {
    // Caption 285, labels 195, buttons 1215 by 375; the field's height is the port's own figure.
    EXPECT_EQ(op.Get(u"idxCaption").Height(), 285);
    EXPECT_EQ(At(op, u"keyClose").Width, 225);
    // The row is 3 * 1215 + 2 * 60 = 3765 wide, so the frame starts (3765 - 2778) / 2 = 493.5
    // further to the right.
    EXPECT_EQ(At(op, u"txtName"), (Rect{240 + 493.5f, 525 + 195 + 45, 2538, 282}));
    EXPECT_EQ(At(op, u"keyOK").Width, 1215);
    EXPECT_EQ(At(op, u"keyOK").Height, 375);
  });
}

}  // namespace krx::test
