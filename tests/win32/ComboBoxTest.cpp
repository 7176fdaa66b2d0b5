#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <string>
#include <vector>

#include "ControlsForm.h"
#include "Person.h"
#include "ui/Keyboard.h"

namespace krx::test {

namespace {

COMBOBOXINFO InfoOf(HWND combo) {
  COMBOBOXINFO info{};
  info.cbSize = sizeof info;
  GetComboBoxInfo(combo, &info);
  return info;
}

bool Open(HWND combo) {
  return SendMessageW(combo, CB_GETDROPPEDSTATE, 0, 0) != 0;
}

int TopRow(HWND combo) {
  return static_cast<int>(SendMessageW(combo, CB_GETTOPINDEX, 0, 0));
}

// Middle of a row of the open list, in pixels of the screen.
POINT Row(HWND combo, int row) {
  const HWND list = InfoOf(combo).hwndList;
  RECT place{};
  SendMessageW(list, LB_GETITEMRECT, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&place));
  POINT middle{(place.left + place.right) / 2, (place.top + place.bottom) / 2};
  ClientToScreen(list, &middle);
  return middle;
}

class ComboBox : public testing::Test {
 protected:
  ComboBox() {
    form.cboName.TabIndex = 0;
    form.cboName.Change = [this] { events += "C"; };
    form.cboName.SelectionChanged = [this] {
      events += "S";
      events += std::to_string(form.cboName.ListIndex());
    };
    form.cboName.KeyPress = [this](char16_t& c) {
      if (c == ui::kKeyEnter) events += "E";
    };
    form.AddNames(20);
  }
  // The person acts with the focus in the combo box; Esc leaves.
  void Work(const std::function<void(Person&, HWND)>& person) {
    ShowWith(form, [&](Person& somebody) {
      somebody.PointAway();  // a list that opens under the pointer marks the row there
      const HWND combo = somebody.Control(somebody.AwaitForm(u"FControls"), u"cboName");
      somebody.AwaitFocus(combo);
      person(somebody, combo);
      somebody.Press(VK_ESCAPE);
    });
    EXPECT_EQ(form.Cancels, 1);
  }
  static void Await(Person& person, HWND combo, bool open) {
    person.Await([&] { return Open(combo) == open; }, open ? "the list" : "the list's end");
  }

