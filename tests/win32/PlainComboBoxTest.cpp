#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <utility>

#include "ListsForm.h"
#include "Person.h"
#include "ScreenPixels.h"

// A combo box that is not for fingers is as low as the system's own.
namespace krx::test {

namespace {

class PlainComboBox : public testing::Test {
 protected:
  PlainComboBox() {
    for (const auto* const item : {u"C:", u"D:", u"E:"})
      form.cbo.AddItem(item, ui::ComboBox::kAtEnd);
    form.cbo.Select(1);
  }
  ~PlainComboBox() override {
    if (font_) DeleteObject(font_);
  }
  void Work(const std::function<void(Person&, HWND)>& person) {
    ShowWith(form, [&](Person& somebody) {
      somebody.PointAway();
      person(somebody, somebody.Control(somebody.AwaitForm(u"FLists"), u"cbo"));
      somebody.Press(VK_ESCAPE);
    });
  }
  // The system's drop-down list in the same font beside ours, which goes with the form.
  void AddSystemBox() {
    const HWND window = GetActiveWindow();
    const int height =
        -static_cast<int>(std::lround(form.cbo.Font().Size * 20 / platform.TwipsPerPixel()));
    font_ = CreateFontW(height, 0, 0, 0, FW_NORMAL, 0, 0, 0, DEFAULT_CHARSET, 0, 0, 0, 0,
                        reinterpret_cast<const wchar_t*>(form.cbo.Font().Name.c_str()));
    system_ = CreateWindowExW(0, L"COMBOBOX", L"", WS_CHILD | WS_VISIBLE | CBS_DROPDOWNLIST, 0, 0,
                              100, 200, window, nullptr, nullptr, nullptr);
    SendMessageW(system_, WM_SETFONT, reinterpret_cast<WPARAM>(font_), TRUE);
  }
  static int RowHeight(HWND combo) {
    return static_cast<int>(SendMessageW(combo, CB_GETITEMHEIGHT, 0, 0));
  }
  // The field without its border and its button.
  static COLORREF FieldColor(HWND combo) {
    COMBOBOXINFO info{};
    info.cbSize = sizeof info;
    GetComboBoxInfo(combo, &info);
    RECT field = info.rcItem;
    MapWindowPoints(combo, nullptr, reinterpret_cast<POINT*>(&field), 2);
    return GroundOf(ScreenPixels(field));
  }

  // Of the middle of its left edge.
  static COLORREF EdgeColor(HWND combo) {
    RECT edge{};
    GetWindowRect(combo, &edge);
    InflateRect(&edge, 0, -5);
    edge.right = edge.left + 1;
    return GroundOf(ScreenPixels(edge));
  }

  win32::Win32Platform platform;
  ListsForm form{platform};
  HWND system_ = nullptr;
  HFONT font_ = nullptr;
};

TEST_F(PlainComboBox, HasRowsAsLowAsTheSystems) {
  form.Soon([this] { AddSystemBox(); });
  Work([this](Person& person, HWND combo) {
    person.Await([&] { return system_ && RowHeight(system_) > 0; }, "the system's box");
    EXPECT_GE(RowHeight(combo), RowHeight(system_));
    EXPECT_LE(RowHeight(combo) - RowHeight(system_),
              std::lround(75 / platform.TwipsPerPixel()));  // 1.3 millimetres of air
  });
}

// Entries of the box, and rows that its list shows at once.
class PlainList : public PlainComboBox, public testing::WithParamInterface<std::pair<int, int>> {};

TEST_P(PlainList, ShowsAllItsEntriesOrEightOfThem) {
  form.cbo.Clear();
  for (int i = 0; i < GetParam().first; ++i)
    form.cbo.AddItem(u"entry " + ToString(i), ui::ComboBox::kAtEnd);
  Work([](Person& person, HWND combo) {
    COMBOBOXINFO info{};
    info.cbSize = sizeof info;
    GetComboBoxInfo(combo, &info);
    person.Click(combo);
    person.Await([&] { return IsWindowVisible(info.hwndList) != FALSE; }, "the list");
    // The system shows a long list before it has cut it down to whole rows; a message that it
    // answers comes behind both.
    EXPECT_TRUE(SendMessageW(combo, CB_GETDROPPEDSTATE, 0, 0));
    RECT list{};
    GetClientRect(info.hwndList, &list);
    EXPECT_EQ(list.bottom / RowHeight(combo), GetParam().second);
    EXPECT_LT(list.bottom % RowHeight(combo), 3);
    person.Press(VK_ESCAPE);
  });
}

INSTANTIATE_TEST_SUITE_P(Entries, PlainList,
                         testing::Values(std::pair{0, 1}, std::pair{1, 1}, std::pair{3, 3},
                                         std::pair{8, 8}, std::pair{12, 8}));

TEST_F(PlainComboBox, IsGreyWhenItIsDisabled) {
  form.Soon([this] { form.cbo.Enabled = false; });
  Work([](Person& person, HWND combo) {
    person.Await([&] { return FieldColor(combo) == kLight.Face; }, "grey");
  });
}

TEST_F(PlainComboBox, IsWhiteAndHasARingWithTheKeyboard) {
  Work([](Person& person, HWND combo) {
    person.Await([&] { return FieldColor(combo) == kLight.Field; }, "white");
    EXPECT_EQ(EdgeColor(combo), kLight.Border);
    person.Click(combo);
    person.PointAway();
    person.Press(VK_ESCAPE);
    person.Await([&] { return EdgeColor(combo) == kLight.Focus; }, "a ring");
    EXPECT_EQ(FieldColor(combo), kLight.Field);
  });
}

TEST_F(PlainComboBox, ClearedItIsEmptyAndShowsItsTextStill) {
  form.Soon([this] { form.cbo.Clear(); });
  Work([](Person& person, HWND combo) {
    person.Await([&] { return SendMessageW(combo, CB_GETCOUNT, 0, 0) == 0; }, "no entries");
    EXPECT_EQ(TextOf(combo), u"D:");
    EXPECT_EQ(SendMessageW(combo, CB_GETCURSEL, 0, 0), CB_ERR);
  });
}

}  // namespace

}  // namespace krx::test
