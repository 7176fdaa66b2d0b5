// A message box that the screen has no room for.

#include <gtest/gtest.h>

#include <atomic>
#include <functional>

#include "Desk.h"
#include "Person.h"
#include "driver/Input.h"
#include "ports/win32/Screen.h"

namespace krx::test {

namespace {

String Lines(int count) {
  String text = u"line 0";
  for (int line = 1; line < count; ++line)
    text += u"\nline " + ToString(line);
  return text;
}

bool Inside(const RECT& inner, const RECT& outer) {
  return inner.left >= outer.left && inner.top >= outer.top && inner.right <= outer.right &&
         inner.bottom <= outer.bottom;
}

int TopLineOf(HWND message) {
  SCROLLINFO info{};
  info.cbSize = sizeof info;
  info.fMask = SIF_POS;
  GetScrollInfo(message, SB_VERT, &info);
  return info.nPos;
}

int LastTopLineOf(HWND message) {
  SCROLLINFO info{};
  info.cbSize = sizeof info;
  info.fMask = SIF_RANGE | SIF_PAGE;
  GetScrollInfo(message, SB_VERT, &info);
  return info.nMax - static_cast<int>(info.nPage) + 1;
}

// Shows a box of very many lines to somebody who works with its message.
void WithLongMessage(const std::function<void(Person&, HWND box, HWND message)>& work) {
  Desk desk;
  int got = 0;
  RunWith([&] { got = desk.Dialog->KRMsgBox(Lines(3'000), 4 + 48, u"Title"); },
          [&](Person& person) {
            const HWND box = person.AwaitForm(u"FMessageBox");
            work(person, box, person.Control(box, u"idxMessage"));
            person.Click(person.Control(box, u"keyButton(1)"));
          });
  EXPECT_EQ(got, 7);
}

TEST(LongMessage, StaysInsideTheWorkAreaHoweverLongItsTextsAre) {
  Desk desk;
  const String title(100'000, u't');
  RunWith(
      [&] { desk.Dialog->KRMsgBox(String(40'000, u'm'), 3 + 48, title, u"help"); },
      [&](Person& person) {
        const HWND box = person.AwaitForm(u"FMessageBox");
        EXPECT_TRUE(Inside(PlaceOf(box), win32::Screen::Of(box).WorkArea));
        for (const StringView name : {u"idxCaption", u"keyClose", u"idxMessage", u"keyButton(0)",
                                      u"keyButton(1)", u"keyButton(2)", u"keyHelp"})
          EXPECT_TRUE(Inside(PlaceOf(person.Control(box, name)), PlaceOf(box))) << ToUtf8(name);
        // What is left out can still be read.
        EXPECT_EQ(GetWindowTextLengthW(box), 100'000);
        EXPECT_EQ(SendMessageW(person.Control(box, u"idxCaption"), WM_GETTEXTLENGTH, 0, 0),
                  100'000);
        person.Click(person.Control(box, u"keyClose"));
      });
}

TEST(LongMessage, IsScrolledByTheKeys) {
  WithLongMessage([](Person& person, HWND box, HWND message) {
    const int last = LastTopLineOf(message);
    EXPECT_GT(last, 2'900);
    person.AwaitFocus(person.Control(box, u"keyButton(0)"));
    const auto reach = [&](WORD key, int top) {
      person.Press(key);
      person.Await([&] { return TopLineOf(message) == top; }, "line " + std::to_string(top));
    };
    reach(VK_NEXT, 3'000 - last);
    reach(VK_END, last);
    reach(VK_HOME, 0);
    // The arrows belong to the buttons until the message has the focus.
    person.Press(VK_DOWN);
    person.AwaitFocus(person.Control(box, u"keyButton(1)"));
    EXPECT_EQ(TopLineOf(message), 0);
    person.Press(VK_TAB);
    person.AwaitFocus(message);
    reach(VK_DOWN, 1);
    reach(VK_UP, 0);
  });
}

TEST(LongMessage, IsScrolledByTheWheelOverItsButtonsToo) {
  WithLongMessage([](Person& person, HWND box, HWND message) {
    for (const HWND under : {message, person.Control(box, u"keyButton(0)")}) {
      const RECT place = PlaceOf(under);
      person.MoveTo({place.left + 8, place.top + 8});
      const int before = TopLineOf(message);
      person.Turn(-2);
      person.Await([&] { return TopLineOf(message) == before + 6; }, "two notches");
    }
  });
}

TEST(LongMessage, FollowsTheFinger) {
  WithLongMessage([](Person& person, HWND, HWND message) {
    const RECT place = PlaceOf(message);
    const POINT from{place.left + 20, place.bottom - 40};
    // The finger rests before it is lifted, so nothing glides on.
    person.DragTo(from, {from.x, from.y - 300}, std::chrono::milliseconds(200));
    person.Await([&] { return TopLineOf(message) > 5; }, "the text to follow");
    person.AwaitFocus(message);
  });
}

TEST(LongMessage, IsScrolledByItsBar) {
  WithLongMessage([](Person& person, HWND, HWND message) {
    const RECT place = PlaceOf(message);
    person.ClickAt({place.right - 4, place.bottom - 4});
    person.Await([&] { return TopLineOf(message) == 1; }, "the next line");
    SendMessageW(message, WM_VSCROLL, SB_BOTTOM, 0);
    EXPECT_EQ(TopLineOf(message), LastTopLineOf(message));
  });
}

// The system waits for the release of its scroll bar in a loop of its own.
TEST(LongMessage, ActivatesItselfWhileTheScrollBarIsHeld) {
  Desk desk;
  service::FreeButtons extra;
  extra.Button1 = u"Go";
  extra.AutoActivation = 1;
  int got = 0;
  std::atomic<bool> over = false;
  RunWith(
      [&] {
        got = desk.Dialog->KRMsgBoxEx(Lines(3'000), 0, u"Title", u"", 0, extra);
        over = true;
      },
      [&](Person& person) {
        const HWND box = person.AwaitForm(u"FMessageBox");
        const RECT place = PlaceOf(person.Control(box, u"idxMessage"));
        person.MoveTo({place.right - 4, place.bottom - 4});
        drive::PressMouse(drive::MouseButton::Left, {place.right - 4, place.bottom - 4});
        person.Await([&] { return over.load(); }, "the answer");
        drive::ReleaseMouse(drive::MouseButton::Left, {place.right - 4, place.bottom - 4});
      });
  EXPECT_EQ(got, 11);
}

// As the system tells when the box is dragged to a monitor of another resolution.
TEST(LongMessage, IsLaidOutAnewForAnotherResolution) {
  WithLongMessage([](Person& person, HWND box, HWND message) {
    const RECT work = win32::Screen::Of(box).WorkArea;
    const int lines = 3'000 - LastTopLineOf(message);
    const int usual = win32::Screen::Of(box).Scale.Dpi;
    for (const int dpi : {usual * 2, usual, usual * 3 / 2}) {
      const RECT place = PlaceOf(box);
      SendMessageW(box, WM_DPICHANGED, MAKEWPARAM(dpi, dpi), reinterpret_cast<LPARAM>(&place));
      // The window system may still report the size before; in the end the box is what counts.
      const auto all_inside = [&] {
        bool inside = Inside(PlaceOf(box), work);
        for (const StringView name : {u"keyClose", u"idxMessage", u"keyButton(0)", u"keyButton(1)"})
          inside = inside && Inside(PlaceOf(person.Control(box, name)), PlaceOf(box));
        return inside;
      };
      person.Await(all_inside, "the box laid out for " + std::to_string(dpi));
      if (dpi == usual * 2) {
        EXPECT_LT(3'000 - LastTopLineOf(message), lines * 2 / 3);
      }
    }
  });
}

}  // namespace

}  // namespace krx::test