  win32::Win32Platform platform;
  ControlsForm form{platform};
  std::string events;
};

TEST_F(ComboBox, OpensByClickF4AndAltDown) {
  Work([](Person& person, HWND combo) {
    person.Click(combo);
    Await(person, combo, true);
    person.Press(VK_ESCAPE);
    Await(person, combo, false);
    person.Press(VK_F4);
    Await(person, combo, true);
    person.Press(VK_ESCAPE);
    Await(person, combo, false);
    person.Press(VK_DOWN, VK_MENU);
    Await(person, combo, true);
    person.Press(VK_ESCAPE);
    Await(person, combo, false);
  });
  EXPECT_EQ(events, "");
}

TEST_F(ComboBox, ARowThatIsClickedIsChosenOnce) {
  Work([](Person& person, HWND combo) {
    person.Click(combo);
    Await(person, combo, true);
    person.ClickAt(Row(combo, 2));
    Await(person, combo, false);
    person.Await([&] { return TextOf(combo) == u"c user 2"; }, "the text");
  });
  EXPECT_EQ(events, "CS2");
}

TEST_F(ComboBox, ArrowsInTheOpenListChooseNothingBeforeEnter) {
  Work([this](Person& person, HWND combo) {
    person.Press(VK_F4);
    Await(person, combo, true);
    for (int i = 0; i < 3; ++i)
      person.Press(VK_DOWN);
    person.Await([&] { return SendMessageW(combo, CB_GETCURSEL, 0, 0) == 2; }, "the third row");
    EXPECT_EQ(events, "");
    person.Press(VK_RETURN);
    Await(person, combo, false);
    person.Await([&] { return events.size() == 4; }, "the choice and the key");
  });
  EXPECT_EQ(events, "CS2E");
  EXPECT_EQ(form.cboName.ListIndex(), 2);
}

TEST_F(ComboBox, ATextThatComesWhileTheListIsOpenLeavesTheOperatorWhereHeIs) {
  form.cboName.KeyDown = [this](int& key, int) {
    if (key == VK_F8) form.cboName.SetItem(0, u"another text");
  };
  Work([this](Person& person, HWND combo) {
    person.Press(VK_F4);
    Await(person, combo, true);
    person.Press(VK_DOWN);
    person.Await([&] { return SendMessageW(combo, CB_GETCURSEL, 0, 0) == 0; }, "the first row");
    person.Press(VK_DOWN);
    person.Await([&] { return SendMessageW(combo, CB_GETCURSEL, 0, 0) == 1; }, "the next row");
    person.Press(VK_F8);
    person.Await([&] { return form.cboName.Items()[0] == u"another text"; }, "the text");
    EXPECT_TRUE(Open(combo));
    EXPECT_EQ(SendMessageW(combo, CB_GETCURSEL, 0, 0), 1);
    person.Press(VK_RETURN);
    Await(person, combo, false);
    person.Await([&] { return events.size() == 4; }, "the choice and the key");
    std::array<wchar_t, 64> first{};
    SendMessageW(combo, CB_GETLBTEXT, 0, reinterpret_cast<LPARAM>(first.data()));
    EXPECT_STREQ(first.data(), L"another text");
  });
  EXPECT_EQ(events, "CS1E");
}

TEST_F(ComboBox, EscLeavesTheOpenListWithoutAChoice) {
  form.cboName.Select(1);
  events.clear();
  Work([](Person& person, HWND combo) {
    person.Press(VK_F4);
    Await(person, combo, true);
    person.Press(VK_DOWN);
    person.Await([&] { return SendMessageW(combo, CB_GETCURSEL, 0, 0) == 2; }, "the next row");
    person.Press(VK_ESCAPE);
    Await(person, combo, false);
    EXPECT_EQ(SendMessageW(combo, CB_GETCURSEL, 0, 0), 1);
    EXPECT_EQ(TextOf(combo), u"b user 1");
  });
  EXPECT_EQ(events, "");
  EXPECT_EQ(form.cboName.ListIndex(), 1);
}

TEST_F(ComboBox, ArrowsAndFirstLettersChooseInTheClosedList) {
  Work([this](Person& person, HWND combo) {
    person.Press(VK_DOWN);
    person.Press(VK_DOWN);
    person.Press('H');
    person.Await([&] { return TextOf(combo) == u"h user 7"; }, "the letter");
    person.Press(VK_UP);
    person.Press(VK_END);
    person.Await([&] { return TextOf(combo) == u"t user 19"; }, "the last row");
  });
  EXPECT_EQ(events, "CS0CS1CS7CS6CS19");
}

TEST_F(ComboBox, ALetterLooksUpInTheOpenListToo) {
  Work([this](Person& person, HWND combo) {
    person.Press(VK_F4);
    Await(person, combo, true);
    person.Press('K');
    person.Await([&] { return SendMessageW(combo, CB_GETCURSEL, 0, 0) == 10; }, "the row");
    person.Press(VK_RETURN);
    person.Await([&] { return events.size() == 5; }, "the choice");
  });
  EXPECT_EQ(events, "CS10E");
}

TEST_F(ComboBox, EnterOnTheClosedListIsAKeyPress) {
  Work([this](Person& person, HWND) {
    person.Press(VK_RETURN);
    person.Await([&] { return !events.empty(); }, "the key");
  });
  EXPECT_EQ(events, "E");
}

TEST_F(ComboBox, ShowsATextThatIsNoEntry) {
  form.cboName.Select(3);
  events.clear();
  form.Soon([&] { form.cboName.Text = u"nobody"; });
  Work([](Person& person, HWND combo) {
    person.Await([&] { return TextOf(combo) == u"nobody"; }, "the text");
    EXPECT_EQ(SendMessageW(combo, CB_GETCURSEL, 0, 0), CB_ERR);
    person.Click(combo);
    Await(person, combo, true);
    person.ClickAt(Row(combo, 3));
    Await(person, combo, false);
  });
  EXPECT_EQ(events, "CCS3");
}

TEST_F(ComboBox, ScrollsThrough500Entries) {
  form.AddNames(480);
  Work([](Person& person, HWND combo) {
    ASSERT_EQ(SendMessageW(combo, CB_GETCOUNT, 0, 0), 500);
    person.Press(VK_F4);
    Await(person, combo, true);
    for (int i = 0; i < 3; ++i)
      person.Press(VK_NEXT);
    person.Await([&] { return TopRow(combo) > 0; }, "the next page");
    person.Press(VK_END);
    person.Await([&] { return TopRow(combo) >= 490; }, "the end");
    const int end = TopRow(combo);
    person.Turn(20);
    person.Await([&] { return TopRow(combo) < end; }, "the wheel");
    // The arrow at the lower end of the scroll bar.
    person.Press(VK_HOME);
    person.Await([&] { return TopRow(combo) == 0; }, "the start");
    RECT list{};
    GetWindowRect(InfoOf(combo).hwndList, &list);
    const int bar = GetSystemMetrics(SM_CXVSCROLL);
    person.ClickAt({list.right - bar / 2 - 1, list.bottom - bar / 2 - 1});
    person.Await([&] { return TopRow(combo) > 0; }, "the scroll bar");
    EXPECT_TRUE(Open(combo));
    person.ClickAt(Row(combo, TopRow(combo)));
    Await(person, combo, false);
  });
  EXPECT_EQ(std::count(events.begin(), events.end(), 'S'), 1);
  EXPECT_EQ(std::count(events.begin(), events.end(), 'C'), 1);
}

TEST_F(ComboBox, EntriesAddedWhileTheFormIsUpCanBeChosen) {
  form.Soon([&] { form.cboName.AddItem(u"zz late", 0); });
  Work([this](Person& person, HWND combo) {
    person.Await([&] { return SendMessageW(combo, CB_GETCOUNT, 0, 0) == 21; }, "the entry");
    person.Press('Z');
    person.Await([&] { return TextOf(combo) == u"zz late"; }, "the choice");
  });
  EXPECT_EQ(events, "CS0");
}

TEST_F(ComboBox, TabPassesOnAndADisabledOneIsPassedOver) {
  ShowWith(form, [](Person& person) {
    const HWND window = person.AwaitForm(u"FControls");
    person.AwaitFocus(person.Control(window, u"cboName"));
    person.Press(VK_TAB);
    person.AwaitFocus(person.Control(window, u"txtPassword"));
    person.Press(VK_TAB, VK_SHIFT);
    person.AwaitFocus(person.Control(window, u"cboName"));
    person.Press(VK_ESCAPE);
  });
  form.cboName.Enabled = false;
  ShowWith(form, [](Person& person) {
    const HWND window = person.AwaitForm(u"FControls");
    EXPECT_FALSE(IsWindowEnabled(person.Control(window, u"cboName")));
    person.AwaitFocus(person.Control(window, u"txtPassword"));
    person.Press(VK_ESCAPE);
  });
}

TEST_F(ComboBox, AltF4ClosesTheFormThoughTheListIsOpen) {
  ShowWith(form, [](Person& person) {
    const HWND combo = person.Control(person.AwaitForm(u"FControls"), u"cboName");
    person.AwaitFocus(combo);
    person.Press(VK_F4);
    Await(person, combo, true);
    person.Press(VK_F4, VK_MENU);
  });
  EXPECT_EQ(form.Cancels, 1);
  EXPECT_EQ(events, "");
}

TEST_F(ComboBox, AFormThatGoesWhileTheListIsOpenIsUsableAgain) {
  form.cboName.KeyDown = [this](int& key, int) {
    if (key == 'M') form.Hide();
  };
  ShowWith(form, [](Person& person) {
    const HWND combo = person.Control(person.AwaitForm(u"FControls"), u"cboName");
    person.Press(VK_F4);
    Await(person, combo, true);
    person.Press('M');
  });
  EXPECT_FALSE(form.cboName.DroppedDown);
  Work([](Person&, HWND combo) { EXPECT_FALSE(Open(combo)); });
}

}  // namespace

}  // namespace krx::test
