#include <algorithm>
#include <vector>

#include "ListsTest.h"
#include "ScreenPixels.h"
#include "driver/Input.h"

namespace krx::test {

namespace {

class ListLooks : public ListsTest {
 protected:
  ListLooks() {
    form.lvw.SetRows(ListsForm::Rows(5));
    form.grd.SetRows(ListsForm::FingerRows(5));
    form.lst.Resize(4);
  }
  static std::vector<COLORREF> Pixels(const List& list, int row) {
    RECT place = list.RowBounds(row);
    InflateRect(&place, -1, -1);
    return ScreenPixels(place);
  }
  static bool Shows(const List& list, int row, COLORREF color) {
    return Contains(Pixels(list, row), color);
  }
  static bool Contains(const std::vector<COLORREF>& pixels, COLORREF color) {
    return std::find(pixels.begin(), pixels.end(), color) != pixels.end();
  }
  static COLORREF Ground(const List& list, int row) { return GroundOf(Pixels(list, row)); }
  static void AwaitGround(Person& person, const List& list, int row, COLORREF color) {
    COLORREF seen = 0;
    const RECT place = list.RowBounds(row);
    EXPECT_TRUE(Within([&] { return (seen = Ground(list, row)) == color; }))
        << "colour " << std::hex << color << " of row " << std::dec << row << " at " << place.left
        << ',' << place.top << ", not " << std::hex << seen << person.WhatIsThere();
  }
};

TEST_F(ListLooks, RowsHaveTheColorsOfTheirList) {
  form.lvw.BackColor = 0x00CCEEFFu;
  form.lvw.ForeColor = 0x00800000u;
  form.Soon([this] { form.lst.BackColor = 0x00DDFFDDu; });
  WorkWith(form.lvw, [this](Person& person, const List& list) {
    AwaitGround(person, list, 1, 0x00CCEEFFu);
    EXPECT_TRUE(Shows(list, 1, 0x00800000u));
    AwaitGround(person, ListOf(person, form.lst), 1, 0x00DDFFDDu);
  });
}

// The system's colours of windows, black and white for as long as it lives.
class HighContrast {
 public:
  HighContrast() { SetSysColors(kCount, kIndexes, kContrast); }
  ~HighContrast() { SetSysColors(kCount, kIndexes, before_); }
  HighContrast(const HighContrast&) = delete;
  HighContrast& operator=(const HighContrast&) = delete;

