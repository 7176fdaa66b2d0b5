#include "files/TouchTest.h"

// Figures: 8 points, so a character is 80 twips wide, a line 192 and a field 282 high. The caption
// line is 285, a heading stands 60 below what is above it and its field 30 below the heading, and
// so one every 192 + 30 + 282 + 60 = 564. A button is 192 + 180 = 372 high; "Cancel" is 6 * 80 +
// 180 = 660 wide and "Open" alike.
namespace krx::test {
namespace {

class TouchLayout : public TouchTest {
 protected:
  void ShowDirectory(const Script& script) {
    SelectDirectory(u"C:\\Data", [&](Operator& op) {
      script(op);
      op.Click(u"keyCancel");
    });
  }
  void ShowFile(const Script& script) {
    OpenFile({{}, u"C:\\Data", {}, true, {}}, [&](Operator& op) {
      script(op);
      op.Click(u"keyCancel");
    });
  }
  static Rect At(Operator& op, StringView control) { return op.Get(control).Bounds(); }
  static Size Outer(Operator& op) { return {op.Form().Width(), op.Form().Height()}; }
  static std::string FontOf(Operator& op, StringView control) {
    return ToUtf8(op.Get(control).Font().Name);
  }
};

TEST_F(TouchLayout, TheDirectoryDialogStacksItsControls) {
  ShowDirectory([](Operator& op) {
    // 7200 less 120 on either side; nine rows of 400.
    EXPECT_EQ(At(op, u"lbl(0)"), (Rect{120, 345, 6960, 192}));
    EXPECT_EQ(At(op, u"txtDirectory"), (Rect{120, 567, 6960, 282}));
    EXPECT_EQ(At(op, u"lbl(1)"), (Rect{120, 909, 6960, 192}));
    EXPECT_EQ(At(op, u"cboDrives"), (Rect{120, 1131, 6960, 282}));
    EXPECT_EQ(At(op, u"lbl(2)"), (Rect{120, 1473, 6960, 192}));
    EXPECT_EQ(At(op, u"grdFolders"), (Rect{120, 1695, 6960, 3600}));
    // The buttons end at 7200 - 120, 120 below the grid's end at 5295.
    EXPECT_EQ(At(op, u"keyOK"), (Rect{7080 - 660 - 60 - 660, 5415, 660, 372}));
    EXPECT_EQ(At(op, u"keyCancel"), (Rect{7080 - 660, 5415, 660, 372}));
    EXPECT_EQ(Outer(op), (Size{7200, 5415 + 372 + 120}));
    // The marker " +" and 240 are more than a picture, 0.95 * 400.
    EXPECT_EQ(op.Get<ui::KRXGrid>(u"grdFolders").Columns()[0].Width, 2 * 80 + 240);
  });
}

TEST_F(TouchLayout, HighButtonsMakeFieldsAndRowsFitForFingers) {
  dialog->Settings().ButtonMinHeight = 900;
  ShowDirectory([](Operator& op) {
    // A field grows to 525 and a row to 600, a list of drives with the buttons.
    EXPECT_EQ(At(op, u"txtDirectory"), (Rect{120, 567, 6960, 525}));
    EXPECT_EQ(At(op, u"cboDrives"), (Rect{120, 1374, 6960, 900}));
    EXPECT_EQ(At(op, u"grdFolders"), (Rect{120, 2556, 6960, 9 * 600}));
    EXPECT_EQ(At(op, u"keyCancel"), (Rect{7080 - 2250, 2556 + 5400 + 120, 2250, 900}));
    const auto& grid = op.Get<ui::KRXGrid>(u"grdFolders");
    EXPECT_EQ(grid.RowMinHeight(), 600);
    EXPECT_EQ(grid.Columns()[0].Width, 570) << "0.95 * 600, for the picture";
  });
}

TEST_F(TouchLayout, TheGridIsAsHighAsTheScreenLeavesButThreeRowsAtLeast) {
  platform.Area = {0, 0, 6000, 4000};
  ShowDirectory([](Operator& op) {
    EXPECT_EQ(At(op, u"grdFolders").Height, 4000 - 1695 - 120 - 372 - 120);
    EXPECT_EQ(Outer(op), (Size{6000, 4000}));
  });
  platform.Area = {0, 0, 6000, 3000};
  ShowDirectory([](Operator& op) { EXPECT_EQ(At(op, u"grdFolders").Height, 3 * 400); });
}

TEST_F(TouchLayout, TheFileDialogHasTwoColumnsBelowItsPath) {
  ShowFile([](Operator& op) {
    // 12000 less 120 on either side; columns of (11760 - 120) / 2 = 5820, the second from 120 +
    // 5820 + 120 = 6060.
    EXPECT_EQ(At(op, u"lblPathName"), (Rect{120, 345, 11760, 192}));
    EXPECT_EQ(At(op, u"txtPath"), (Rect{120, 567, 11760, 282}));
    EXPECT_EQ(At(op, u"txtFullPath"), At(op, u"txtPath"));
    EXPECT_EQ(At(op, u"lblDrivers"), (Rect{120, 909, 5820, 192}));
    EXPECT_EQ(At(op, u"cboDrivers"), (Rect{120, 1131, 5820, 282}));
    EXPECT_EQ(At(op, u"lblExtention"), (Rect{6060, 909, 5820, 192}));
    EXPECT_EQ(At(op, u"cboExtention"), (Rect{6060, 1131, 5820, 282}));
    EXPECT_EQ(At(op, u"grdFolders"), (Rect{120, 1413 + 120, 5820, 3600}));
    EXPECT_EQ(At(op, u"grdFiles"), (Rect{6060, 1533, 5820, 3600}));
    EXPECT_EQ(At(op, u"keyCancel"), (Rect{12000 - 120 - 660, 5133 + 120, 660, 372}));
    EXPECT_EQ(Outer(op), (Size{12000, 5253 + 372 + 120}));
  });
}

TEST_F(TouchLayout, FontClassesGoToTheirControls) {
  ShowDirectory([](Operator& op) {
    EXPECT_EQ(FontOf(op, u"idxCaption"), "KRDialogsCaption");
    EXPECT_EQ(FontOf(op, u"txtDirectory"), "KRDialogsInput");
    for (const StringView control : {u"keyOK", u"keyCancel"})
      EXPECT_EQ(FontOf(op, control), "KRDialogsButton");
    for (const StringView control : {u"lbl(0)", u"lbl(1)", u"lbl(2)", u"cboDrives", u"grdFolders"})
      EXPECT_EQ(FontOf(op, control), "KRDialogsText") << ToUtf8(control);
  });
  ShowFile([](Operator& op) {
    EXPECT_EQ(FontOf(op, u"idxCaption"), "KRDialogsCaption");
    for (const StringView control : {u"txtPath", u"txtFullPath"})
      EXPECT_EQ(FontOf(op, control), "KRDialogsInput") << ToUtf8(control);
    for (const StringView control : {u"lblPathName", u"lblDrivers", u"lblExtention", u"cboDrivers",
                                     u"cboExtention", u"grdFolders", u"grdFiles"}) {
      EXPECT_EQ(FontOf(op, control), "KRDialogsText") << ToUtf8(control);
    }
  });
}

}  // namespace
}  // namespace krx::test
