#include <gtest/gtest.h>

#include <cmath>

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
