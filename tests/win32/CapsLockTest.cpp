#include <gtest/gtest.h>

#include "Person.h"
#include "TestForm.h"
#include "ports/win32/Win32Platform.h"

// What is told beside a password field while Caps Lock is on.
namespace krx::test {

namespace {

bool CapsLockIsOn() {
  return (GetKeyState(VK_CAPITAL) & 1) != 0;
}

RECT BoundsOfWindow(HWND window) {
  RECT place{};
  GetWindowRect(window, &place);
  return place;
}

BOOL CALLBACK TakeHint(HWND window, LPARAM data) {
  if (!IsWindowVisible(window) || NameOf(window) != u"CapsLockHint") return TRUE;
  *reinterpret_cast<HWND*>(data) = window;
  return FALSE;
}

// The hint that is in sight; null without one.
HWND Hint() {
  HWND found = nullptr;
  EnumWindows(TakeHint, reinterpret_cast<LPARAM>(&found));
  return found;
}

class PasswordForm : public TestForm {
 public:
  using TestForm::TestForm;
  ui::PasswordBox txtPassword{*this, u"txtPassword"};
};

class CapsLockHints : public testing::Test {
 protected:
  CapsLockHints() {
    form.txtPassword.Place({180, 1700, 2700, 0});
    form.txtPassword.TabIndex = 0;
    form.CapsLockWords = [] { return String(u"Caps Lock is on"); };
  }
  // Shows the form with the focus in the password field and Caps Lock off before and after.
  void Work(const std::function<void(Person&, HWND)>& act) {
    ShowWith(form, [&](Person& person) {
      const HWND window = person.AwaitForm(u"FTest");
      person.AwaitFocus(person.Control(window, u"txtPassword"));
      act(person, window);
      person.Press(VK_ESCAPE);
    });
    EXPECT_FALSE(CapsLockIsOn()) << "left on for the tests that follow";
  }
  static void AwaitHint(Person& person) {
    person.Await([] { return Hint() != nullptr; }, "hint");
  }
  static void AwaitNoHint(Person& person) {
    person.Await([] { return Hint() == nullptr; }, "no hint");
  }

  win32::Win32Platform platform;
  PasswordForm form{platform};
};

TEST_F(CapsLockHints, ComeAndGoWithTheKeyAndTakeNothingFromTheField) {
  String words;
  Work([&](Person& person, HWND window) {
    EXPECT_EQ(Hint(), nullptr);
    person.Press(VK_CAPITAL);
    AwaitHint(person);
    words = TextOf(Hint());
    person.AwaitFocus(person.Control(window, u"txtPassword"));
    EXPECT_EQ(GetForegroundWindow(), window);
    person.Type({'A'});
    person.Await([&] { return form.txtPassword.Text().Length() == 1; }, "letter");
    person.Press(VK_CAPITAL);
    AwaitNoHint(person);
  });
  EXPECT_EQ(words, u"Caps Lock is on");
}

TEST_F(CapsLockHints, StandOutsideTheFormBesideTheField) {
  RECT hint{};
  RECT field{};
  RECT around{};
  Work([&](Person& person, HWND window) {
    person.Press(VK_CAPITAL);
    AwaitHint(person);
    hint = BoundsOfWindow(Hint());
    field = BoundsOfWindow(person.Control(window, u"txtPassword"));
    around = BoundsOfWindow(window);
    person.Press(VK_CAPITAL);
    AwaitNoHint(person);
  });
  EXPECT_GE(hint.left, around.right);
  EXPECT_EQ((hint.top + hint.bottom) / 2, (field.top + field.bottom) / 2);
}

TEST_F(CapsLockHints, GoWhenTheFocusGoesAndComeBackWithIt) {
  Work([&](Person& person, HWND window) {
    person.Press(VK_CAPITAL);
    AwaitHint(person);
    person.Press(VK_TAB);
    AwaitNoHint(person);
    person.Press(VK_TAB, VK_SHIFT);
    person.AwaitFocus(person.Control(window, u"txtPassword"));
    AwaitHint(person);
    person.Press(VK_CAPITAL);
    AwaitNoHint(person);
  });
}

TEST_F(CapsLockHints, FollowAFormThatIsMoved) {
  Work([&](Person& person, HWND window) {
    person.Press(VK_CAPITAL);
    AwaitHint(person);
    const RECT before = BoundsOfWindow(Hint());
    SetWindowPos(window, nullptr, 40, 60, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
    person.Await([&] { return BoundsOfWindow(Hint()).top != before.top; }, "hint follows");
    EXPECT_GE(BoundsOfWindow(Hint()).left, BoundsOfWindow(window).right);
    person.Press(VK_CAPITAL);
    AwaitNoHint(person);
  });
}

TEST_F(CapsLockHints, GoWithTheForm) {
  ShowWith(form, [&](Person& person) {
    person.AwaitForm(u"FTest");
    person.Press(VK_CAPITAL);
    AwaitHint(person);
    person.Press(VK_ESCAPE);
    AwaitNoHint(person);
    person.Press(VK_CAPITAL);
  });
}

TEST_F(CapsLockHints, DoNotComeWithoutWords) {
  form.CapsLockWords = [] { return String(); };
  Work([&](Person& person, HWND) {
    person.Press(VK_CAPITAL);
    person.Type({'A'});
    person.Await([&] { return form.txtPassword.Text().Length() == 1; }, "letter");
    EXPECT_EQ(Hint(), nullptr);
    person.Press(VK_CAPITAL);
    person.Type({'A'});
    person.Await([&] { return form.txtPassword.Text().Length() == 2; }, "letter");
  });
}

}  // namespace

}  // namespace krx::test
