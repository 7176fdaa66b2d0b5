// Forms have no owner: no window of the host takes them along, and they stand in front of what they
// disabled all the same.

#include <gtest/gtest.h>

#include <atomic>
#include <future>
#include <thread>

#include "HostWindow.h"
#include "Person.h"
#include "TestForm.h"

namespace krx::test {

namespace {

constexpr UINT kInPlace = SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE;

bool Above(HWND upper, HWND lower) {
  HWND at = lower;
  while (at && at != upper)
    at = GetWindow(at, GW_HWNDPREV);
  return at != nullptr;
}

// A window of another thread, which is to this one what another application is. It is none that a
// window manager would hand the focus on to by itself.
class Stranger {
 public:
  Stranger() : thread_([this] { Run(); }) { window_ = ready_.get_future().get(); }
  ~Stranger() {
    PostMessageW(window_, WM_CLOSE, 0, 0);
    thread_.join();
  }
  HWND Get() const { return window_; }
  int Activations() const { return activations_; }

 private:
  static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM w, LPARAM l) {
    auto* const self = reinterpret_cast<Stranger*>(GetWindowLongPtrW(window, GWLP_USERDATA));
    if (self && message == WM_ACTIVATE && LOWORD(w) != WA_INACTIVE) ++self->activations_;
    if (message == WM_CLOSE) PostQuitMessage(0);
    return DefWindowProcW(window, message, w, l);
  }

  void Run() {
    const HWND window = CreateWindowExW(WS_EX_TOOLWINDOW, L"STATIC", L"stranger", WS_POPUP, 10, 150,
                                        200, 100, nullptr, nullptr, nullptr, nullptr);
    SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
    SetWindowLongPtrW(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&Procedure));
    ShowWindow(window, SW_SHOWNOACTIVATE);
    ready_.set_value(window);
    MSG message;
    while (GetMessageW(&message, nullptr, 0, 0) > 0)
      DispatchMessageW(&message);
    DestroyWindow(window);
  }

  std::atomic<int> activations_ = 0;
  std::promise<HWND> ready_;
  HWND window_ = nullptr;
  std::thread thread_;
};

class Ownership : public testing::Test {
 protected:
  Ownership() {
    SetActiveWindow(main.Get());
    SetFocus(main.Edit());
  }

  // Presses the button that takes windows of the host away; the form is used on after that.
  static HWND TakeAway(Person& person, const std::atomic<bool>& gone) {
    const HWND window = person.AwaitForm(u"FTest");
    person.Click(person.Control(window, u"keyTwo"));
    person.Await([&] { return gone.load(); }, "the host's windows to go");
    EXPECT_TRUE(IsWindowVisible(window));
    return person.AwaitForm(u"FTest");
  }

  win32::Win32Platform platform;
  const Stranger stranger;
  const HostWindow other;
  const HostWindow main;
  TestForm form{platform};
};

TEST_F(Ownership, NoFormHasAnOwner) {
  TestForm inner(platform, u"FInner");
  form.keyTwo.Click = [&] { inner.ShowModal(); };
  ShowWith(form, [](Person& person) {
    const HWND outer = person.AwaitForm(u"FTest");
    EXPECT_EQ(GetWindow(outer, GW_OWNER), nullptr);
    person.Click(person.Control(outer, u"keyTwo"));
    EXPECT_EQ(GetWindow(person.AwaitForm(u"FInner"), GW_OWNER), nullptr);
    person.Press(VK_ESCAPE);
    person.AwaitForm(u"FTest");
    person.Press(VK_ESCAPE);
  });
}

TEST_F(Ownership, AnyWindowOfTheHostMayGoWhileAFormIsUp) {
  std::atomic<bool> gone = false;
  form.keyTwo.Click = [&] {
    other.Destroy();
    main.Destroy();
    gone = true;
  };
  ShowWith(form, [&](Person& person) {
    const HWND window = TakeAway(person, gone);
    person.Click(person.Control(window, u"keyOne"));
  });
  EXPECT_EQ(form.Answer, u"keyOne");
}

TEST_F(Ownership, AFormComesBackInFrontOfWhatTheHostRaises) {
  const HostWindow* raised = &main;
  std::atomic<int> covered = 0;
  form.keyTwo.Click = [&] {
    SetWindowPos(raised->Get(), HWND_TOP, 0, 0, 0, 0, kInPlace);
    covered += Above(raised->Get(), WindowOf(form));
    raised = &other;
  };
  ShowWith(form, [&](Person& person) {
    const HWND window = person.AwaitForm(u"FTest");
    for (int times = 1; times <= 2; ++times) {
      person.Click(person.Control(window, u"keyTwo"));
      person.Await([&] { return covered == times; }, "a window of the host on top");
      person.Await([&] { return Above(window, main.Get()) && Above(window, other.Get()); },
                   "the form in front again");
    }
    person.Press(VK_ESCAPE);
  });
}

