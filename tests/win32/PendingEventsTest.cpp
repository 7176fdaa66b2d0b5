#include <gtest/gtest.h>

#include <functional>

#include "Person.h"
#include "TestForm.h"

// Handling pending events from a handler ends, whatever goes on coming, and leaves the operator's
// input where it is.
namespace krx::test {

namespace {

constexpr int kForever = 1000000;
constexpr UINT kPosted = WM_APP + 1;

// A window on the form that is up, whose messages a test hears.
class Listener {
 public:
  using Hear = std::function<void(HWND, UINT)>;

  explicit Listener(Hear hear)
      : hear_(std::move(hear)),
        window_(CreateWindowExW(0, L"STATIC", L"", WS_CHILD | WS_VISIBLE, 0, 0, 20, 20,
                                GetActiveWindow(), nullptr, nullptr, nullptr)) {
    SetWindowLongPtrW(window_, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
    SetWindowLongPtrW(window_, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&Procedure));
    ValidateRect(window_, nullptr);
  }
  ~Listener() { DestroyWindow(window_); }
  Listener(const Listener&) = delete;
  Listener& operator=(const Listener&) = delete;
  HWND Window() const { return window_; }

 private:
  static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM w, LPARAM l) {
    const auto* self = reinterpret_cast<Listener*>(GetWindowLongPtrW(window, GWLP_USERDATA));
    if (message == WM_PAINT) ValidateRect(window, nullptr);
    self->hear_(window, message);
    return message == WM_PAINT ? 0 : DefWindowProcW(window, message, w, l);
  }

  const Hear hear_;
  HWND window_;
};

class PendingEvents : public testing::Test {
 protected:
  // Runs in a handler of the form that is up; then the form closes.
  void InHandler(const std::function<void()>& act) {
    form.Soon([&] {
      act();
      form.Unload();
    });
    ShowWith(form, [](Person&) {});
  }

  win32::Win32Platform platform;
  TestForm form{platform};
};

TEST_F(PendingEvents, OfAWindowThatAsksForPaintsWithoutEndArePaintedOnce) {
  int paints = 0;
  InHandler([&] {
    const Listener listener([&](HWND window, UINT message) {
      if (message == WM_PAINT && ++paints < kForever) InvalidateRect(window, nullptr, FALSE);
    });
    InvalidateRect(listener.Window(), nullptr, FALSE);
    platform.ProcessEvents();
  });
  EXPECT_EQ(paints, 1);
}

TEST_F(PendingEvents, ThatBringForthNewOnesWithoutEndComeToAnEnd) {
  int heard = 0;
  InHandler([&] {
    const Listener listener([&](HWND window, UINT message) {
      if (message == kPosted && ++heard < kForever) PostMessageW(window, kPosted, 0, 0);
    });
    PostMessageW(listener.Window(), kPosted, 0, 0);
    platform.ProcessEvents();
  });
  EXPECT_GT(heard, 0);
  EXPECT_LT(heard, kForever);
}

TEST_F(PendingEvents, AreAllHandledThatWereThereAtTheBeginning) {
  constexpr int kMessages = 100;
  int heard = 0;
  InHandler([&] {
    const Listener listener([&](HWND, UINT message) { heard += message == kPosted ? 1 : 0; });
    for (int i = 0; i < kMessages; ++i)
      PostMessageW(listener.Window(), kPosted, 0, 0);
    platform.ProcessEvents();
  });
  EXPECT_EQ(heard, kMessages);
}

TEST_F(PendingEvents, DoNotLetTheMouseOvertakeAKeyWhoseHandlerIsRunning) {
  int clicks_in_handler = -1;
  HWND key_one = nullptr;
  form.txtName.KeyDown = [&](int&, int) {
    Person().Click(key_one);
    platform.ProcessEvents();
    clicks_in_handler = form.Clicks;
  };
  ShowWith(form, [&](Person& person) {
    const HWND window = person.AwaitForm(u"FTest");
    key_one = person.Control(window, u"keyOne");
    person.Click(person.Control(window, u"txtName"));
    person.AwaitFocus(person.Control(window, u"txtName"));
    person.Press('A');
  });
  EXPECT_EQ(clicks_in_handler, 0);
  EXPECT_EQ(form.Answer, u"keyOne");
  EXPECT_EQ(form.txtName.Text(), u"a");
}

}  // namespace

}  // namespace krx::test
