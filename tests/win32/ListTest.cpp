#include <gtest/gtest.h>
#include <windows.h>

#include <commctrl.h>  // builds on the one above

#include "ListsTest.h"
#include "driver/Input.h"
#include "ui/Keyboard.h"

namespace krx::test {

namespace {

class Lists : public ListsTest {
 protected:
  Lists() {
    form.lvw.SetRows(ListsForm::Rows(100));
    NoteRows(form.lvw);
    form.lvw.MouseDown = [this](int button, int, Twips, Twips) { Note("down", button); };
    form.lvw.MouseUp = [this](int button, int, Twips, Twips) { Note("up", button); };
  }
  void Work(const std::function<void(Person&, const List&)>& person) { WorkWith(form.lvw, person); }
};

TEST_F(Lists, TellTheirRowsAndTitlesToOthers) {
  Work([](Person&, const List& list) {
    EXPECT_EQ(list.Count(), 100);
    EXPECT_EQ(list.Columns(), 3);
    EXPECT_EQ(list.Title(0), L"Name");
    EXPECT_EQ(list.Title(2), L"Comment");
    EXPECT_EQ(list.Cell(0, 0), L"a 0");
    EXPECT_EQ(list.Cell(27, 0), L"b 27");
    EXPECT_EQ(list.Cell(99, 2), L"row 99");
    EXPECT_EQ(list.Selected(), -1);
    EXPECT_EQ(list.Top(), 0);
  });
  EXPECT_EQ(events, "");
}

TEST_F(Lists, AClickSelectsAndIsReportedOnceAfterTheRelease) {
  Work([this](Person& person, const List& list) {
    list.Click(3);
    Await(person, "down1 S3 up1 C3 ");
    list.Click(5);
    Await(person, "down1 S3 up1 C3 down1 S5 up1 C5 ");
    EXPECT_EQ(list.Selected(), 5);
  });
  EXPECT_EQ(form.lvw.SelectedRow(), 5);
}

TEST_F(Lists, ADoubleClickIsAClickAndThenTheDoubleClick) {
  Work([this](Person& person, const List& list) {
    list.DoubleClick(4);
    Await(person, "down1 S4 up1 C4 down1 up1 D4 ");
  });
}

TEST_F(Lists, AClickOnTheSelectedRowIsAClickAgain) {
  form.lvw.SelectRow(2);
  events.clear();
  Work([this](Person& person, const List& list) {
    list.Click(2);
    Await(person, "down1 up1 C2 ");
  });
}

// What is a double click is told by time and place: a hand is not so steady that an edge between
// two rows would tell.
TEST_F(Lists, ADoubleClickAcrossAnEdgeBelongsToTheFirstRow) {
  Work([this](Person& person, const List& list) {
    const RECT row = list.RowBounds(1);
    drive::ClickMouseTwice(drive::MouseButton::Left, {row.left + 40, row.bottom - 1},
                           {row.left + 40, row.bottom});
    Await(person, "down1 S1 up1 C1 down1 up1 D1 ");
    EXPECT_EQ(list.Selected(), 1);
  });
}

TEST_F(Lists, TheSecondPressSelectsNothingThoughTheFirstClickScrolledTheList) {
  Work([this](Person& person, const List& list) {
    form.lvw.RowClick = [this](int row) {
      Note("C", row);
      form.lvw.TopRow = 40;
    };
    list.DoubleClick(2);
    Await(person, "down1 S2 up1 C2 down1 up1 D2 ");
    EXPECT_EQ(list.Selected(), 2);
  });
}

TEST_F(Lists, OtherRowsThatTheFirstClickBroughtGetNoDoubleClick) {
  Work([this](Person& person, const List& list) {
    form.lvw.RowClick = [this](int row) {
      Note("C", row);
      form.lvw.SetRows(ListsForm::Rows(50));
    };
    list.DoubleClick(2);
    Await(person, "down1 S2 up1 C2 S-1 down1 up1 ");
    EXPECT_EQ(list.Selected(), -1);
  });
}

TEST_F(Lists, ARowThatComesUnderAPressBecauseOfItIsNotMeant) {
  Work([this](Person& person, const List& list) {
    form.lvw.MouseDown = [this](int, int, Twips, Twips) {
      Note("down", 1);
      form.lvw.SetRows(ListsForm::Rows(50));
    };
    list.Click(2);
    Await(person, "down1 ");
    EXPECT_EQ(list.Selected(), -1);
  });
}

TEST_F(Lists, ReleasedElsewhereThePressedRowIsSelectedButNotClicked) {
  Work([this](Person& person, const List& list) {
    const RECT row = list.RowBounds(1);
    const RECT other = list.RowBounds(4);
    form.lvw.RowLeft = [this] { Note("left", 1); };
    person.DragTo({row.left + 40, row.top + 5}, {other.left + 40, other.top + 5});
    Await(person, "down1 S1 up1 left1 ");
  });
}

TEST_F(Lists, TheRightButtonRaisesItsEventsOnce) {
  Work([this](Person& person, const List& list) {
    const RECT row = list.RowBounds(1);
    person.RightClickAt({row.left + 40, row.top + 5});
    Await(person, "down2 up2 ");
    EXPECT_EQ(list.Selected(), -1);
  });
}

TEST_F(Lists, ArrowsHomeAndEndWalk) {
  Work([this](Person& person, const List& list) {
    person.Press(VK_DOWN);
    Await(person, "S0 ");
    person.Press(VK_DOWN);
    Await(person, "S0 S1 ");
    person.Press(VK_END);
    Await(person, "S0 S1 S99 ");
    person.Await([&] { return list.Top() > 0; }, "the end of the list");
    EXPECT_EQ(form.lvw.TopRow(), list.Top());
    person.Press(VK_UP);
    Await(person, "S0 S1 S99 S98 ");
    person.Press(VK_HOME);
    Await(person, "S0 S1 S99 S98 S0 ");
    person.Await([&] { return form.lvw.TopRow() == 0; }, "the start of the list");
    person.Press(VK_NEXT);
    person.Await([&] { return form.lvw.SelectedRow() > 3; }, "the next page");
  });
}

TEST_F(Lists, TheFirstRowHasTheFrameThoughNoneIsSelected) {
  Work([](Person&, const List& list) {
    const HWND window = list.TheWindow().Handle();
    EXPECT_EQ(SendMessageW(window, LVM_GETNEXTITEM, static_cast<WPARAM>(-1), LVNI_FOCUSED), 0);
    EXPECT_EQ(list.Selected(), -1);
  });
  EXPECT_EQ(events, "");
}

TEST_F(Lists, TypedLettersLookRowsUp) {
  Work([this](Person& person, const List&) {
    person.Press('K');
    Await(person, "S10 ");
    person.Press('K');  // once more: the next one
    Await(person, "S10 S36 ");
  });
}

TEST_F(Lists, SeveralLettersAreOneBeginning) {
  form.lvw.SetRows({{u"Anna"}, {u"Ben"}, {u"Benno"}, {u"Bert"}, {u"Carl"}});
  Work([this](Person& person, const List&) {
    person.Type({'B', 'E', 'R'});
    person.Await([&] { return form.lvw.SelectedRow() == 3; }, "Bert");
  });
}

TEST_F(Lists, LettersAreNoAccessKeysButWithAlt) {
  bool pressed = false;
  form.keyOK.Click = [&] { pressed = true; };
  Work([&](Person& person, const List&) {
    person.Press('O');
    Await(person, "S14 ");
    EXPECT_FALSE(pressed);
    person.Press('O', VK_MENU);
    person.Await([&] { return pressed; }, "the button");
  });
}

TEST_F(Lists, AKeyHandlerMayKeepAKeyFromTheList) {
  form.lvw.KeyDown = [this](int& key, int) {
    Note("K", key);
    if (key == VK_UP) key = 0;
  };
  form.lvw.SelectRow(5);
  events.clear();
  Work([this](Person& person, const List&) {
    person.Press(VK_UP);
    Await(person, "K38 ");
    person.Press(VK_DOWN);
    Await(person, "K38 K40 S6 ");
  });
}

TEST_F(Lists, EnterIsAKeyOfItsHandlers) {
  form.lvw.KeyPress = [this](char16_t& c) {
    if (c == ui::kKeyEnter) events += "enter ";
  };
  Work([this](Person& person, const List&) {
    person.Press(VK_RETURN);
    Await(person, "enter ");
  });
}

TEST_F(Lists, TabLeavesAndReturns) {
  Work([](Person& person, const List& list) {
    const HWND own = list.TheWindow().Handle();
    person.Press(VK_TAB);
    person.AwaitFocus(person.Control(GetParent(own), u"grd"));
    person.Press(VK_TAB, VK_SHIFT);
    person.AwaitFocus(own);
  });
}

TEST_F(Lists, FollowTheSelectionOfTheForm) {
  form.lvw.SelectRow(50);
  form.lvw.EnsureVisible(50);
  events.clear();
  form.Soon([&] { form.lvw.SelectRow(1); });
  Work([this](Person& person, const List& list) {
    person.Await([&] { return list.Selected() == 1; }, "the selection");
    EXPECT_GT(list.Top(), 0);  // selecting alone does not scroll
    EXPECT_EQ(form.lvw.TopRow(), list.Top());
  });
  EXPECT_EQ(events, "S1 ");
}

TEST_F(Lists, FollowTheTopRowOfTheFormAndCorrectIt) {
  form.lvw.TopRow = 30;
  Work([this](Person& person, const List& list) {
    EXPECT_EQ(list.Top(), 30);
    form.Soon([&] { form.lvw.TopRow = 500; });
    person.Await([&] { return list.Top() > 30; }, "the end");
    EXPECT_EQ(list.Top(), 100 - list.InSight());
    person.Await([&] { return form.lvw.TopRow() == list.Top(); }, "the corrected row");
  });
}

TEST_F(Lists, TheWheelScrollsAndTheFormKnows) {
  Work([this](Person& person, const List& list) {
    const RECT row = list.RowBounds(2);
    person.MoveTo({row.left + 40, row.top + 5});
    person.Turn(-2);
    person.Await([&] { return list.Top() > 0; }, "the wheel");
    person.Await([&] { return form.lvw.TopRow() == list.Top(); }, "the form");
    EXPECT_EQ(list.Selected(), -1);
  });
  EXPECT_EQ(events, "");
}

TEST_F(Lists, OtherRowsWithTheSameSelectionStayWhereTheyAre) {
  form.lvw.TopRow = 40;
  form.Soon([&] {
    form.lvw.SuspendDrawing();
    form.lvw.SetRows(ListsForm::Rows(90));
    form.lvw.SelectRow(45);
    form.lvw.ResumeDrawing();
    events += "refreshed ";
  });
  Work([this](Person& person, const List& list) {
    list.WaitForCount(90);
    list.WaitForSelected(45);
    EXPECT_EQ(list.Top(), 40);
    person.Press(VK_DOWN);
    person.Await([&] { return list.Selected() == 46; }, "the next row");
  });
  EXPECT_EQ(events, "S45 refreshed S46 ");
}

TEST_F(Lists, RowsThatAreGoneTakeTheSelectionAlong) {
  form.lvw.SelectRow(70);
  form.lvw.TopRow = 60;
  events.clear();
  form.Soon([&] { form.lvw.SetRows(ListsForm::Rows(3)); });
  Work([this](Person& person, const List& list) {
    list.WaitForCount(3);
    list.WaitForSelected(-1);
    person.Await([&] { return form.lvw.TopRow() == 0; }, "the top");
    EXPECT_EQ(list.Top(), 0);
  });
  EXPECT_EQ(events, "S-1 ");
}

TEST_F(Lists, AWidthThatTheOperatorGivesIsTheModels) {
  Work([this](Person& person, const List& list) {
    const int before = list.ColumnWidth(0);
    const RECT place = HeaderOf(list);
    const POINT edge{place.left + before - 1, (place.top + place.bottom) / 2};
    person.DragTo(edge, {edge.x + 60, edge.y});
    person.Await([&] { return list.ColumnWidth(0) == before + 60; }, "the width");
    person.Await(
        [&] { return form.lvw.Columns()[0].Width == 1500 + 60 * platform.TwipsPerPixel(); },
        "the model's width");
    EXPECT_EQ(form.lvw.Columns()[1].Width, 1200);
    EXPECT_EQ(form.lvw.Columns()[2].Width, 0);
  });
}

TEST_F(Lists, ADisabledListTakesNothing) {
  form.lvw.Enabled = false;
  ShowWith(form, [this](Person& person) {
    const HWND window = person.AwaitForm(u"FLists");
    const List list{drive::Window(person.Control(window, u"lvw"))};
    person.AwaitFocus(person.Control(window, u"grd"));
    const RECT row = list.RowBounds(2);
    person.ClickAt({row.left + 40, row.top + 5});
    person.Press('K');
    person.Press(VK_TAB, VK_SHIFT);
    person.AwaitFocus(person.Control(window, u"keyOK"));
    EXPECT_EQ(list.Selected(), -1);
    person.Press(VK_ESCAPE);
  });
  EXPECT_EQ(events, "");
}

TEST_F(Lists, AskOnlyForTheRowsThatAreSeen) {
  form.lst.TabIndex = 0;
  form.lst.Resize(1000000);
  WorkWith(form.lst, [](Person& person, const List& list) {
    EXPECT_EQ(list.Count(), 1000000);
    person.Press(VK_END);
    list.WaitForSelected(999999);
    EXPECT_EQ(list.Cell(999999, 0), L"folder 999999");
  });
  EXPECT_LT(form.lst.Asked, 2000);
}

TEST_F(Lists, GrowWithoutMovingWhatIsSeen) {
  form.lst.TabIndex = 0;
  form.lst.Resize(100);
  form.lst.SelectRow(60);
  form.lst.TopRow = 55;
  form.Soon([&] { form.lst.Grow(5000); });
  WorkWith(form.lst, [](Person&, const List& list) {
    list.WaitForCount(5000);
    EXPECT_EQ(list.Selected(), 60);
    EXPECT_EQ(list.Top(), 55);
  });
  EXPECT_EQ(form.lst.TopRow(), 55);
}

TEST_F(Lists, TheFirstRowsOfAnEmptyListBringTheFrame) {
  form.lst.TabIndex = 0;
  form.Soon([&] { form.lst.Grow(10); });
  WorkWith(form.lst, [](Person&, const List& list) {
    const HWND window = list.TheWindow().Handle();
    list.WaitForCount(10);
    EXPECT_EQ(SendMessageW(window, LVM_GETNEXTITEM, static_cast<WPARAM>(-1), LVNI_FOCUSED), 0);
  });
  EXPECT_EQ(events, "");
}

}  // namespace

}  // namespace krx::test