// As the operator does it who chooses another window of the host in the task list.
TEST_F(Ownership, WhoActivatesADisabledWindowGetsTheForm) {
  ShowWith(form, [&](Person& person) {
    const HWND window = person.AwaitForm(u"FTest");
    for (const HWND chosen : {other.Get(), main.Get()}) {
      SetForegroundWindow(chosen);
      person.AwaitForm(u"FTest");
      EXPECT_TRUE(Above(window, chosen));
    }
    person.Press(VK_ESCAPE);
  });
}

TEST_F(Ownership, AFormThatOpensInTheBackgroundStandsInFrontOfItsHost) {
  SetForegroundWindow(stranger.Get());
  ASSERT_TRUE(Within([&] { return GetForegroundWindow() == stranger.Get(); }));
  std::atomic<bool> covered = false;
  form.Soon([&] {
    SetWindowPos(main.Get(), HWND_TOP, 0, 0, 0, 0, kInPlace);
    covered = Above(main.Get(), WindowOf(form));
  });
  ShowWith(form, [&](Person& person) {
    person.Await([&] { return covered.load(); }, "the host on top");
    const HWND window = WindowOf(form);
    person.Await([&] { return Above(window, main.Get()); }, "the form in front again");
    EXPECT_TRUE(Above(window, other.Get()));
    SetForegroundWindow(window);
    person.AwaitForm(u"FTest");
    person.Press(VK_ESCAPE);
  });
  EXPECT_EQ(GetActiveWindow(), main.Get());
}

TEST_F(Ownership, AFormStandsInFrontOfASplashOnTopOfEverything) {
  const HostWindow splash(WS_VISIBLE, WS_EX_TOPMOST);
  form.keyTwo.Click = [&] { splash.Destroy(); };
  ShowWith(form, [&](Person& person) {
    const HWND window = person.AwaitForm(u"FTest");
    EXPECT_TRUE(Above(window, splash.Get()));
    person.Click(person.Control(window, u"keyTwo"));
    // Without it the form is in front of its host alone.
    person.Await([&] { return (GetWindowLongPtrW(window, GWL_EXSTYLE) & WS_EX_TOPMOST) == 0; },
                 "the form among the others");
    person.Press(VK_ESCAPE);
  });
}

// As a message box does that closes itself while a box opened from it is up.
TEST_F(Ownership, ActivationReturnsToTheHostAlsoWhenTheOuterFormGoesFirst) {
  other.Destroy();
  const int activations = stranger.Activations();
  TestForm inner(platform, u"FInner");
  form.keyTwo.Click = [&] { inner.ShowModal(); };
  inner.keyTwo.Click = [&] { form.Unload(); };
  ShowWith(form, [&](Person& person) {
    const HWND outer = person.AwaitForm(u"FTest");
    person.Click(person.Control(outer, u"keyTwo"));
    const HWND window = person.AwaitForm(u"FInner");
    person.Click(person.Control(window, u"keyTwo"));
    person.Await([&] { return !IsWindowVisible(outer); }, "the outer form to go");
    EXPECT_FALSE(IsWindowEnabled(main.Get()));
    person.AwaitForm(u"FInner");
    person.Press(VK_ESCAPE);
  });
  EXPECT_EQ(GetForegroundWindow(), main.Get());
  EXPECT_EQ(GetFocus(), main.Edit());
  EXPECT_EQ(stranger.Activations(), activations);
  EXPECT_TRUE(IsWindowEnabled(main.Get()));
}

// The window that was active when the form opened has gone meanwhile.
TEST_F(Ownership, ActivationReturnsToAnotherWindowOfTheHost) {
  const int activations = stranger.Activations();
  std::atomic<bool> gone = false;
  form.keyTwo.Click = [&] {
    main.Destroy();
    gone = true;
  };
  ShowWith(form, [&](Person& person) {
    TakeAway(person, gone);
    person.Press(VK_ESCAPE);
  });
  EXPECT_EQ(GetForegroundWindow(), other.Get());
  EXPECT_EQ(stranger.Activations(), activations);
}

}  // namespace

}  // namespace krx::test
