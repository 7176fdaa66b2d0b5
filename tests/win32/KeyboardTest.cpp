#include <gtest/gtest.h>

#include <atomic>
#include <vector>

#include "Person.h"
#include "TestForm.h"
#include "ui/Keyboard.h"

namespace krx::test {

namespace {

TEST(Keyboard, TabWalksTheTabOrderAndSpacePressesTheFocusedButton) {
  win32::Win32Platform platform;
  TestForm form(platform);
  ShowWith(form, [](Person& person) {
    const HWND window = person.AwaitForm(u"FTest");
    const HWND one = person.Control(window, u"keyOne");
    const HWND two = person.Control(window, u"keyTwo");
    const HWND name = person.Control(window, u"txtName");
    person.AwaitFocus(one);
    const struct {
      WORD Key;
      HWND Focus;
      WORD Modifier = 0;
    } strokes[] = {
        {VK_TAB, two},           {VK_TAB, name}, {VK_TAB, one},  {VK_TAB, name, VK_SHIFT},
        {VK_TAB, two, VK_SHIFT}, {VK_LEFT, one}, {VK_RIGHT, two}};
    for (const auto& [key, focus, modifier] : strokes) {
      person.Press(key, modifier);
      person.AwaitFocus(focus);
    }
    person.Press(VK_SPACE);
  });
  EXPECT_EQ(form.Answer, u"keyTwo");
  EXPECT_EQ(form.Clicks, 1);
}

TEST(Keyboard, EnterPressesTheFocusedButton) {
  win32::Win32Platform platform;
  TestForm form(platform);
  ShowWith(form, [](Person& person) {
    person.AwaitForm(u"FTest");
    person.Press(VK_RETURN);
  });
  EXPECT_EQ(form.Answer, u"keyOne");
}

TEST(Keyboard, AltAndF4DoWhatEscDoes) {
  win32::Win32Platform platform;
  TestForm form(platform);
  ShowWith(form, [](Person& person) {
    person.AwaitForm(u"FTest");
    person.Press(VK_F4, VK_MENU);
  });
  EXPECT_EQ(form.Answer, u"keyClose");
}

TEST(Keyboard, AnAccessKeyPressesItsButtonWithAltAndWithout) {
  for (const WORD held : {WORD{VK_MENU}, WORD{0}}) {
    win32::Win32Platform platform;
    TestForm form(platform);
    ShowWith(form, [held](Person& person) {
      person.AwaitForm(u"FTest");
      person.Press('Z', held);
    });
    EXPECT_EQ(form.Answer, u"keyTwo");
  }
}

TEST(Keyboard, ALetterIsInputWhileAnInputBoxHasTheFocus) {
  win32::Win32Platform platform;
  TestForm form(platform);
  form.txtName.TabIndex = 0;
  ShowWith(form, [&](Person& person) {
    const HWND window = person.AwaitForm(u"FTest");
    const HWND name = person.Control(window, u"txtName");
    person.AwaitFocus(name);
    person.Press('Z');
    person.Await([&] { return TextOf(name) == u"z"; }, "the letter");
    person.Press('Z', VK_MENU);
  });
  EXPECT_EQ(form.txtName.Text(), u"z");
  EXPECT_EQ(form.Answer, u"keyTwo");
}

// A plant question was answered by the Enter key that the operator still held down from confirming
// the previous one.
TEST(Keyboard, AKeyHeldDownFromBeforeAnswersNothing) {
  for (const WORD key : {WORD{VK_RETURN}, WORD{VK_SPACE}, WORD{VK_ESCAPE}, WORD{'F'}}) {
    win32::Win32Platform platform;
    TestForm form(platform);
    std::atomic<int> behind = 0;
    form.keyOne.KeyUp = [&](int& code, int) { behind += code == 'M'; };
    ShowWith(form, [&](Person& person) {
      const HWND window = person.AwaitForm(u"FTest");
      person.Repeat(window, key, 5);
      // Posted messages come before input, so when this key has arrived, the repeats have.
      person.Press('M');
      person.Await([&] { return behind > 0; }, "the key behind the repeats");
      EXPECT_TRUE(IsWindowVisible(window));
      person.Press(key);
    });
    EXPECT_EQ(form.Clicks, 1) << key;
  }
}

// The help key sends the characters F and 1 to the active window, which is its own form.
TEST(Keyboard, KeysThatTheFormSendsItselfPressNoButton) {
  win32::Win32Platform platform;
  TestForm form(platform);
  std::atomic<int> ones = 0;
  form.keyTwo.Click = [&] { platform.SendKeys(u"F1"); };
  form.keyTwo.KeyPress = [&](char16_t& c) {
    if (c == u'1') ++ones;
  };
  ShowWith(form, [&](Person& person) {
    const HWND window = person.AwaitForm(u"FTest");
    person.Click(person.Control(window, u"keyTwo"));
    person.Await([&] { return ones == 1; }, "the second character");
    EXPECT_TRUE(IsWindowVisible(window));
    // The operator's own F still counts afterwards.
    person.Press('F');
  });
  EXPECT_EQ(form.Answer, u"keyOne");
}

TEST(Keyboard, SentKeysArriveAsTyped) {
  win32::Win32Platform platform;
  TestForm form(platform);
  form.txtName.TabIndex = 0;
  form.Soon([&] { platform.SendKeys(u"aB1 \u00E4\u20AC{+}{LEFT}{BS}x"); });
  ShowWith(form, [&](Person& person) {
    const HWND window = person.AwaitForm(u"FTest");
    const HWND name = person.Control(window, u"txtName");
    person.Await([&] { return TextOf(name) == u"aB1 \u00E4x+"; }, "the text");
    person.Press(VK_ESCAPE);
  });
  EXPECT_EQ(ToUtf8(form.txtName.Text()), ToUtf8(u"aB1 \u00E4x+"));
}

TEST(Keyboard, AControlMayConsumeItsKeysAndHearsNothingOfTheDialogs) {
  win32::Win32Platform platform;
  TestForm form(platform);
  std::vector<int> heard;
  form.keyOne.KeyDown = [&](int& key, int) {
    heard.push_back(key);
    key = 0;
  };
  ShowWith(form, [](Person& person) {
    person.AwaitForm(u"FTest");
    person.Press(VK_SPACE);
    person.Press(VK_F7);
    person.Press(VK_TAB);
    person.Press(VK_TAB, VK_SHIFT);
    person.Press(VK_RETURN);
  });
  EXPECT_EQ(heard, (std::vector<int>{VK_SPACE, VK_F7}));
  EXPECT_EQ(form.Clicks, 1);
}

}  // namespace

}  // namespace krx::test
