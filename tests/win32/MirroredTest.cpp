#include <algorithm>
#include <array>
#include <vector>

#include "ListsTest.h"
#include "ScreenPixels.h"
#include "TestForm.h"
#include "driver/List.h"
#include "ports/win32/Screen.h"

// Forms of languages that are written from right to left.
namespace krx::test {

namespace {

RECT ClientOf(HWND window) {
  RECT area{};
  GetClientRect(window, &area);
  MapWindowPoints(window, nullptr, reinterpret_cast<POINT*>(&area), 2);
  return area;
}

RECT BoundsOf(HWND window) {
  RECT place{};
  GetWindowRect(window, &place);
  return place;
}

}  // namespace

class MirroredForms : public ListsTest {
 protected:
  MirroredForms() {
    form.AsksRightToLeft = [] { return true; };
    form.lvw.SetRows(ListsForm::Rows(30));
    form.grd.SetRows(ListsForm::FingerRows(30));
    form.lst.Resize(30);
  }
  // A column of the report by a point of the screen.
  static int ColumnAt(const List& list, POINT at) {
    const HWND window = list.TheWindow().Handle();
    LVHITTESTINFO hit{};
    hit.pt = at;
    ScreenToClient(window, &hit.pt);
    SendMessageW(window, LVM_SUBITEMHITTEST, 0, reinterpret_cast<LPARAM>(&hit));
    return hit.iSubItem;
  }
};

TEST_F(MirroredForms, HaveEveryControlOnTheOtherSideAtTheSameHeight) {
  std::vector<std::pair<RECT, RECT>> places;  // wanted and seen, from the form's client area
  WorkWith(form.lvw, [&](Person& person, const List&) {
    const HWND window = person.AwaitForm(u"FLists");
    const RECT area = ClientOf(window);
    const win32::Scale scale = win32::Screen::Of(window).Scale;
    for (const ui::Control* const control :
         std::array<const ui::Control*, 7>{&form.lvw, &form.grd, &form.lst, &form.cbo,
                                           &form.cboTouch, &form.keyOK, &form.keyClose}) {
      RECT seen = BoundsOf(person.Control(window, control->Name()));
      OffsetRect(&seen, -area.left, -area.top);
      const int right = area.right - area.left - scale.Pixels(control->Left());
      const int top = scale.Pixels(control->Top());
      places.push_back({{right - scale.Pixels(control->Width()), top, right,
                         top + scale.Pixels(control->Height())},
                        seen});
    }
  });
  ASSERT_EQ(places.size(), 7u);
  for (const auto& [wanted, seen] : places) {
    EXPECT_EQ(seen.left, wanted.left);
    EXPECT_EQ(seen.top, wanted.top);
    EXPECT_EQ(seen.right, wanted.right);
    EXPECT_EQ(seen.bottom, wanted.bottom);
  }
}

TEST_F(MirroredForms, HaveListsWhoseColumnsBeginAtTheRight) {
  int rightmost = -1;
  int leftmost = -1;
  WorkWith(form.lvw, [&](Person&, const List& list) {
    const RECT row = list.RowBounds(1);
    const RECT area = ClientOf(list.TheWindow().Handle());
    const LONG y = (row.top + row.bottom) / 2;
    rightmost = ColumnAt(list, {area.right - 8, y});
    leftmost = ColumnAt(list, {area.left + 8, y});
  });
  EXPECT_EQ(rightmost, 0);
  EXPECT_EQ(leftmost, 2);
}

TEST_F(MirroredForms, HaveListsThatAreClickedAndDragged) {
  NoteRows(form.lvw);
  NoteRows(form.grd);
  WorkWith(form.lvw, [&](Person& person, const List& list) {
    list.Click(2);
    Await(person, "S2 C2 ");
    const List grid = ListOf(person, form.grd);
    grid.Click(1);
    Await(person, "S2 C2 S1 C1 ");
    const RECT from = grid.RowBounds(4);
    const RECT to = grid.RowBounds(1);
    person.DragTo({(from.left + from.right) / 2, from.top + 5},
                  {(to.left + to.right) / 2, to.top + 5}, std::chrono::milliseconds(200));
    person.Await([&] { return form.grd.TopRow() == 3; }, "rows dragged");
  });
  EXPECT_EQ(events, "S2 C2 S1 C1 ");
}

// The model's points count from the left, mirrored or not.
TEST_F(MirroredForms, ReportTheMouseFromTheLeft) {
  Twips x = 0;
  form.lvw.MouseDown = [&](int, int, Twips at, Twips) { x = at; };
  Twips expected = 0;
  WorkWith(form.lvw, [&](Person& person, const List& list) {
    const RECT area = ClientOf(list.TheWindow().Handle());
    const RECT row = list.RowBounds(1);
    person.ClickAt({area.left + 50, (row.top + row.bottom) / 2});
    person.Await([&] { return x != 0; }, "press");
    expected = win32::Screen::Of(list.TheWindow().Handle()).Scale.ToTwips(50);
  });
  EXPECT_NEAR(x, expected, 15) << "a pixel may be lost between the two counts";
}

// A combo box and a list with a letter that is its own mirror image.
class FormWithLetters : public FormWithCross {
 public:
  explicit FormWithLetters(ui::Platform& platform) : FormWithCross(platform, u"FLetters") {
    Width = 4500;
    Height = 2400;
    MakeCross(keyClose, {4230, 30, 240, 240});
    keyClose.Click = [this] { Hide(); };
    cboName.AddItem(u"H", ui::ComboBox::kAtEnd);
    cboName.Select(0);
    cboName.Place({300, 600, 3000, 400});
    lvwNames.Place({300, 1200, 3000, 1000});
    lvwNames.Columns = {{u"", 0}};
    lvwNames.SetRows({{u"H"}});
  }

