#include <windows.h>

#include <commctrl.h>  // builds on the one above

#include <algorithm>
#include <set>

#include "Desk.h"
#include "ListsTest.h"
#include "ScreenPixels.h"
#include "driver/Input.h"
#include "ports/win32/Screen.h"

// The scroll bars of lists, long messages and lists that drop: drawn by us, worked like others.
namespace krx::test {

namespace {

enum class Side { Left, Right };

// What the client area leaves beside it within the window's edges.
RECT BarOf(HWND window, Side side = Side::Right) {
  RECT whole{};
  RECT area{};
  GetWindowRect(window, &whole);
  GetClientRect(window, &area);
  MapWindowPoints(window, nullptr, reinterpret_cast<POINT*>(&area), 2);
  const LONG edge = area.top - whole.top;
  if (side == Side::Left) return {whole.left + edge, area.top, area.left, area.bottom};
  return {area.right, area.top, whole.right - edge, area.bottom};
}

LONG WidthOf(const RECT& place) {
  return place.right - place.left;
}

// The middle of the bar, so far from its upper end, or from its lower one when negative.
POINT On(const RECT& bar, LONG y) {
  return {(bar.left + bar.right) / 2, y < 0 ? bar.bottom + y : bar.top + y};
}

std::set<COLORREF> Colors(const RECT& place) {
  const auto pixels = ScreenPixels(place);
  return {pixels.begin(), pixels.end()};
}

HWND ListOfCombo(HWND combo) {
  COMBOBOXINFO info{};
  info.cbSize = sizeof info;
  GetComboBoxInfo(combo, &info);
  return info.hwndList;
}

class ScrollBars : public ListsTest {
 protected:
  ScrollBars() { form.lvw.SetRows(ListsForm::Rows(100)); }

