#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <vector>

#include "ControlsForm.h"
#include "Person.h"

namespace krx::test {

namespace {

COLORREF ColorAt(HWND window, int x, int y) {
  const HDC dc = GetDC(window);
  const COLORREF color = GetPixel(dc, x, y);
  ReleaseDC(window, dc);
  return color;
}

COLORREF Inside(HWND window) {
  RECT area{};
  GetClientRect(window, &area);
  return ColorAt(window, area.right - 4, area.bottom / 2);
}

class LabelAndFrame : public testing::Test {
 protected:
  void Work(const std::function<void(Person&, HWND)>& person) {
    ShowWith(form, [&](Person& somebody) {
      person(somebody, somebody.AwaitForm(u"FControls"));
      somebody.Press(VK_ESCAPE);
    });
  }

  win32::Win32Platform platform;
  ControlsForm form{platform};
};

TEST_F(LabelAndFrame, AccessKeysOfLabelsMoveTheFocusToTheirFields) {
  Work([](Person& person, HWND window) {
    person.Press('P', VK_MENU);
    person.AwaitFocus(person.Control(window, u"txtPassword"));
    person.Press('N', VK_MENU);
    person.AwaitFocus(person.Control(window, u"cboName"));
    person.Press('A', VK_MENU);
    person.AwaitFocus(person.Control(window, u"txtShown"));
  });
  EXPECT_TRUE(form.txtPassword.Text().Empty());
}

TEST_F(LabelAndFrame, ALabelIsTheWindowRightBeforeItsFieldAlsoOfOneThatComesLate) {
  form.txtPassword.Visible = false;
  form.Soon([&] { form.txtPassword.Visible = true; });
  Work([](Person& person, HWND window) {
    const auto before = [&](StringView field) {
      return GetWindow(person.Control(window, field), GW_HWNDPREV);
    };
    person.Await([&] { return IsWindowVisible(person.Control(window, u"txtPassword")) != FALSE; },
                 "the field that comes late");
    EXPECT_EQ(before(u"cboName"), person.Control(window, u"lblName"));
    EXPECT_EQ(before(u"txtPassword"), person.Control(window, u"lblPassword"));
    EXPECT_EQ(before(u"txtShown"), person.Control(window, u"lblShown"));
    EXPECT_EQ(GetWindow(person.Control(window, u"idxCaption"), GW_HWNDLAST),
              person.Control(window, u"fra"))
        << "what lies below others comes last";
  });
}

TEST_F(LabelAndFrame, LabelsShowTheirCaptionAndFollowIt) {
  form.Soon([&] { form.lblName.Caption = u"&Longer name"; });
  Work([&](Person& person, HWND window) {
    const HWND label = person.Control(window, u"lblName");
    person.Await([&] { return TextOf(label) == u"&Longer name"; }, "the caption");
    EXPECT_EQ(TextOf(person.Control(window, u"lblPassword")), u"&Passwort");
    RECT area{};
    GetClientRect(label, &area);
    EXPECT_EQ(area.right, std::lround(form.lblName.Width() / platform.TwipsPerPixel()));
  });
}

TEST_F(LabelAndFrame, TheFrameLiesBehindItsFieldsAndHasTheFormsColor) {
  Work([](Person& person, HWND window) {
    const HWND frame = person.Control(window, u"fra");
    for (const auto* const name : {u"cboName", u"txtPassword", u"txtShown"}) {
      const HWND field = person.Control(window, name);
      person.Click(field);
      person.AwaitFocus(field);
      if (name == StringView(u"cboName")) person.Press(VK_ESCAPE);
    }
    RECT area{};
    GetClientRect(frame, &area);
    person.Await([&] { return ColorAt(frame, 20, area.bottom - 20) == GetSysColor(COLOR_BTNFACE); },
                 "the frame's inside");
  });
  EXPECT_EQ(form.Cancels, 1);
}

// Colours of a row of pixels.
std::vector<COLORREF> Line(HWND window, int y) {
  RECT area{};
  GetClientRect(window, &area);
  std::vector<COLORREF> colors;
  for (int x = 0; x < area.right; ++x)
    colors.push_back(ColorAt(window, x, y));
  return colors;
}

TEST_F(LabelAndFrame, ACaptionStandsInTheUpperEdgeWhichIsHalfALineLower) {
  const COLORREF face = GetSysColor(COLOR_BTNFACE);
  const auto blank = [&](const std::vector<COLORREF>& line) {
    return std::all_of(line.begin(), line.end(), [&](COLORREF c) { return c == face; });
  };
  form.fra.Caption = u"Gr&uppe";
  Work([&](Person& person, HWND window) {
    const HWND frame = person.Control(window, u"fra");
    EXPECT_EQ(TextOf(frame), u"Gr&uppe");
    const auto pixels = [&](Twips length) {
      return static_cast<int>(std::lround(length / platform.TwipsPerPixel()));
    };
    const int line = pixels(platform.MeasureText(form.fra.Font(), u"").Height);
    const int edge = line / 2;
    person.Await([&] { return ColorAt(frame, 2, edge) != face; }, "the edge");
    // Above the edge there is the caption alone, beside it nothing.
    EXPECT_EQ(ColorAt(frame, 2, 0), face);
    EXPECT_EQ(ColorAt(frame, 0, edge - 2), face);
    EXPECT_FALSE(blank(Line(frame, edge - 2)));
    // The edge leaves room for the caption.
    const auto colors = Line(frame, edge);
    EXPECT_NE(colors[2], face);
    EXPECT_NE(colors[colors.size() - 4], face);
    EXPECT_GT(std::count(colors.begin(), colors.end(), face), line);
    person.Press(VK_TAB);
  });
}

TEST_F(LabelAndFrame, TheFrameFollowsItsCaption) {
  form.Soon([&] { form.fra.Caption = u"&User"; });
  Work([&](Person& person, HWND window) {
    const HWND frame = person.Control(window, u"fra");
    person.Await([&] { return TextOf(frame) == u"&User"; }, "the caption");
    person.Press('U', VK_MENU);
    person.AwaitFocus(person.Control(window, u"cboName"));
  });
}

TEST_F(LabelAndFrame, ReadOnlyBoxesHaveTheColorOfButtons) {
  form.txtPassword.TabIndex = 0;
  Work([](Person& person, HWND window) {
    const HWND shown = person.Control(window, u"txtShown");
    const HWND password = person.Control(window, u"txtPassword");
    person.Await([&] { return Inside(shown) == GetSysColor(COLOR_BTNFACE); }, "the face");
    person.Await([&] { return Inside(password) == GetSysColor(COLOR_WINDOW); }, "the window");
    EXPECT_NE(GetWindowLongW(shown, GWL_STYLE) & ES_READONLY, 0);
    EXPECT_EQ(GetWindowLongW(password, GWL_STYLE) & ES_READONLY, 0);
  });
}

}  // namespace

}  // namespace krx::test
