#include <gtest/gtest.h>
#include <windows.h>

#include <algorithm>
#include <cmath>

#include "ListsTest.h"
#include "driver/Input.h"

namespace krx::test {

namespace {

using std::chrono::milliseconds;

// A finger that holds still for 60 ms gives no push. The list counts from when it has heard of the
// last movement, so on a busy machine far more than that has to pass.
constexpr milliseconds kRest{1000};

constexpr int kLooks = 60;  // at rows that move or rest

class Grids : public ListsTest {
 protected:
  Grids() {
    form.grd.TabIndex = 0;
    form.grd.SetRows(ListsForm::FingerRows(200));
    NoteRows(form.grd);
  }
  void Work(const std::function<void(Person&, const List&)>& person) { WorkWith(form.grd, person); }
  static POINT PointOn(const List& list, int row) {
    const RECT bounds = list.RowBounds(row);
    return {bounds.left + 60, (bounds.top + bounds.bottom) / 2};
  }
  // A push that takes the machine too long is a drag, so it is tried again.
  static void PushUp(Person& person, const List& list) {
    person.Await(
        [&] {
          const int top = list.Top();
          person.Push(PointOn(list, top + 6), PointOn(list, top + 1));
          for (int look = 0; look < kLooks && list.Top() <= top + 6; ++look)
            Sleep(5);
          return list.Top() > top + 6;
        },
        "gliding");
  }
  // Waits until the rows have come to rest and returns the one at the top. Every look is answered
  // by the thread that moves them, so it has had its time to.
  static int Rest(Person& person, const List& list) {
    int top = list.Top();
    int same = 0;
    person.Await(
        [&] {
          const int now = list.Top();
          same = now == top ? same + 1 : 0;
          top = now;
          return same == kLooks;
        },
        "the rows at rest");
    return top;
  }
};

TEST_F(Grids, RowsAreNeverLowerThanAFinger) {
  Work([this](Person&, const List& list) {
    const RECT row = list.RowBounds(0);
    // 7 millimetres are 397 twips.
    EXPECT_GE(static_cast<float>(row.bottom - row.top) * platform.TwipsPerPixel(), 397);
    EXPECT_LE(static_cast<float>(row.bottom - row.top) * platform.TwipsPerPixel(), 450);
  });
}

TEST_F(Grids, RowsGrowWithTheFont) {
  form.grd.Font = Font{u"Tahoma", 30};
  Work([this](Person&, const List& list) {
    const RECT row = list.RowBounds(0);
    EXPECT_GE(static_cast<float>(row.bottom - row.top) * platform.TwipsPerPixel(), 600);
  });
}

TEST_F(Grids, RowsAndColumnsGrowWithTheResolutionOfTheMonitor) {
  form.grd.SelectRow(3);
  Work([this](Person& person, const List& list) {
    const HWND window = GetParent(list.TheWindow().Handle());
    const int before = list.ColumnWidth(0);
    RECT place{};
    GetWindowRect(window, &place);
    const auto dpi = static_cast<int>(std::lround(1440 / platform.TwipsPerPixel())) * 3 / 2;
    SendMessageW(window, WM_DPICHANGED, MAKEWPARAM(dpi, dpi), reinterpret_cast<LPARAM>(&place));
    const RECT row = list.RowBounds(0);
    EXPECT_GE((row.bottom - row.top) * 1440 / dpi, 397);
    EXPECT_NEAR(list.ColumnWidth(0), before * 3 / 2, 1);
    EXPECT_EQ(list.Selected(), 3);
    person.Press(VK_DOWN);
    person.Await([&] { return list.Selected() == 4; }, "the next row");
  });
}

TEST_F(Grids, AShortTouchSelectsAndClicks) {
  Work([this](Person& person, const List& list) {
    person.ClickAt(PointOn(list, 2));
    Await(person, "S2 C2 ");
    list.DoubleClick(3);
    Await(person, "S2 C2 S3 C3 D3 ");
    EXPECT_EQ(list.Top(), 0);
  });
}

TEST_F(Grids, ATouchThatTremblesIsStillAClick) {
  Work([this](Person& person, const List& list) {
    const POINT at = PointOn(list, 2);
    person.DragTo(at, {at.x + 2, at.y + 3});
    Await(person, "S2 C2 ");
  });
}

TEST_F(Grids, NothingIsSelectedWhileTheTouchLasts) {
  form.grd.MouseUp = [this](int, int, Twips, Twips) { Note("up", form.grd.SelectedRow()); };
  form.grd.MouseDown = [this](int, int, Twips, Twips) { Note("down", form.grd.SelectedRow()); };
  Work([this](Person& person, const List& list) {
    person.ClickAt(PointOn(list, 2));
    Await(person, "down-1 S2 up2 C2 ");
  });
}

TEST_F(Grids, ADragMovesTheRowsAlongAndNeitherSelectsNorClicks) {
  Work([this](Person& person, const List& list) {
    const POINT from = PointOn(list, 5);
    const POINT to = PointOn(list, 1);
    person.DragTo(from, to, kRest);
    person.Await([&] { return list.Top() == 4; }, "four rows further");
    EXPECT_EQ(Rest(person, list), 4);
    person.Await([&] { return form.grd.TopRow() == 4; }, "the form's top row");
    person.DragTo(to, {to.x, to.y + (from.y - to.y) / 2}, kRest);
    person.Await([&] { return list.Top() == 2; }, "two rows back");
    EXPECT_EQ(list.Selected(), -1);
  });
  EXPECT_EQ(events, "");
}

TEST_F(Grids, APushLetsTheRowsGlideOn) {
  Work([this](Person& person, const List& list) {
    PushUp(person, list);
    const int top = Rest(person, list);
    EXPECT_LT(top, 190);
    EXPECT_EQ(form.grd.TopRow(), top);
  });
  EXPECT_EQ(events, "");
}

TEST_F(Grids, ATouchStopsTheGlidingAndClicksNothing) {
  form.grd.SetRows(ListsForm::FingerRows(3000));
  Work([this](Person& person, const List& list) {
    const POINT to = PointOn(list, 1);
    for (int i = 0; i < 2; ++i) {
      PushUp(person, list);
      drive::ClickMouse(drive::MouseButton::Left, to);  // where the push has ended
      const int stopped = list.Top();
      EXPECT_LE(Rest(person, list) - stopped, 1);
      person.Press(VK_HOME);
      person.Await([&] { return list.Top() == 0; }, "the start");
    }
  });
  EXPECT_EQ(events, "S0 ");
}

TEST_F(Grids, WheelKeysAndTheFormStopTheGliding) {
  form.grd.SetRows(ListsForm::FingerRows(3000));
  Work([](Person& person, const List& list) {
    PushUp(person, list);
    person.Press(VK_HOME);
    person.Await([&] { return list.Top() == 0; }, "the start");
    EXPECT_EQ(Rest(person, list), 0);
  });
}

TEST_F(Grids, TheWheelScrolls) {
  Work([](Person& person, const List& list) {
    person.MoveTo(PointOn(list, 2));
    person.Turn(-1);
    person.Await([&] { return list.Top() > 0; }, "the wheel");
    person.Turn(5);
    person.Await([&] { return list.Top() == 0; }, "back");
  });
  EXPECT_EQ(events, "");
}

TEST_F(Grids, ArrowsWalkAndLettersLookTheNamesUp) {
  form.grd.SetRows({{u"", u".."}, {u" +", u"alpha"}, {u"", u"beta"}, {u"", u"gamma"}});
  Work([this](Person& person, const List&) {
    person.Press(VK_DOWN);
    Await(person, "S0 ");
    person.Press(VK_DOWN);
    Await(person, "S0 S1 ");
    person.Press('G');
    Await(person, "S0 S1 S3 ");
  });
}

TEST_F(Grids, RowsThatComeWhileAFingerDragsDoNotStopIt) {
  form.grd.MouseMove = [this](int button, int, Twips, Twips) {
    if (button != 0 && form.grd.RowCount() < 400) form.grd.AddRow({u"", u"late"});
  };
  Work([this](Person& person, const List& list) {
    person.DragTo(PointOn(list, 5), PointOn(list, 1), kRest);
    person.Await([&] { return list.Top() == 4; }, "four rows further");
    EXPECT_GT(list.Count(), 200);
  });
  EXPECT_EQ(events, "");
}

TEST_F(Grids, ADisabledGridIsNotDragged) {
  form.grd.Enabled = false;
  ShowWith(form, [this](Person& person) {
    const List list = ListOf(person, form.grd);
    person.DragTo(PointOn(list, 5), PointOn(list, 1), kRest);
    EXPECT_EQ(list.Top(), 0);
    person.Press(VK_ESCAPE);
  });
  EXPECT_EQ(events, "");
}

TEST_F(Grids, AGridDisabledUnderTheFingerLetsGo) {
  form.grd.MouseMove = [this](int button, int, Twips, Twips) {
    if (button != 0) form.grd.Enabled = false;
  };
  ShowWith(form, [this](Person& person) {
    const List list = ListOf(person, form.grd);
    person.DragTo(PointOn(list, 5), PointOn(list, 1), kRest);
    person.AwaitFocus(ListOf(person, form.lvw).TheWindow().Handle());
    GUITHREADINFO info{};
    info.cbSize = sizeof info;
    GetGUIThreadInfo(GetWindowThreadProcessId(list.TheWindow().Handle(), nullptr), &info);
    EXPECT_EQ(info.hwndCapture, nullptr);
    EXPECT_EQ(Rest(person, list), list.Top());
    person.Press(VK_ESCAPE);
  });
  EXPECT_EQ(events, "");
}

}  // namespace

}  // namespace krx::test
