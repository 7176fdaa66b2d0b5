#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <vector>

#include "ControlsForm.h"
#include "Person.h"
#include "ScreenPixels.h"
#include "ports/win32/Texts.h"

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

  // In pixels of the form.
  RECT PlaceOf(const ui::Control& control) {
    const int left = Pixel(control.Left());
    const int top = Pixel(control.Top());
    return {left, top, left + Pixel(control.Width()), top + Pixel(control.Height())};
  }
  // Height of a line of text.
  int Line(const ui::Control& control) {
    return Pixel(platform.MeasureText(control.Font(), u"").Height);
  }
  int Pixel(Twips length) {
    return static_cast<int>(std::lround(length / platform.TwipsPerPixel()));
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

TEST_F(LabelAndFrame, FieldsStandInTheTabOrderAlsoOneThatComesLate) {
  form.txtPassword.Visible = false;
  form.Soon([&] { form.txtPassword.Visible = true; });
  Work([](Person& person, HWND window) {
    const HWND late = person.Control(window, u"txtPassword");
    EXPECT_EQ(GetWindow(late, GW_HWNDPREV), person.Control(window, u"cboName"));
    EXPECT_EQ(GetWindow(late, GW_HWNDNEXT), person.Control(window, u"txtShown"));
  });
}

TEST_F(LabelAndFrame, LabelsAndFramesNeedNoWindow) {
  Work([](Person& person, HWND window) {
    const HWND field = person.Control(window, u"txtShown");
    person.Await([&] { return IsWindowVisible(field) != FALSE; }, "the last field");
    for (const auto* const name : {u"lblName", u"lblPassword", u"lblShown", u"fra"})
      EXPECT_EQ(person.FindControl(window, name), nullptr) << ToUtf8(name);
  });
}

// What a place of the form shows.
std::vector<COLORREF> Pixels(HWND form, const RECT& place) {
  std::vector<COLORREF> pixels;
  const HDC dc = GetDC(form);
  for (int y = place.top; y < place.bottom; ++y) {
    for (int x = place.left; x < place.right; ++x)
      pixels.push_back(GetPixel(dc, x, y));
  }
  ReleaseDC(form, dc);
  return pixels;
}

// What a label's place has to show.
std::vector<COLORREF> Drawn(const wchar_t* caption, const Font& font, const RECT& place) {
  const HDC screen = GetDC(nullptr);
  const HDC dc = CreateCompatibleDC(screen);
  RECT area{0, 0, place.right - place.left, place.bottom - place.top};
  const HBITMAP bitmap = CreateCompatibleBitmap(screen, area.right, area.bottom);
  const HGDIOBJ bitmap_before = SelectObject(dc, bitmap);
  const win32::FontHandle handle(font, win32::Scale{GetDeviceCaps(screen, LOGPIXELSX)});
  const HGDIOBJ font_before = SelectObject(dc, handle.Get());
  SetBkColor(dc, kLight.Face);
  ExtTextOutW(dc, 0, 0, ETO_OPAQUE, &area, L"", 0, nullptr);
  SetBkMode(dc, TRANSPARENT);
  SetTextColor(dc, kLight.Text);
  DrawTextW(dc, caption, -1, &area, DT_WORDBREAK);
  std::vector<COLORREF> pixels;
  for (int y = 0; y < area.bottom; ++y) {
    for (int x = 0; x < area.right; ++x)
      pixels.push_back(GetPixel(dc, x, y));
  }
  SelectObject(dc, font_before);
  SelectObject(dc, bitmap_before);
  DeleteObject(bitmap);
  DeleteDC(dc);
  ReleaseDC(nullptr, screen);
  return pixels;
}

TEST_F(LabelAndFrame, LabelsShowTheirCaptionAndFollowIt) {
  const RECT shorter = PlaceOf(form.lblName);
  form.Soon([&] { form.lblName.Caption = u"&Longer name"; });
  Work([&](Person& person, HWND window) {
    const auto shows = [&](const ui::Label& label, const wchar_t* caption) {
      const RECT place = PlaceOf(label);
      person.Await([&] { return Pixels(window, place) == Drawn(caption, label.Font(), place); },
                   "the label " + ToUtf8(label.Name()));
    };
    person.Await([&] { return form.lblName.Caption() == u"&Longer name"; }, "the caption");
    shows(form.lblName, L"&Longer name");
    shows(form.lblPassword, L"&Passwort");
    EXPECT_GT(PlaceOf(form.lblName).right, shorter.right);
  });
}

TEST_F(LabelAndFrame, WhereALabelWasTheFormComesIntoSight) {
  const RECT before = PlaceOf(form.lblName);
  form.Soon([&] {
    form.lblName.Top = form.lblName.Top() + 330;
    form.lblShown.Visible = false;
  });
  Work([&](Person& person, HWND window) {
    const auto bare = [&](const RECT& place) {
      person.Await(
          [&] {
            const auto pixels = Pixels(window, place);
            return std::all_of(pixels.begin(), pixels.end(),
                               [](COLORREF color) { return color == kLight.Face; });
          },
          "the form");
    };
    bare(before);
    bare(PlaceOf(form.lblShown));
    const RECT now = PlaceOf(form.lblName);
    person.Await([&] { return Pixels(window, now) == Drawn(L"&Name", form.lblName.Font(), now); },
                 "the label in its new place");
  });
}

TEST_F(LabelAndFrame, TheFrameLiesBehindItsFieldsAndHasTheFormsColor) {
  Work([&](Person& person, HWND window) {
    for (const auto* const name : {u"cboName", u"txtPassword", u"txtShown"}) {
      const HWND field = person.Control(window, name);
      person.Click(field);
      person.AwaitFocus(field);
      if (name == StringView(u"cboName")) person.Press(VK_ESCAPE);
    }
    const RECT frame = PlaceOf(form.fra);
    person.Await([&] { return ColorAt(window, frame.left + 20, frame.bottom - 20) == kLight.Face; },
                 "the frame's inside");
  });
  EXPECT_EQ(form.Cancels, 1);
}

TEST_F(LabelAndFrame, ACaptionStandsInTheUpperEdgeWhichIsHalfALineLower) {
  const COLORREF face = kLight.Face;
  const auto blank = [&](const std::vector<COLORREF>& line) {
    return std::all_of(line.begin(), line.end(), [&](COLORREF c) { return c == face; });
  };
  form.fra.Caption = u"Gr&uppe";
  Work([&](Person& person, HWND window) {
    const RECT frame = PlaceOf(form.fra);
    const auto color = [&](int x, int y) { return ColorAt(window, frame.left + x, frame.top + y); };
    // Colours of a row of pixels.
    const auto row = [&](int y) {
      return Pixels(window, {frame.left, frame.top + y, frame.right, frame.top + y + 1});
    };
    const int line = Line(form.fra);
    const int edge = line / 2;
    person.Await([&] { return color(2, edge) != face; }, "the edge");
    // Above the edge there is the caption alone, beside it nothing.
    EXPECT_EQ(color(2, 0), face);
    EXPECT_EQ(color(0, edge - 2), face);
    EXPECT_FALSE(blank(row(edge - 2)));
    // The edge leaves room for the caption.
    const auto colors = row(edge);
    EXPECT_NE(colors[2], face);
    EXPECT_NE(colors[colors.size() - 4], face);
    EXPECT_GT(std::count(colors.begin(), colors.end(), face), line);
    person.Press(VK_TAB);
  });
}

TEST_F(LabelAndFrame, TheFrameFollowsItsCaption) {
  const COLORREF face = kLight.Face;
  form.Soon([&] { form.fra.Caption = u"&User"; });
  Work([&](Person& person, HWND window) {
    const RECT frame = PlaceOf(form.fra);
    const auto row = [&](int y) {
      return Pixels(window, {frame.left, frame.top + y, frame.right, frame.top + y + 1});
    };
    const int edge = Line(form.fra) / 2;
    person.Await([&] { return row(0).back() == face && row(edge)[2] != face; }, "a lower edge");
    const auto caption = row(edge - 2);
    EXPECT_LT(std::count(caption.begin(), caption.end(), face), std::ssize(caption));
    person.Press('U', VK_MENU);
    person.AwaitFocus(person.Control(window, u"cboName"));
  });
}

TEST_F(LabelAndFrame, ReadOnlyBoxesHaveTheColorOfButtons) {
  form.txtPassword.TabIndex = 0;
  Work([](Person& person, HWND window) {
    const HWND shown = person.Control(window, u"txtShown");
    const HWND password = person.Control(window, u"txtPassword");
    person.Await([&] { return Inside(shown) == kLight.Face; }, "the face");
    person.Await([&] { return Inside(password) == kLight.Field; }, "the window");
    EXPECT_NE(GetWindowLongW(shown, GWL_STYLE) & ES_READONLY, 0);
    EXPECT_EQ(GetWindowLongW(password, GWL_STYLE) & ES_READONLY, 0);
  });
}

}  // namespace

}  // namespace krx::test
