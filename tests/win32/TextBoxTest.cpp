#include <gtest/gtest.h>

#include <vector>

#include "Person.h"
#include "TestForm.h"
#include "ui/Keyboard.h"

namespace krx::test {

namespace {

TEST(TextBox, TypingChangesTheTextAndRaisesChangeOncePerCharacter) {
  win32::Win32Platform platform;
  TestForm form(platform);
  form.txtName.TabIndex = 0;
  int changes = 0;
  form.txtName.Change = [&] { ++changes; };
  ShowWith(form, [&](Person& person) {
    const HWND name = person.Control(person.AwaitForm(u"FTest"), u"txtName");
    for (const WORD key : {WORD{'A'}, WORD{'B'}, WORD{'C'}})
      person.Press(key);
    person.Await([&] { return TextOf(name) == u"abc"; }, "the text");
    person.Press(VK_ESCAPE);
  });
  EXPECT_EQ(form.txtName.Text(), u"abc");
  EXPECT_EQ(changes, 3);
}

TEST(TextBox, ATextSetByTheFormRaisesChangeOnceAndReachesTheWindow) {
  win32::Win32Platform platform;
  TestForm form(platform);
  int changes = 0;
  form.txtName.Change = [&] { ++changes; };
  form.Soon([&] { form.txtName.Text = u"set"; });
  ShowWith(form, [&](Person& person) {
    const HWND name = person.Control(person.AwaitForm(u"FTest"), u"txtName");
    person.Await([&] { return TextOf(name) == u"set"; }, "the text");
    person.Press(VK_ESCAPE);
  });
  EXPECT_EQ(changes, 1);
}

TEST(TextBox, TheSelectionGoesBothWays) {
  win32::Win32Platform platform;
  TestForm form(platform);
  form.txtName.TabIndex = 0;
  form.txtName.Text = u"hello world";
  form.txtName.GotFocus = [&] {
    form.txtName.SelStart = 0;
    form.txtName.SelLength = 5;
  };
  std::vector<int> seen;
  form.txtName.KeyUp = [&](int& key, int) {
    if (key == VK_END) seen = {form.txtName.SelStart(), form.txtName.SelLength()};
  };
  ShowWith(form, [&](Person& person) {
    const HWND name = person.Control(person.AwaitForm(u"FTest"), u"txtName");
    person.Press('X');  // replaces the selection
    person.Await([&] { return TextOf(name) == u"x world"; }, "the text");
    person.Press(VK_END, VK_SHIFT);
    person.Await([&] { return !seen.empty(); }, "the key");
    person.Press(VK_ESCAPE);
  });
  EXPECT_EQ(seen, (std::vector<int>{1, 6}));
}

TEST(TextBox, ALockedBoxTakesNoInput) {
  win32::Win32Platform platform;
  TestForm form(platform);
  form.txtName.TabIndex = 0;
  form.txtName.Text = u"fixed";
  form.txtName.Locked = true;
  int pressed = 0;
  form.txtName.KeyPress = [&](char16_t&) { ++pressed; };
  ShowWith(form, [&](Person& person) {
    const HWND name = person.Control(person.AwaitForm(u"FTest"), u"txtName");
    person.Press('Q');
    person.Await([&] { return pressed == 1; }, "the key");
    EXPECT_EQ(TextOf(name), u"fixed");
    person.Press(VK_ESCAPE);
  });
  EXPECT_EQ(form.txtName.Text(), u"fixed");
}

TEST(TextBox, EnterReachesKeyPressAs13) {
  win32::Win32Platform platform;
  TestForm form(platform);
  form.txtName.TabIndex = 0;
  form.txtName.KeyPress = [&](char16_t& c) {
    if (c == ui::kKeyEnter) form.Unload();
  };
  ShowWith(form, [](Person& person) {
    person.AwaitForm(u"FTest");
    person.Press(VK_RETURN);
  });
  EXPECT_FALSE(form.Loaded());
  EXPECT_EQ(form.txtName.Text(), u"");
}

TEST(TextBox, KeysOfTheClipboardWorkOnTheWholeText) {
  win32::Win32Platform platform;
  TestForm form(platform);
  form.txtName.TabIndex = 0;
  form.txtName.Text = u"plant one";
  ShowWith(form, [&](Person& person) {
    const HWND name = person.Control(person.AwaitForm(u"FTest"), u"txtName");
    person.Press('A', VK_CONTROL);
    person.Await([&] { return form.txtName.SelLength() == 9; }, "the selection");
    person.Press('X', VK_CONTROL);
    person.Await([&] { return TextOf(name).empty(); }, "nothing left");
    person.Press('V', VK_CONTROL);
    person.Press('V', VK_CONTROL);
    person.Await([&] { return TextOf(name) == u"plant oneplant one"; }, "the text twice");
    person.Press('A', VK_CONTROL);
    person.Press('C', VK_CONTROL);
    person.Press(VK_END);
    person.Press('V', VK_CONTROL);
    person.Await([&] { return TextOf(name).size() == 36; }, "the copy behind it");
    person.Press(VK_ESCAPE);
  });
  EXPECT_EQ(form.txtName.Text().size(), 36u);
}

TEST(TextBox, ALockedTextIsCopiedButNeitherCutNorReplaced) {
  win32::Win32Platform platform;
  TestForm form(platform);
  form.txtName.TabIndex = 0;
  form.txtName.Text = u"locked";
  form.txtName.Locked = true;
  int left = 0;
  form.txtName.KeyUp = [&](int& key, int) { left += key == VK_HOME ? 1 : 0; };
  ShowWith(form, [&](Person& person) {
    const HWND name = person.Control(person.AwaitForm(u"FTest"), u"txtName");
    person.Press('A', VK_CONTROL);
    person.Press('C', VK_CONTROL);
    person.Press('X', VK_CONTROL);
    person.Press('V', VK_CONTROL);
    person.Press(VK_HOME);
    person.Await([&] { return left == 1; }, "the last key");
    EXPECT_EQ(TextOf(name), u"locked");
    SendMessageW(name, EM_SETREADONLY, FALSE, 0);
    person.Press('V', VK_CONTROL);
    person.Await([&] { return TextOf(name) == u"lockedlocked"; }, "the copy");
    person.Press(VK_ESCAPE);
  });
}

TEST(TextBox, AConsumedCharacterIsNotTyped) {
  win32::Win32Platform platform;
  TestForm form(platform);
  form.txtName.TabIndex = 0;
  form.txtName.KeyPress = [&](char16_t& c) { c = c == u'a' ? u'\0' : u'x'; };
  ShowWith(form, [&](Person& person) {
    const HWND name = person.Control(person.AwaitForm(u"FTest"), u"txtName");
    person.Press('A');
    person.Press('B');
    person.Await([&] { return TextOf(name) == u"x"; }, "the replaced character");
    person.Press(VK_ESCAPE);
  });
}

TEST(TextBox, DisablingTheFocusedControlMovesTheFocusOn) {
  win32::Win32Platform platform;
  TestForm form(platform);
  form.txtName.TabIndex = 0;
  form.Soon([&] { form.txtName.Enabled = false; });
  ShowWith(form, [&](Person& person) {
    const HWND window = person.AwaitForm(u"FTest");
    person.AwaitFocus(person.Control(window, u"keyOne"));
    person.Press(VK_RETURN);
  });
  EXPECT_EQ(form.Answer, u"keyOne");
}

TEST(TextBox, HidingTheFocusedControlMovesTheFocusOn) {
  win32::Win32Platform platform;
  TestForm form(platform);
  form.txtName.TabIndex = 0;
  int lost = 0;
  form.txtName.LostFocus = [&] { ++lost; };
  form.Soon([&] { form.txtName.Visible = false; });
  ShowWith(form, [&](Person& person) {
    const HWND window = person.AwaitForm(u"FTest");
    person.AwaitFocus(person.Control(window, u"keyOne"));
    person.Press(VK_RETURN);
  });
  EXPECT_EQ(form.Answer, u"keyOne");
  EXPECT_EQ(lost, 1);
}

TEST(TextBox, AFormWithoutAnyFocusableControlStillHearsEsc) {
  win32::Win32Platform platform;
  TestForm form(platform);
  form.keyOne.Enabled = false;
  form.keyTwo.Visible = false;
  form.txtName.Enabled = false;
  ShowWith(form, [&](Person& person) {
    person.AwaitFocus(person.AwaitForm(u"FTest"));
    person.Press(VK_ESCAPE);
  });
  EXPECT_EQ(form.Answer, u"keyClose");
}

}  // namespace

}  // namespace krx::test