  static int PageOf(const List& list) {
    return static_cast<int>(SendMessageW(list.TheWindow().Handle(), LVM_GETCOUNTPERPAGE, 0, 0));
  }
  void AwaitTop(Person& person, int top) {
    person.Await([&] { return form.lvw.TopRow() == top; }, "row " + std::to_string(top));
  }
};

TEST_F(ScrollBars, GoByRowsAndPages) {
  WorkWith(form.lvw, [this](Person& person, const List& list) {
    const RECT bar = BarOf(list.TheWindow().Handle());
    const int page = PageOf(list);
    ASSERT_GT(page, 2);
    person.ClickAt(On(bar, -4));
    AwaitTop(person, 1);
    person.ClickAt(On(bar, 4));
    AwaitTop(person, 0);
    person.ClickAt(On(bar, -WidthOf(bar) - 4));
    AwaitTop(person, page);
    person.ClickAt(On(bar, WidthOf(bar) + 2));
    AwaitTop(person, 0);
  });
}

TEST_F(ScrollBars, FollowTheThumbWhereverItIsDragged) {
  WorkWith(form.lvw, [this](Person& person, const List& list) {
    const RECT bar = BarOf(list.TheWindow().Handle());
    const POINT thumb = On(bar, WidthOf(bar) + 6);
    person.DragTo(thumb, {thumb.x + 200, bar.bottom + 50});  // the pointer may leave the bar
    AwaitTop(person, 100 - PageOf(list));
    person.DragTo(On(bar, -WidthOf(bar) - 6), {thumb.x, bar.top - 50});
    AwaitTop(person, 0);
  });
}

TEST_F(ScrollBars, GoOnWhileTheyAreHeld) {
  WorkWith(form.lvw, [this](Person& person, const List& list) {
    const RECT bar = BarOf(list.TheWindow().Handle());
    const POINT down = On(bar, -4);
    person.MoveTo(down);
    drive::PressMouse(drive::MouseButton::Left, down);
    person.Await([&] { return form.lvw.TopRow() > 3; }, "rows that go on");
    drive::ReleaseMouse(drive::MouseButton::Left, down);
    person.Await([&] { return GetCapture() == nullptr; }, "the release");
  });
}

TEST_F(ScrollBars, SelectNothingAndLeaveTheKeyboardWhereItIs) {
  NoteRows(form.lvw);
  form.grd.SetRows(ListsForm::FingerRows(3));
  WorkWith(form.lvw, [this](Person& person, const List& list) {
    person.Press(VK_TAB);
    const List grid = ListOf(person, form.grd);
    person.AwaitFocus(grid.TheWindow().Handle());
    person.ClickAt(On(BarOf(list.TheWindow().Handle()), -4));
    AwaitTop(person, 1);
    person.AwaitFocus(grid.TheWindow().Handle());
  });
  EXPECT_EQ(events, "");
}

TEST_F(ScrollBars, AreNotThereWhereAllRowsAreSeen) {
  form.lvw.SetRows(ListsForm::Rows(3));
  form.Soon([this] { form.lvw.SetRows(ListsForm::Rows(100)); });
  WorkWith(form.lvw, [this](Person& person, const List& list) {
    const HWND window = list.TheWindow().Handle();
    const LONG usual = GetSystemMetrics(SM_CXVSCROLL);
    person.Await([&] { return WidthOf(BarOf(window)) == usual; }, "a bar for more rows");
    form.Soon([this] { form.lvw.SetRows(ListsForm::Rows(3)); });
    person.Await([&] { return WidthOf(BarOf(window)) == 0; }, "room for the rows again");
  });
}

TEST_F(ScrollBars, OfMirroredFormsAreOnTheLeft) {
  form.AsksRightToLeft = [] { return true; };
  WorkWith(form.lvw, [this](Person& person, const List& list) {
    const RECT bar = BarOf(list.TheWindow().Handle(), Side::Left);
    EXPECT_EQ(WidthOf(bar), GetSystemMetrics(SM_CXVSCROLL));
    person.Await([&] { return Colors(bar).contains(kLight.Border); }, "the thumb");
    person.ClickAt(On(bar, -4));
    AwaitTop(person, 1);
  });
}

TEST_F(ScrollBars, HaveTheColoursOfTheTheme) {
  form.Panel.Theme = Theme::Dark;
  const ui::Palette dark = ColorsOf(Theme::Dark);
  WorkWith(form.lvw, [&](Person& person, const List& list) {
    const RECT bar = BarOf(list.TheWindow().Handle());
    const auto seen = [&](COLORREF thumb, const char* what) {
      person.Await(
          [&] {
            const auto colors = Colors(bar);
            return colors.contains(dark.Face) && colors.contains(thumb) &&
                   !colors.contains(GetSysColor(COLOR_BTNFACE));
          },
          what);
    };
    seen(dark.Border, "the thumb");
    const POINT thumb = On(bar, WidthOf(bar) + 6);
    person.MoveTo(thumb);
    seen(dark.Text, "the thumb under the pointer");
    drive::PressMouse(drive::MouseButton::Left, thumb);
    seen(dark.Accent, "the thumb that is held");
    drive::ReleaseMouse(drive::MouseButton::Left, thumb);
    person.PointAway();
    seen(dark.Border, "the thumb again");
  });
}

// Columns that are wider than their list, and the bar below them.
class LevelBars : public ScrollBars {
 protected:
  LevelBars() {
    form.Panel.Theme = Theme::Dark;
    form.lvw.Columns = {{u"Name", 4000}, {u"State", 2000}};
  }
  static RECT LevelBarOf(HWND window) {
    RECT whole{};
    RECT area{};
    GetWindowRect(window, &whole);
    GetClientRect(window, &area);
    MapWindowPoints(window, nullptr, reinterpret_cast<POINT*>(&area), 2);
    return {area.left, area.bottom, area.right, whole.bottom - GetSystemMetrics(SM_CYEDGE)};
  }
};

TEST_F(LevelBars, HaveTheColoursOfTheTheme) {
  const ui::Palette dark = ColorsOf(Theme::Dark);
  WorkWith(form.lvw, [&](Person& person, const List& list) {
    const HWND window = list.TheWindow().Handle();
    person.PointAway();
    const RECT bar = LevelBarOf(window);
    EXPECT_EQ(bar.bottom - bar.top, GetSystemMetrics(SM_CXVSCROLL));
    const std::set<COLORREF> foreign{GetSysColor(COLOR_BTNFACE), GetSysColor(COLOR_SCROLLBAR),
                                     RGB(255, 255, 255)};
    person.Await(
        [&] {
          const auto colors = Colors(bar);
          return colors.contains(dark.Face) && colors.contains(dark.Border) &&
                 std::none_of(colors.begin(), colors.end(),
                              [&](COLORREF color) { return foreign.contains(color); });
        },
        "the bar in the theme's colours");
  });
}

TEST_F(LevelBars, MoveTheColumns) {
  WorkWith(form.lvw, [&](Person& person, const List& list) {
    const HWND window = list.TheWindow().Handle();
    const RECT bar = LevelBarOf(window);
    const LONG y = (bar.top + bar.bottom) / 2;
    const auto left = [&] {
      RECT header{};
      GetWindowRect(ListView_GetHeader(window), &header);
      return header.left;
    };
    const LONG home = left();
    person.ClickAt({bar.right - 4, y});
    person.Await([&] { return left() < home; }, "a step");
    person.ClickAt({bar.left + 4, y});
    person.Await([&] { return left() == home; }, "a step back");
    const LONG begin = bar.left + (bar.bottom - bar.top) + 8;
    person.DragTo({begin, y}, {bar.right, y});
    const LONG hidden = ListView_GetColumnWidth(window, 0) + ListView_GetColumnWidth(window, 1) -
                        (bar.right - bar.left);
    person.Await([&] { return left() == home - hidden; }, "the end");
    EXPECT_EQ(form.lvw.SelectedRow(), ui::RowList::kNoRow);
  });
}

TEST_F(LevelBars, BeginAtTheRightWhereTextsDo) {
  form.AsksRightToLeft = [] { return true; };
  WorkWith(form.lvw, [&](Person& person, const List& list) {
    const HWND window = list.TheWindow().Handle();
    const RECT bar = LevelBarOf(window);
    const auto right = [&] {
      RECT header{};
      GetWindowRect(ListView_GetHeader(window), &header);
      return header.right;
    };
    const LONG home = right();
    person.ClickAt({bar.left + 4, (bar.top + bar.bottom) / 2});
    person.Await([&] { return right() > home; }, "a step");
  });
}

// Seven millimetres.
TEST_F(ScrollBars, OfTouchListsThatDropAreWideEnoughForAFinger) {
  form.Panel.Theme = Theme::Dark;
  const ui::Palette dark = ColorsOf(Theme::Dark);
  for (int i = 0; i < 30; ++i)
    form.cboTouch.AddItem(u"entry " + ToString(i), ui::ComboBox::kAtEnd);
  WorkWith(form.lvw, [&](Person& person, const List& list) {
    const HWND combo = person.Control(GetAncestor(list.TheWindow().Handle(), GA_ROOT), u"cboTouch");
    person.Click(combo);
    person.Await([&] { return IsWindowVisible(ListOfCombo(combo)); }, "the list");
    const HWND dropped = ListOfCombo(combo);
    const RECT bar = BarOf(dropped);
    EXPECT_GE(win32::Screen::Of(combo).Scale.ToTwips(static_cast<int>(WidthOf(bar))),
              7 * 1440 / 25.4);
    person.Await(
        [&] {
          const auto colors = Colors(bar);
          return colors.contains(dark.Face) && colors.contains(dark.Border);
        },
        "the theme's colours");
    RECT rows{};
    GetClientRect(dropped, &rows);
    MapWindowPoints(dropped, nullptr, reinterpret_cast<POINT*>(&rows), 2);
    person.Await([&] { return Colors(rows).contains(dark.FieldText); }, "the entries");
    const auto top = [&] { return SendMessageW(dropped, LB_GETTOPINDEX, 0, 0); };
    person.ClickAt(On(bar, -4));
    person.Await([&] { return top() == 1; }, "the next row");
    const POINT thumb = On(bar, WidthOf(bar) + 8);
    person.DragTo(thumb, {thumb.x, bar.bottom + 50});
    person.Await([&] { return top() == 22; }, "the last of 30 rows, eight of which are seen");
    EXPECT_TRUE(IsWindowVisible(dropped));
    RECT row{};
    SendMessageW(dropped, LB_GETITEMRECT, 24, reinterpret_cast<LPARAM>(&row));
    POINT at{row.left + 20, (row.top + row.bottom) / 2};
    ClientToScreen(dropped, &at);
    person.ClickAt(at);
    person.Await([&] { return form.cboTouch.Text() == u"entry 24"; }, "the choice");
  });
}

TEST(LongMessageBar, HasTheColoursOfTheThemeAndIsDragged) {
  Desk desk;
  String text = u"line";
  for (int i = 0; i < 500; ++i)
    text += u"\nline";
  RunWith([&] { desk.Dialog->KRMsgBox(text, 4 + 48, u"Title"); },
          [&](Person& person) {
            const HWND box = person.AwaitForm(u"FMessageBox");
            const HWND message = person.Control(box, u"idxMessage");
            const RECT bar = BarOf(message);
            EXPECT_EQ(WidthOf(bar), GetSystemMetrics(SM_CXVSCROLL));
            person.Await([&] { return Colors(bar).contains(kLight.Border); }, "the thumb");
            const auto info = [&] {
              SCROLLINFO now{};
              now.cbSize = sizeof now;
              now.fMask = SIF_POS | SIF_RANGE | SIF_PAGE;
              GetScrollInfo(message, SB_VERT, &now);
              return now;
            };
            const POINT thumb = On(bar, WidthOf(bar) + 6);
            person.DragTo(thumb, {thumb.x, bar.bottom + 50});
            const int last = info().nMax - static_cast<int>(info().nPage) + 1;
            person.Await([&] { return info().nPos == last; }, "the last line");
            person.Click(person.Control(box, u"keyButton(1)"));
          });
}

}  // namespace

}  // namespace krx::test
