#include <gtest/gtest.h>

#include <cmath>

#include "Person.h"
#include "TestForm.h"
#include "ports/win32/Screen.h"

namespace krx::test {

namespace {

TEST(Windows, CarryTheirNamesAndTextsForOtherWindowsToRead) {
  win32::Win32Platform platform;
  TestForm form(platform);
  ShowWith(form, [](Person& person) {
    const HWND window = person.AwaitForm(u"FTest");
    EXPECT_EQ(TextOf(window), u"Test form");
    EXPECT_EQ(TextOf(person.Control(window, u"idxCaption")), u"Caption \n line");
    EXPECT_EQ(TextOf(person.Control(window, u"keyOne")), u"&Fertig");
    EXPECT_NE(person.Control(window, u"txtName"), nullptr);
    // The cross has no text of its own; screen readers get the system's word for closing.
    const String word = TextOf(person.Control(window, u"keyClose"));
    EXPECT_FALSE(word.empty());
    EXPECT_EQ(word.find(u'&'), String::npos);
    EXPECT_EQ(word.find(u'\t'), String::npos);
    person.Press(VK_ESCAPE);
  });
  EXPECT_EQ(form.Answer, u"keyClose");
}

TEST(Windows, TakeTheirAtomsAlong) {
  win32::Win32Platform platform;
  TestForm form(platform, u"FAtomTest");
  ShowWith(form, [](Person& person) {
    person.AwaitForm(u"FAtomTest");
    EXPECT_NE(GlobalFindAtomW(L"FAtomTest"), 0);
    person.Press(VK_ESCAPE);
  });
  EXPECT_EQ(GlobalFindAtomW(L"FAtomTest"), 0);
}

TEST(Windows, HaveAClientAreaOfExactlyTheFormsSizeInTheMiddleOfTheWorkArea) {
  win32::Win32Platform platform;
  TestForm form(platform);
  win32::Scale scale;
  {
    const win32::DpiScope scope;
    scale = win32::Screen::Of(nullptr).Scale;
  }
  ShowWith(form, [&](Person& person) {
    const HWND window = person.AwaitForm(u"FTest");
    RECT client{};
    GetClientRect(window, &client);
    EXPECT_EQ(client.right, scale.Pixels(4500));
    EXPECT_EQ(client.bottom, scale.Pixels(2400));
    RECT place{};
    GetWindowRect(window, &place);
    const RECT work = win32::Screen::Of(window).WorkArea;
    EXPECT_NEAR(place.left + place.right, work.left + work.right, 1);
    EXPECT_NEAR(place.top + place.bottom, work.top + work.bottom, 1);
    EXPECT_EQ(scale.Pixels(form.Left()), place.left);
    EXPECT_EQ(scale.Pixels(form.Top()), place.top);
    person.Press(VK_ESCAPE);
  });
}

TEST(Windows, LeaveTheCloseKeyAboveTheCaptionLine) {
  win32::Win32Platform platform;
  TestForm form(platform);
  ShowWith(form, [](Person& person) {
    const HWND window = person.AwaitForm(u"FTest");
    person.Click(person.Control(window, u"keyClose"));
  });
  EXPECT_EQ(form.Answer, u"keyClose");
  EXPECT_EQ(form.Clicks, 1);
}

TEST(Windows, AppearWhenAControlBecomesVisible) {
  win32::Win32Platform platform;
  TestForm form(platform);
  form.keyTwo.Visible = false;
  form.keyOne.Click = [&] { form.keyTwo.Visible = true; };
  ShowWith(form, [](Person& person) {
    const HWND window = person.AwaitForm(u"FTest");
    EXPECT_EQ(person.FindControl(window, u"keyTwo"), nullptr);
    person.Click(person.Control(window, u"keyOne"));
    person.Click(person.Control(window, u"keyTwo"));
  });
  EXPECT_EQ(form.Answer, u"keyTwo");
}

// Moves a form of this size while it is shown and returns where its window stands then.
RECT PlaceAfterMove(SIZE pixels, POINT to) {
  win32::Win32Platform platform;
  const Twips pixel = platform.TwipsPerPixel();
  TestForm form(platform);
  form.Width = static_cast<Twips>(pixels.cx) * pixel;
  form.Height = static_cast<Twips>(pixels.cy) * pixel;
  RECT place{};
  form.Soon([&] {
    const win32::DpiScope scope;
    form.Move(static_cast<Twips>(to.x) * pixel, static_cast<Twips>(to.y) * pixel);
    GetWindowRect(GetActiveWindow(), &place);
    EXPECT_EQ(std::lround(form.Left() / pixel), place.left);
    EXPECT_EQ(std::lround(form.Top() / pixel), place.top);
    form.Unload();
  });
  ShowWith(form, [](Person&) {});
  return place;
}

// A dialog that stood beside the screen could be neither answered nor given up.
TEST(Windows, CannotBeMovedOutOfReach) {
  const win32::DpiScope scope;
  const RECT area = win32::Screen::Of(nullptr).WorkArea;
  const RECT above = PlaceAfterMove({300, 200}, {-5000, -5000});
  EXPECT_EQ(above.left, area.left);
  EXPECT_EQ(above.top, area.top);
  const RECT below = PlaceAfterMove({300, 200}, {area.right - 10, area.bottom - 10});
  EXPECT_EQ(below.right, area.right);
  EXPECT_EQ(below.bottom, area.bottom);
}

// Worked out without a window: window managers place one that is larger than the screen themselves.
TEST(Windows, ThatAreLargerThanTheScreenCanBeMovedToShowEachPart) {
  const win32::DpiScope scope;
  const RECT area = win32::Screen::Of(nullptr).WorkArea;
  const LONG width = area.right - area.left + 200;
  const LONG height = area.bottom - area.top + 100;
  const RECT first =
      win32::KeptInReach({area.left, area.top, area.left + width, area.top + height});
  EXPECT_EQ(first.left, area.left);
  EXPECT_EQ(first.top, area.top);
  const RECT last = win32::KeptInReach({-5000, -5000, width - 5000, height - 5000});
  EXPECT_EQ(last.right, area.right);
  EXPECT_EQ(last.bottom, area.bottom);
}

TEST(Windows, ThatOthersMoveTellTheFormWhereTheyAre) {
  win32::Win32Platform platform;
  const Twips pixel = platform.TwipsPerPixel();
  TestForm form(platform);
  form.Soon([&] {
    const win32::DpiScope scope;
    SetWindowPos(GetActiveWindow(), nullptr, 40, 30, 0, 0, SWP_NOSIZE | SWP_NOZORDER);
    EXPECT_EQ(std::lround(form.Left() / pixel), 40);
    EXPECT_EQ(std::lround(form.Top() / pixel), 30);
    form.Unload();
  });
  ShowWith(form, [](Person&) {});
}

void TakeTo(HWND window, LONG left, LONG top) {
  SetWindowPos(window, nullptr, left, top, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}

void MoveUntilItStays(Person& person, HWND window, POINT at) {
  person.AwaitAtRest(window, at, [&] { TakeTo(window, at.x, at.y); });
}

// On a busy machine the system sometimes took a form that had just appeared for one in the corner
// of the screen, while the window manager showed it in the middle; its lists dropped in the corner.
TEST(Windows, ThatAreTakenToTheCornerComeBackOnce) {
  win32::Win32Platform platform;
  TestForm form(platform);
  ShowWith(form, [&](Person& person) {
    const HWND window = person.AwaitForm(u"FTest");
    const POINT before = CornerOf(window);
    ASSERT_NE(before.x, 0);
    TakeTo(window, 0, 0);
    person.AwaitAtRest(window, before);
    MoveUntilItStays(person, window, {0, 0});  // whoever moves it there again means it
    person.Press(VK_ESCAPE);
  });
  EXPECT_EQ(form.Left(), 0);
  EXPECT_EQ(form.Top(), 0);
}

// An operator who takes the form to the corner finds it there, whatever he moves it with.
class MovedWindows : public testing::TestWithParam<std::function<void(Person&, HWND)>> {};

TEST_P(MovedWindows, StayInTheCorner) {
  win32::Win32Platform platform;
  TestForm form(platform);
  form.keyOne.Click = [&] {
    form.Move(300, 300);
    form.keyTwo.SetFocus();
  };
  ShowWith(form, [](Person& person) {
    const HWND window = person.AwaitForm(u"FTest");
    GetParam()(person, window);
    person.Press(VK_ESCAPE);
  });
  EXPECT_EQ(form.Left(), 0);
  EXPECT_EQ(form.Top(), 0);
}

INSTANTIATE_TEST_SUITE_P(
    Ways, MovedWindows,
    testing::Values(
        [](Person& person, HWND window) {  // through other places
          MoveUntilItStays(person, window, {5, 7});
          TakeTo(window, 0, 0);
        },
        [](Person& person, HWND window) {  // after the form has moved itself, as by its caption
          person.Click(person.Control(window, u"keyOne"));
          person.AwaitFocus(person.Control(window, u"keyTwo"));
          TakeTo(window, 0, 0);
        },
        [](Person& person, HWND window) {  // by a key of the window manager
          person.Down(VK_CONTROL);
          person.Await([] { return GetAsyncKeyState(VK_CONTROL) < 0; }, "the key held down");
          TakeTo(window, 0, 0);
          person.Up(VK_CONTROL);
        }));

TEST(Windows, FollowTheMouseWithoutDrifting) {
  win32::Win32Platform platform;
  TestForm form(platform);
  Twips x0 = 0;
  Twips y0 = 0;
  form.idxCaption.MouseDown = [&](int, int, Twips x, Twips y) {
    x0 = x;
    y0 = y;
  };
  form.idxCaption.MouseMove = [&](int button, int, Twips x, Twips y) {
    if (button == ui::kLeftButton) form.Move(form.Left() + x - x0, form.Top() + y - y0);
  };
  ShowWith(form, [](Person& person) {
    const HWND window = person.AwaitForm(u"FTest");
    for (const int way : {53, -17, -36})
      person.Drag(person.Control(window, u"idxCaption"), way, -way);
    person.Press(VK_ESCAPE);
  });
}

TEST(Windows, AskForTheMeasuresOfTheirOwnResolution) {
  const int usual = win32::Scale{96}.Metric(SM_CXVSCROLL);
  EXPECT_GT(usual, 0);
  EXPECT_EQ(win32::Scale{192}.Metric(SM_CXVSCROLL), 2 * usual);
}

TEST(Windows, ComeBackIntoTheWorkAreaWhenItChanges) {
  win32::Win32Platform platform;
  TestForm form(platform);
  int told = 0;
  form.ScreenChanged = [&] { ++told; };
  form.Soon([&] {
    const win32::DpiScope scope;
    const HWND window = WindowOf(form);
    const RECT area = win32::Screen::Of(window).WorkArea;
    RECT place{};
    for (const auto& [message, what] :
         {std::pair<UINT, WPARAM>{WM_DISPLAYCHANGE, 32}, {WM_SETTINGCHANGE, SPI_SETWORKAREA}}) {
      SetWindowPos(window, nullptr, area.right - 40, area.bottom - 30, 0, 0,
                   SWP_NOSIZE | SWP_NOZORDER);
      SendMessageW(window, message, what, 0);
      GetWindowRect(window, &place);
      EXPECT_EQ(place.right, area.right);
      EXPECT_EQ(place.bottom, area.bottom);
    }
    form.Unload();
  });
  ShowWith(form, [](Person&) {});
  EXPECT_EQ(told, 2);
}

TEST(Windows, KeepTheLowerRightCornerOfAnOversizedFormOnTheScreen) {
  const RECT work{0, 0, 1000, 800};
  const RECT wide = win32::Centred(work, {1200, 300});
  EXPECT_EQ(wide.right, 1000);
  EXPECT_EQ(wide.left, -200);
  EXPECT_EQ(wide.top, 250);
  const RECT high = win32::Centred(work, {400, 900});
  EXPECT_EQ(high.bottom, 800);
  EXPECT_EQ(high.left, 300);
}

}  // namespace

}  // namespace krx::test
