#include "ContractTest.h"
#include "ui/RowList.h"

namespace krx::test {

namespace {

// A list of the mouse, one for fingers, and a box before them; Esc hides the form.
class ListForm : public ui::Form {
 public:
  explicit ListForm(ui::Platform& platform) : Form(platform, u"FLists") {
    Width = 6000;
    Height = 4500;
    lvw.Place({180, 180, 2700, 3000});
    lvw.Columns = {{u"Name", 1200}, {u"Number", 900}};
    grd.Place({3060, 180, 2700, 3000});
    txtName.Place({180, 3400, 2700, 0});
    keyClose.Place({180, 3900, 1200, 375});
    keyClose.Caption = u"&Close";
    CancelKey = &keyClose;
    keyClose.Click = [this] { Hide(); };
  }

  ui::ListView lvw{*this, u"lvw"};
  ui::KRXGrid grd{*this, u"grd"};
  ui::TextBox txtName{*this, u"txtName"};
  ui::KRXKey keyClose{*this, u"keyClose"};
};

class ListContract : public testing::Test {
 protected:
  ListContract() {
    lists.lvw.SetRows({{u"anna", u"1"}, {u"ben", u"2"}, {u"benno", u"3"}, {u"clara", u"4"}});
    lists.grd.SetRows({{u"first"}, {u"second"}, {u"third"}, {u"fourth"}});
    for (ui::RowList* const list :
         {static_cast<ui::RowList*>(&lists.lvw), static_cast<ui::RowList*>(&lists.grd)}) {
      list->SelectionChanged = [this, list] { Note("S", list->SelectedRow()); };
      list->RowClick = [this](int row) { Note("C", row); };
      list->RowDoubleClick = [this](int row) { Note("D", row); };
      list->MouseUp = [this, list](int, int, Twips, Twips) { Note("U", list->SelectedRow()); };
    }
  }
  void Note(const char* what, int row) {
    log += what;
    log += std::to_string(row);
  }
  void Show(const HandScript& script) {
    port->Show(lists, [&](Hand& hand) {
      hand.AwaitFocus(u"lvw");
      script(hand);
      hand.Press(ui::kKeyEscape);
    });
  }

  const std::unique_ptr<Port> port = MakePort();
  ListForm lists{port->Platform()};
  std::string log;
};

TEST_F(ListContract, AClickSelectsBeforeTheReleaseAndIsOneClick) {
  Show([](Hand& hand) {
    hand.ClickRow(u"lvw", 2);
    hand.ClickRow(u"lvw", 0);
  });
  EXPECT_EQ(log, "S2U2C2S0U0C0");
}

TEST_F(ListContract, ADoubleClickIsAClickAndADoubleClick) {
  Show([](Hand& hand) { hand.DoubleClickRow(u"lvw", 1); });
  EXPECT_EQ(log, "S1U1C1U1D1");
}

TEST_F(ListContract, AShortTouchIsAClick) {
  Show([](Hand& hand) {
    hand.ClickRow(u"grd", 1);
    hand.AwaitFocus(u"grd");
    hand.DoubleClickRow(u"grd", 3);
  });
  EXPECT_EQ(log, "S1U1C1S3U3C3U3D3");
}

TEST_F(ListContract, ArrowsWalkAndStopAtTheEnds) {
  Show([this](Hand& hand) {
    for (const int key : {ui::kKeyDown, ui::kKeyDown, ui::kKeyEnd, ui::kKeyDown, ui::kKeyUp,
                          ui::kKeyHome, ui::kKeyUp})
      hand.Press(key);
    hand.Await([this] { return log == "S0S1S3S2S0"; });
  });
  EXPECT_EQ(log, "S0S1S3S2S0");
}

TEST_F(ListContract, LettersLookUpTheNextRowAndThenTheLongerBeginning) {
  Show([this](Hand& hand) {
    hand.Type(u"benn");
    hand.Await([this] { return lists.lvw.SelectedRow() == 2; });
  });
  EXPECT_EQ(log, "S1S2");
}

TEST_F(ListContract, WithoutASelectionTheFirstLetterMayFindTheFirstRow) {
  lists.lvw.SetRows({{u"anna"}, {u"alfred"}, {u"ben"}});
  Show([this](Hand& hand) {
    hand.Type(u"a");
    hand.Await([this] { return lists.lvw.SelectedRow() >= 0; });
  });
  EXPECT_EQ(log, "S0");
}

TEST_F(ListContract, AnArrowWithoutASelectionBeginsAtTheTop) {
  Show([this](Hand& hand) {
    hand.Press(ui::kKeyUp);
    hand.Await([this] { return lists.lvw.SelectedRow() == 0; });
  });
  EXPECT_EQ(log, "S0");
}

TEST_F(ListContract, ClicksOnRowsThatAHandlerExchangedAreNoClicks) {
  lists.lvw.MouseUp = [this](int, int, Twips, Twips) {
    lists.lvw.SetRows({{u"only"}});
    log += "U";
  };
  Show([this](Hand& hand) {
    hand.ClickRow(u"lvw", 0);
    hand.Await([this] { return log.size() > 3; });
  });
  EXPECT_EQ(log, "S0S-1U");
}

TEST_F(ListContract, OtherRowsThatTheFirstClickBroughtGetNoDoubleClick) {
  lists.lvw.RowClick = [this](int row) {
    Note("C", row);
    lists.lvw.SetRows({{u"dora"}, {u"emil"}, {u"fritz"}});
  };
  Show([this](Hand& hand) {
    hand.DoubleClickRow(u"lvw", 1);
    hand.Await([this] { return log.ends_with("U-1"); });
  });
  EXPECT_EQ(log, "S1U1C1S-1U-1");
}

TEST_F(ListContract, APressThatEndsElsewhereSelectsAndIsNoClick) {
  lists.lvw.RowLeft = [this] { Note("L", lists.lvw.SelectedRow()); };
  Show([this](Hand& hand) {
    hand.PressRowAndLeave(u"lvw", 2);
    hand.Await([this] { return log.ends_with("L2"); });
  });
  EXPECT_EQ(log, "S2U2L2");
}

TEST_F(ListContract, AHandlerOfAClickMayCloseTheForm) {
  lists.lvw.RowClick = [this](int row) {
    Note("C", row);
    lists.Hide();
  };
  port->Show(lists, [](Hand& hand) {
    hand.AwaitFocus(u"lvw");
    hand.ClickRow(u"lvw", 1);
  });
  EXPECT_EQ(log, "S1U1C1");
  EXPECT_FALSE(lists.Visible());
}

TEST_F(ListContract, TabPassesThroughListsAndADisabledOneIsPassedOver) {
  lists.grd.Enabled = false;
  Show([](Hand& hand) {
    hand.Press(ui::kKeyTab);
    hand.AwaitFocus(u"txtName");
    hand.Press(ui::kKeyTab, ui::kShift);
    hand.AwaitFocus(u"lvw");
  });
  EXPECT_EQ(log, "");
}

TEST_F(ListContract, AnEmptyListTakesKeysAndSelectsNothing) {
  lists.lvw.Clear();
  Show([](Hand& hand) {
    hand.Press(ui::kKeyDown);
    hand.Press(ui::kKeyEnd);
    hand.Type(u"a");
    hand.Press(ui::kKeyTab);
    hand.AwaitFocus(u"grd");
  });
  EXPECT_EQ(log, "");
}

}  // namespace

}  // namespace krx::test
