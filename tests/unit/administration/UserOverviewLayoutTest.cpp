#include "administration/AdministrationTest.h"

// Figures: 8 points, so a character is 80 twips wide and a line 192 high. The caption line is 285,
// so the frame begins at 285 + 120 = 405; its caption takes 192 and 60, so the list begins at 405 +
// 252 = 657. All buttons are as wide as "keyDeactivateUser", 17 * 80 + 180 = 1540, and 192 + 180 =
// 372 high, one every 432.
namespace krx::test {
namespace {

class UserOverviewLayout : public AdministrationTest {
 protected:
  void Show(const Script& script) {
    ExpectOverview([&](Operator& op) {
      script(op);
      op.Click(u"keyOK");
    });
    dialog->KRUser();
  }
  static Rect At(Operator& op, StringView control) { return op.Get(control).Bounds(); }
  static Size Outer(Operator& op) { return {op.Form().Width(), op.Form().Height()}; }
};

TEST_F(UserOverviewLayout, TheListTakesItsLengthsWhereTheScreenHasRoom) {
  platform.Area = {0, 0, 19200, 15360};
  Show([](Operator& op) {
    // Frame: 13500 + 2 * 120 wide, 252 + 4500 + 120 high. Buttons begin at 120 + 13740 + 120; the
    // last ends with the frame, at 405 + 4872 - 372.
    EXPECT_EQ(At(op, u"lvwUser"), (Rect{240, 657, 13500, 4500}));
    EXPECT_EQ(At(op, u"fraUser"), (Rect{120, 405, 13740, 4872}));
    EXPECT_EQ(At(op, u"keyAddUser"), (Rect{13980, 405, 1540, 372}));
    EXPECT_EQ(At(op, u"keyChangeUser"), (Rect{13980, 837, 1540, 372}));
    EXPECT_EQ(At(op, u"keyDeactivateUser"), (Rect{13980, 405 + 4 * 432, 1540, 372}));
    EXPECT_EQ(At(op, u"keyOK"), (Rect{13980, 4905, 1540, 372}));
    EXPECT_EQ(Outer(op), (Size{15640, 5397}));
    EXPECT_EQ(At(op, u"idxCaption"), (Rect{0, 0, 15640, 285}));
  });
}

TEST_F(UserOverviewLayout, TheFormIsNoLargerThanASmallScreen) {
  platform.Area = {0, 0, 9000, 4000};
  Show([](Operator& op) {
    // List: 9000 - 1540 - 5 * 120 wide, 4000 - 657 - 2 * 120 high.
    EXPECT_EQ(At(op, u"lvwUser"), (Rect{240, 657, 6860, 3103}));
    EXPECT_EQ(Outer(op), (Size{9000, 4000}));
  });
}

TEST_F(UserOverviewLayout, TheListIsNeverSmallerThanCanBeRead) {
  platform.Area = {0, 0, 3000, 2000};
  Show([](Operator& op) { EXPECT_EQ(At(op, u"lvwUser"), (Rect{240, 657, 2400, 2400})); });
}

TEST_F(UserOverviewLayout, HighButtonsMakeTheListHigherAndItsRowsNoHigherThanAFingerNeeds) {
  platform.Area = {0, 0, 19200, 15360};
  dialog->Settings().ButtonMinHeight = 900;
  Show([](Operator& op) {
    // Buttons: 2.5 * 900 = 2250 wide, 6 * 900 + 5 * 60 = 5700 high together, as the frame is then:
    // 252 + 5328 + 120.
    EXPECT_EQ(At(op, u"fraUser"), (Rect{120, 405, 13740, 5700}));
    EXPECT_EQ(At(op, u"lvwUser"), (Rect{240, 657, 13500, 5328}));
    EXPECT_EQ(At(op, u"keyDeactivateUser"), (Rect{13980, 405 + 4 * 960, 2250, 900}));
    EXPECT_EQ(At(op, u"keyOK"), (Rect{13980, 405 + 5 * 960, 2250, 900}));
    EXPECT_EQ(Outer(op), (Size{16350, 6225}));
    EXPECT_EQ(op.Get<ui::ListView>(u"lvwUser").RowMinHeight(), 525);
  });
}

TEST_F(UserOverviewLayout, HighButtonsAreSeenWholeWhereTheListHasToBeLow) {
  platform.Area = {0, 0, 19200, 4000};
  dialog->Settings().ButtonMinHeight = 900;
  Show([](Operator& op) {
    // The buttons end at 405 + 5700, below the frame's 657 + 3103 + 120.
    EXPECT_EQ(At(op, u"lvwUser"), (Rect{240, 657, 13500, 3103}));
    EXPECT_EQ(At(op, u"keyOK"), (Rect{13980, 405 + 5 * 960, 2250, 900}));
    EXPECT_EQ(op.Form().Height(), 405 + 5700 + 120);
  });
}

TEST_F(UserOverviewLayout, ColumnsHaveTheirTitlesWidthAlsoWhereTheUsersCannotBeRead) {
  int calls = -log.Calls();
  Show([&](Operator&) { calls += log.Calls(); });
  log.FailCall(calls, false);  // the last one of opening asks for the names
  Show([](Operator& op) {
    const auto& list = op.Get<ui::ListView>(u"lvwUser");
    for (int column = 0; column < 6; ++column) {
      EXPECT_GT(list.TitleWidth(column), 0);
      EXPECT_EQ(list.Columns()[static_cast<std::size_t>(column)].Width, list.TitleWidth(column));
    }
  });
  EXPECT_TRUE(log.Injected());
  EXPECT_EQ(log.EntriesOf("UserAdministration2.GetUserNames").size(), 1u);
}

}  // namespace
}  // namespace krx::test