 private:
  static constexpr int kCount = 2;
  static constexpr int kIndexes[kCount] = {COLOR_WINDOW, COLOR_WINDOWTEXT};
  static constexpr COLORREF kContrast[kCount] = {RGB(0, 0, 0), RGB(255, 255, 0)};
  const COLORREF before_[kCount] = {GetSysColor(COLOR_WINDOW), GetSysColor(COLOR_WINDOWTEXT)};
};

TEST_F(ListLooks, RowsOfHighContrastFollowTheColorsOfTheSystem) {
  form.Panel.Theme = Theme::HighContrast;
  const COLORREF usual = GetSysColor(COLOR_WINDOW);
  WorkWith(form.lvw, [&](Person& person, const List& list) {
    AwaitGround(person, list, 1, usual);
    {
      const HighContrast contrast;
      AwaitGround(person, list, 1, RGB(0, 0, 0));
      EXPECT_TRUE(Shows(list, 1, RGB(255, 255, 0)));
    }
    AwaitGround(person, list, 1, usual);
  });
}

// The titles, too, and what the columns leave of the line; they are drawn without the system's
// help.
TEST_F(ListLooks, TheHeaderHasOneGroundFromEndToEnd) {
  form.lvw.Columns = {{u"First", 900}, {u"Second", 900}};
  WorkWith(form.lvw, [&](Person& person, const List& list) {
    RECT whole = HeaderOf(list);
    InflateRect(&whole, 0, -2);
    const RECT first{whole.left, whole.top, whole.left + list.ColumnWidth(0), whole.bottom};
    const RECT rest{first.right + list.ColumnWidth(1), whole.top, whole.right, whole.bottom};
    ASSERT_LT(rest.left + 10, rest.right);
    const COLORREF face = kLight.Header;
    person.Await([&] { return GroundOf(ScreenPixels(first)) == face; }, "the title's ground");
    EXPECT_TRUE(Contains(ScreenPixels(first), kLight.Text));
    EXPECT_EQ(ScreenPixels(rest), std::vector<COLORREF>(ScreenPixels(rest).size(), face));
  });
}

TEST_F(ListLooks, TheSelectedRowIsSeenWhereverTheKeyboardIs) {
  form.lvw.SelectRow(2);
  form.grd.SelectRow(2);
  form.lst.SelectRow(2);
  const COLORREF highlight = kLight.Selection;
  WorkWith(form.lvw, [&](Person& person, const List& list) {
    AwaitGround(person, list, 2, highlight);
    AwaitGround(person, list, 1, kLight.Field);
    // A touch panel has no keyboard to tell lists apart.
    AwaitGround(person, ListOf(person, form.grd), 2, highlight);
    const COLORREF elsewhere = Ground(ListOf(person, form.lst), 2);
    EXPECT_NE(elsewhere, highlight);
    EXPECT_NE(elsewhere, kLight.Field);
    person.Press(VK_TAB);
    AwaitGround(person, list, 2, elsewhere);
  });
}

TEST_F(ListLooks, ATouchedRowIsSeenUntilItIsClickedOrDragged) {
  form.grd.SetRows(ListsForm::FingerRows(30));
  WorkWith(form.lvw, [&](Person& person, const List&) {
    const List grid = ListOf(person, form.grd);
    const auto middle = [&](int row) {
      const RECT place = grid.RowBounds(row);
      return POINT{(place.left + place.right) / 2, (place.top + place.bottom) / 2};
    };
    person.MoveTo(middle(1));
    drive::PressMouse(drive::MouseButton::Left, middle(1));
    AwaitGround(person, grid, 1, kLight.Quiet);
    drive::ReleaseMouse(drive::MouseButton::Left, middle(1));
    AwaitGround(person, grid, 1, kLight.Selection);
    const POINT from = middle(3);
    person.MoveTo(from);
    drive::PressMouse(drive::MouseButton::Left, from);
    AwaitGround(person, grid, 3, kLight.Quiet);
    const POINT to = middle(1);
    person.MoveTo(to);
    person.Await([&] { return form.grd.TopRow() > 0; }, "the rows that follow");
    AwaitGround(person, grid, 3, kLight.Field);
    drive::ReleaseMouse(drive::MouseButton::Left, to);
  });
}

TEST_F(ListLooks, ADisabledListIsGrey) {
  form.grd.Enabled = false;
  form.grd.SelectRow(2);
  form.lst.Columns = {{u"Folder", 0}};
  form.Soon([this] { form.lst.Enabled = false; });
  const COLORREF grey = kLight.DisabledText;
  const COLORREF black = kLight.FieldText;
  WorkWith(form.lvw, [&](Person& person, const List& list) {
    EXPECT_TRUE(Shows(list, 1, black));
    for (const int row : {1, 2}) {
      const List grid = ListOf(person, form.grd);
      person.Await([&] { return Shows(grid, row, grey) && !Shows(grid, row, black); }, "grey");
      EXPECT_NE(Ground(grid, row), kLight.Selection);
    }
    const List plain = ListOf(person, form.lst);
    person.Await([&] { return Shows(plain, 2, grey); }, "grey, too");
    person.Await([&] { return !Contains(ScreenPixels(HeaderOf(plain)), black); }, "grey titles");
  });
}

TEST_F(ListLooks, TheRowWithTheKeyboardHasAFrame) {
  WorkWith(form.lvw, [](Person& person, const List& list) {
    // Nothing is selected, so the frame alone tells the row from the others.
    const RECT place = list.RowBounds(0);
    const auto edge = [](RECT row) {
      row.bottom = row.top + 1;
      const auto points = ScreenPixels(row);
      return std::count_if(points.begin(), points.end(),
                           [](COLORREF c) { return c != kLight.Field; });
    };
    person.Await([&] { return edge(place) > 50; }, "the frame");
    EXPECT_LT(edge(list.RowBounds(3)), 10);
  });
}

TEST_F(ListLooks, PicturesStandBeforeTheRowsAndFollowTheirIndent) {
  const COLORREF kFolder = kLight.Folder;
  WorkWith(form.lvw, [&](Person& person, const List&) {
    const List list = ListOf(person, form.lst);
    person.Await([&] { return Shows(list, 1, kFolder) && Shows(list, 2, kFolder); }, "folders");
    EXPECT_FALSE(Shows(list, 0, kFolder));
    EXPECT_FALSE(Shows(list, 3, kFolder));
    const auto first = [&](int row) {
      const auto pixels = Pixels(list, row);
      const RECT place = list.RowBounds(row);
      const auto width = place.right - place.left - 2;
      std::ptrdiff_t left = width;
      for (std::size_t i = 0; i < pixels.size(); ++i)
        if (pixels[i] == kFolder)
          left = std::min<std::ptrdiff_t>(left, static_cast<std::ptrdiff_t>(i) % width);
      return left;
    };
    EXPECT_GT(first(2), first(1));
  });
}

TEST_F(ListLooks, NewRowsAreDrawnAndTheOthersAreLeftAlone) {
  form.lst.TabIndex = 0;
  form.lst.KeyDown = [this](int& key, int) {
    if (key != VK_F7) return;
    form.lst.AskedRows.clear();
    form.lst.Grow(6);
  };
  const auto drawn = [](const List& list, int row) {
    const auto pixels = Pixels(list, row);
    return std::count(pixels.begin(), pixels.end(), pixels.front()) < std::ssize(pixels);
  };
  WorkWith(form.lst, [&](Person& person, const List& list) {
    person.Await([&] { return drawn(list, 3); }, "the first rows");
    person.Press(VK_F7);
    list.WaitForCount(6);
    person.Await([&] { return drawn(list, 5); }, "the new rows");
  });
  EXPECT_EQ(form.lst.AskedRows, (std::set<int>{4, 5}));
}

TEST_F(ListLooks, RowsAreLaidOutBeforeTheFormIsSeen) {
  bool asked_unseen = false;
  form.lst.WhenAsked = [&] {
    asked_unseen = asked_unseen || !IsWindowVisible(FindWindowW(L"KRXForm", nullptr));
  };
  form.lst.TabIndex = 0;
  WorkWith(form.lst, [&](Person& person, const List&) {
    person.Await([&] { return Shows(ListOf(person, form.lst), 0, kLight.Metal); }, "a drive");
  });
  EXPECT_TRUE(asked_unseen);
}

TEST_F(ListLooks, RowsOfOneHeightHaveTheSamePictures) {
  form.lvw.RowMinHeight = 600;
  form.grd.RowMinHeight = 600;
  form.lst.RowMinHeight = 600;
  WorkWith(form.lvw, [&](Person& person, const List&) {
    const auto pictures = [&](const ui::RowList& list) {
      return SendMessageW(ListOf(person, list).TheWindow().Handle(), LVM_GETIMAGELIST, LVSIL_SMALL,
                          0);
    };
    EXPECT_NE(pictures(form.lvw), 0);
    EXPECT_EQ(pictures(form.lvw), pictures(form.grd));
    EXPECT_NE(pictures(form.lvw), pictures(form.lst));  // has pictures that are seen
  });
}

TEST_F(ListLooks, ColumnsLeaveRoomForTheScrollBarThatNewRowsBring) {
  form.lst.TabIndex = 0;
  form.Soon([this] { form.lst.Grow(1000); });
  WorkWith(form.lst, [](Person& person, const List& list) {
    const HWND window = list.TheWindow().Handle();
    list.WaitForCount(1000);
    person.Await(
        [&] {
          RECT client;
          GetClientRect(window, &client);
          return SendMessageW(window, LVM_GETCOLUMNWIDTH, 0, 0) == client.right;
        },
        "a column as wide as the room beside the scroll bar");
    RECT whole{};
    RECT client{};
    GetWindowRect(window, &whole);
    GetClientRect(window, &client);
    const int edges = 2 * GetSystemMetrics(SM_CXEDGE);
    EXPECT_EQ(whole.right - whole.left - edges - client.right, GetSystemMetrics(SM_CXVSCROLL));
    EXPECT_EQ(GetWindowLongW(window, GWL_STYLE) & WS_HSCROLL, 0);
  });
}

}  // namespace

}  // namespace krx::test