  ui::KRXKey keyClose{*this, u"keyClose"};
  ui::KRXComboBox cboName{*this, u"cboName"};
  ui::ListView lvwNames{*this, u"lvwNames"};
};

// How far the letter is from the edge of the field, or of its row, that it begins at.
int InsetOfLetter(bool in_list, bool mirrored) {
  win32::Win32Platform platform;
  FormWithLetters form(platform);
  form.AsksRightToLeft = [mirrored] { return mirrored; };
  int inset = 0;
  ShowWith(form, [&](Person& person) {
    person.PointAway();
    const HWND window = person.AwaitForm(u"FLetters");
    RECT place = in_list
                     ? drive::List(drive::Window(person.Control(window, u"lvwNames"))).RowBounds(0)
                     : BoundsOf(person.Control(window, u"cboName"));
    InflateRect(&place, -4, -4);  // without the ring of the focus
    const int width = place.right - place.left;
    const auto is_there = [&] {
      const std::vector<COLORREF> pixels = ScreenPixels(place);
      const COLORREF ground = GroundOf(pixels);
      int first = width;  // column of the first pixel, from where the text begins
      for (std::size_t i = 0; i < pixels.size(); ++i) {
        const int x = static_cast<int>(i % static_cast<std::size_t>(width));
        if (ui::Contrast(pixels[i], ground) > 3)
          first = std::min(first, mirrored ? width - 1 - x : x);
      }
      inset = first;
      return first < width / 2;
    };
    person.Await(is_there, "the letter");
    person.Press(VK_ESCAPE);
  });
  return inset;
}

TEST(MirroredTexts, BeginAsFarFromTheirEdgeAsOthers) {
  constexpr int kRounding = 2;  // of the letter's stems, less than a space is wide
  for (const bool in_list : {false, true})
    EXPECT_NEAR(InsetOfLetter(in_list, true), InsetOfLetter(in_list, false), kRounding) << in_list;
}

TEST(MirroredCaption, DragsTheFormWithThePointer) {
  win32::Win32Platform platform;
  TestForm form(platform);
  form.AsksRightToLeft = [] { return true; };
  Twips from = 0;
  form.idxCaption.MouseDown = [&](int, int, Twips x, Twips) { from = x; };
  form.idxCaption.MouseMove = [&](int button, int, Twips x, Twips) {
    if (button == ui::kLeftButton) form.Move(form.Left() + x - from, form.Top());
  };
  RECT before{};
  RECT after{};
  ShowWith(form, [&](Person& person) {
    const HWND window = person.AwaitForm(u"FTest");
    before = BoundsOf(window);
    person.Drag(person.Control(window, u"idxCaption"), 70, 0);
    after = BoundsOf(window);
    person.Press(VK_ESCAPE);
  });
  EXPECT_EQ(after.left - before.left, 70);
}

}  // namespace krx::test
