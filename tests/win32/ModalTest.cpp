#include <gtest/gtest.h>

#include <stdexcept>
#include <thread>

#include "HostWindow.h"
#include "Person.h"
#include "TestForm.h"
#include "base/Error.h"

namespace krx::test {

namespace {

TEST(Modal, DisablesTheOtherWindowsAndEnablesOnlyWhatItDisabled) {
  win32::Win32Platform platform;
  const HostWindow open;
  const HostWindow busy(WS_VISIBLE | WS_DISABLED);
  const HostWindow hidden(0);
  TestForm form(platform);
  ShowWith(form, [&](Person& person) {
    person.AwaitForm(u"FTest");
    EXPECT_FALSE(IsWindowEnabled(open.Get()));
    EXPECT_FALSE(IsWindowEnabled(busy.Get()));
    EXPECT_TRUE(IsWindowEnabled(hidden.Get()));
    person.Press(VK_ESCAPE);
  });
  EXPECT_TRUE(IsWindowEnabled(open.Get()));
  EXPECT_FALSE(IsWindowEnabled(busy.Get()));
  EXPECT_TRUE(IsWindowEnabled(hidden.Get()));
}

TEST(Modal, GivesActivationAndFocusBack) {
  win32::Win32Platform platform;
  const HostWindow host;
  SetActiveWindow(host.Get());
  SetFocus(host.Edit());
  ASSERT_EQ(GetFocus(), host.Edit());
  TestForm form(platform);
  ShowWith(form, [&](Person& person) {
    person.AwaitForm(u"FTest");
    person.Press(VK_ESCAPE);
  });
  EXPECT_EQ(GetActiveWindow(), host.Get());
  EXPECT_EQ(GetFocus(), host.Edit());
}

TEST(Modal, PostsAQuitMessageAgain) {
  win32::Win32Platform platform;
  TestForm form(platform);
  form.Soon([] { PostQuitMessage(42); });
  ShowWith(form, [](Person&) {});
  EXPECT_FALSE(form.Visible());
  MSG message{};
  ASSERT_TRUE(PeekMessageW(&message, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE));
  EXPECT_EQ(message.wParam, 42u);
}

TEST(Modal, AQuitMessageEndsNestedFormsToo) {
  win32::Win32Platform platform;
  TestForm outer(platform, u"FOuter");
  TestForm inner(platform, u"FInner");
  outer.Soon([&] { inner.ShowModal(); });
  inner.Soon([] { PostQuitMessage(7); });
  ShowWith(outer, [](Person&) {});
  MSG message{};
  ASSERT_TRUE(PeekMessageW(&message, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE));
  EXPECT_EQ(message.wParam, 7u);
}

TEST(Modal, ProcessEventsLeavesAQuitMessageInPlace) {
  win32::Win32Platform platform;
  PostQuitMessage(3);
  platform.ProcessEvents();
  MSG message{};
  ASSERT_TRUE(PeekMessageW(&message, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE));
  EXPECT_EQ(message.wParam, 3u);
}

TEST(Modal, AnErrorOfAHandlerIsThrownByTheCallThatShowsTheForm) {
  win32::Win32Platform platform;
  const HostWindow host;
  TestForm form(platform);
  form.keyOne.Click = [] { throw RuntimeError(13, u"wrong"); };
  try {
    ShowWith(form, [](Person& person) {
      person.Click(person.Control(person.AwaitForm(u"FTest"), u"keyOne"));
    });
    FAIL() << "no error";
  } catch (const Error& error) {
    EXPECT_EQ(error.Status(), 0x800A000Du);
  }
  EXPECT_TRUE(IsWindowEnabled(host.Get()));
  EXPECT_EQ(form.ThePeer(), nullptr);
}

TEST(Modal, AnErrorOfAKeyHandlerIsThrownToo) {
  win32::Win32Platform platform;
  TestForm form(platform);
  form.keyOne.KeyDown = [](int&, int) { throw std::runtime_error("key"); };
  const auto show = [&] {
    ShowWith(form, [](Person& person) {
      person.AwaitForm(u"FTest");
      person.Press(VK_F7);
    });
  };
  EXPECT_THROW(show(), std::runtime_error);
}

TEST(Modal, AnInnerFormsErrorReachesTheHandlerThatOpenedIt) {
  win32::Win32Platform platform;
  TestForm outer(platform, u"FOuter");
  TestForm inner(platform, u"FInner");
  inner.Soon([] { throw RuntimeError(5, u"inner"); });
  bool caught = false;
  outer.keyTwo.Click = [&] {
    try {
      inner.ShowModal();
    } catch (const Error&) {
      caught = true;
    }
  };
  ShowWith(outer, [&](Person& person) {
    const HWND window = person.AwaitForm(u"FOuter");
    person.Click(person.Control(window, u"keyTwo"));
    person.Await([&] { return caught && IsWindowEnabled(window); }, "the error");
    person.AwaitForm(u"FOuter");
    person.Press(VK_ESCAPE);
  });
  EXPECT_TRUE(caught);
  EXPECT_EQ(outer.Answer, u"keyClose");
}

TEST(Modal, AnOuterFormsErrorWaitsForTheInnerForm) {
  win32::Win32Platform platform;
  TestForm outer(platform, u"FOuter");
  TestForm inner(platform, u"FInner");
  bool inner_over = false;
  outer.keyTwo.Click = [&] {
    outer.Soon([] { throw RuntimeError(5, u"outer"); });
    inner.ShowModal();
    inner_over = true;
  };
  const auto show = [&] {
    ShowWith(outer, [&](Person& person) {
      person.Click(person.Control(person.AwaitForm(u"FOuter"), u"keyTwo"));
      person.AwaitForm(u"FInner");
      person.Await([&] { return !outer.tmrOnce.Enabled(); }, "the outer form's timer");
      person.Press(VK_RETURN);
    });
  };
  EXPECT_THROW(show(), Error);
  EXPECT_TRUE(inner_over);
  EXPECT_EQ(inner.Answer, u"keyOne");
}

TEST(Modal, NestedFormsReturnOneAfterTheOther) {
  win32::Win32Platform platform;
  TestForm outer(platform, u"FOuter");
  TestForm inner(platform, u"FInner");
  outer.keyTwo.Click = [&] { inner.ShowModal(); };
  ShowWith(outer, [&](Person& person) {
    const HWND below = person.AwaitForm(u"FOuter");
    const HWND two = person.Control(below, u"keyTwo");
    person.Click(two);
    person.AwaitForm(u"FInner");
    EXPECT_FALSE(IsWindowEnabled(below));
    person.Press(VK_RETURN);
    person.AwaitForm(u"FOuter");
    person.AwaitFocus(two);
    EXPECT_TRUE(IsWindowEnabled(below));
    person.Press(VK_ESCAPE);
  });
  EXPECT_EQ(inner.Answer, u"keyOne");
  EXPECT_EQ(outer.Answer, u"keyClose");
}

TEST(Modal, AnOuterFormMayBeUnloadedWhileTheInnerOneIsUp) {
  win32::Win32Platform platform;
  const HostWindow host;
  TestForm outer(platform, u"FOuter");
  TestForm inner(platform, u"FInner");
  outer.Soon([&] { inner.ShowModal(); });
  inner.keyTwo.Click = [&] { outer.Unload(); };
  ShowWith(outer, [&](Person& person) {
    const HWND window = person.AwaitForm(u"FInner");
    const HWND below = WindowOf(outer);
    person.Click(person.Control(window, u"keyTwo"));
    person.Await([&] { return !IsWindowVisible(below); }, "the outer form to go");
    EXPECT_TRUE(IsWindowVisible(window));
    EXPECT_FALSE(IsWindowEnabled(host.Get()));
    person.AwaitForm(u"FInner");
    person.Press(VK_ESCAPE);
  });
  EXPECT_EQ(inner.Answer, u"keyClose");
  EXPECT_FALSE(outer.Loaded());
  EXPECT_EQ(outer.ThePeer(), nullptr);
  EXPECT_TRUE(IsWindowEnabled(host.Get()));
}

TEST(Modal, AFormIsShownAgainAfterItWasHidden) {
  win32::Win32Platform platform;
  TestForm form(platform);
  int focused = 0;
  form.keyOne.GotFocus = [&] { ++focused; };
  form.keyOne.Click = [&] { form.Hide(); };
  RunWith(
      [&] {
        form.ShowModal();
        EXPECT_TRUE(form.Loaded());
        form.Caption = u"again";
        form.ShowModal();
      },
      [](Person& person) {
        const HWND window = person.AwaitForm(u"FTest");
        person.Press(VK_RETURN);
        person.Await([&] { return TextOf(window) == u"again"; }, "the new caption");
        EXPECT_EQ(person.AwaitForm(u"FTest"), window);
        person.Press(VK_ESCAPE);
      });
  EXPECT_EQ(focused, 2);
  EXPECT_EQ(form.Answer, u"keyClose");
}

TEST(Modal, FocusReturnsToTheSameControlWithTheActivation) {
  win32::Win32Platform platform;
  TestForm form(platform);
  int focused = 0;
  form.keyTwo.GotFocus = [&] { ++focused; };
  ShowWith(form, [&](Person& person) {
    const HWND window = person.AwaitForm(u"FTest");
    const HWND two = person.Control(window, u"keyTwo");
    person.Press(VK_TAB);
    person.AwaitFocus(two);
    const HostWindow other;  // of this person's thread
    SetForegroundWindow(other.Get());
    person.Await([&] { return GetForegroundWindow() == other.Get(); }, "the other window");
    SetForegroundWindow(window);
    person.AwaitForm(u"FTest");
    person.AwaitFocus(two);
    person.Press(VK_ESCAPE);
  });
  EXPECT_EQ(focused, 1);
}

TEST(Modal, AFormWhoseWindowIsDestroyedEnds) {
  win32::Win32Platform platform;
  TestForm form(platform);
  form.Soon([&] { DestroyWindow(WindowOf(form)); });
  ShowWith(form, [](Person&) {});
  EXPECT_FALSE(form.Visible());
}

TEST(Modal, TimersTickUntilTheyAreDisabled) {
  win32::Win32Platform platform;
  TestForm form(platform);
  int ticks = 0;
  form.tmrOnce.Interval = 10;
  form.tmrOnce.Enabled = true;
  form.tmrOnce.Tick = [&] {
    if (++ticks < 3) return;
    form.tmrOnce.Enabled = false;
    form.Unload();
  };
  ShowWith(form, [](Person&) {});
  EXPECT_EQ(ticks, 3);
}

TEST(Modal, TheSystemsMessageBoxReturnsItsAnswer) {
  win32::Win32Platform platform;
  TestForm form(platform);
  int answer = 0;
  form.Soon([&] { answer = platform.ShowMessageBox(u"Question", MB_YESNO, u"Title of box"); });
  ShowWith(form, [&](Person& person) {
    HWND box = nullptr;
    person.Await([&] { return (box = FindWindowW(nullptr, L"Title of box")) != nullptr; }, "box");
    person.Await([&] { return GetForegroundWindow() == box && FocusOf(box); }, "focus of the box");
    EXPECT_EQ(NameOf(GetWindow(box, GW_OWNER)), u"FTest");
    person.Press('N', VK_MENU);
    person.Await([&] { return answer != 0; }, "the answer");
    person.AwaitForm(u"FTest");
    person.Press(VK_ESCAPE);
  });
  EXPECT_EQ(answer, IDNO);
}

TEST(Modal, TwoThreadsShowFormsOfTheirOwnAtOnce) {
  win32::Win32Platform platform;
  TestForm form(platform, u"FHere");
  String there;
  std::thread second;
  form.keyTwo.Click = [&] {
    second = std::thread([&] {
      win32::Win32Platform other;
      TestForm elsewhere(other, u"FThere");
      elsewhere.ShowModal();
      there = elsewhere.Answer;
    });
  };
  ShowWith(form, [&](Person& person) {
    const HWND here = person.AwaitForm(u"FHere");
    person.Click(person.Control(here, u"keyTwo"));
    person.AwaitForm(u"FThere");
    EXPECT_TRUE(IsWindowEnabled(here));
    person.Press(VK_RETURN);
    second.join();
    SetForegroundWindow(here);
    person.AwaitForm(u"FHere");
    person.Press(VK_ESCAPE);
  });
  EXPECT_EQ(there, u"keyOne");
  EXPECT_EQ(form.Answer, u"keyClose");
}

}  // namespace

}  // namespace krx::test
