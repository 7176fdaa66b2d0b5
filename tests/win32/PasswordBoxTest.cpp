#include <gtest/gtest.h>

#include <atomic>
#include <string>
#include <vector>

#include "ControlsForm.h"
#include "Person.h"
#include "ui/Keyboard.h"

namespace krx::test {

namespace {

// The clipboard of the session, with one text in it.
class Clipboard {
 public:
  explicit Clipboard(const std::wstring& text) {
    const HGLOBAL block = GlobalAlloc(GMEM_MOVEABLE, (text.size() + 1) * sizeof(wchar_t));
    text.copy(static_cast<wchar_t*>(GlobalLock(block)), text.size());
    static_cast<wchar_t*>(GlobalLock(block))[text.size()] = 0;
    GlobalUnlock(block);
    OpenClipboard(nullptr);
    EmptyClipboard();
    SetClipboardData(CF_UNICODETEXT, block);
    CloseClipboard();
  }
  static std::wstring Text() {
    if (!OpenClipboard(nullptr)) return L"busy";
    const HANDLE data = GetClipboardData(CF_UNICODETEXT);
    const std::wstring text = data ? static_cast<const wchar_t*>(GlobalLock(data)) : L"";
    CloseClipboard();
    return text;
  }
};

class PasswordBox : public testing::Test {
 protected:
  PasswordBox() {
    form.txtPassword.TabIndex = 0;
    form.txtPassword.Change = [this] { ++changes; };
  }
  // The person acts in the focused password box and leaves by Esc.
  void Work(const std::function<void(Person&, HWND)>& person) {
    ShowWith(form, [&](Person& somebody) {
      const HWND box = somebody.Control(somebody.AwaitForm(u"FControls"), u"txtPassword");
      somebody.AwaitFocus(box);
      person(somebody, box);
      somebody.Press(VK_ESCAPE);
    });
  }
  std::string Held() const { return ToUtf8(form.txtPassword.Text().View()); }

  win32::Win32Platform platform;
  ControlsForm form{platform};
  std::atomic<int> changes = 0;
};

TEST_F(PasswordBox, TypedCharactersReachTheModelAndAsterisksTheWindow) {
  Work([&](Person& person, HWND box) {
    for (const WORD key : {WORD{'A'}, WORD{'B'}, WORD{'1'}})
      person.Press(key);
    person.Await([&] { return TextOf(box) == u"***"; }, "the asterisks");
  });
  EXPECT_EQ(Held(), "ab1");
  EXPECT_EQ(changes, 3);
}

// Whatever is done with the keyboard has the same effect as in a box that shows its text.
TEST_F(PasswordBox, IsEditedLikeAnyOtherBox) {
  struct Stroke {
    WORD Key;
    WORD Held;
  };
  const std::vector<Stroke> strokes{{'A', 0},
                                    {'B', 0},
                                    {'C', 0},
                                    {'D', 0},
                                    {'E', 0},
                                    {VK_LEFT, 0},
                                    {VK_BACK, 0},
                                    {VK_HOME, 0},
                                    {VK_DELETE, 0},
                                    {'F', VK_SHIFT},
                                    {VK_RIGHT, 0},
                                    {'G', 0},
                                    {VK_END, 0},
                                    {VK_LEFT, VK_SHIFT},
                                    {VK_LEFT, VK_SHIFT},
                                    {'H', 0},
                                    {VK_HOME, VK_SHIFT},
                                    {VK_DELETE, 0},
                                    {'I', 0},
                                    {'J', 0},
                                    {VK_BACK, 0},
                                    {VK_BACK, 0},
                                    {VK_BACK, 0},
                                    {'K', 0},
                                    {'L', VK_SHIFT}};
  form.txtShown.Locked = false;
  form.txtShown.TabIndex = 1;
  form.txtShown.TabStop = true;
  std::vector<std::string> secret;
  std::vector<std::string> plain;
  form.txtPassword.Change = [&] { secret.push_back(Held()); };
  form.txtShown.Change = [&] { plain.push_back(ToUtf8(form.txtShown.Text())); };
  form.txtShown.Text = u"";
  plain.clear();
  Work([&](Person& person, HWND box) {
    for (const Stroke& stroke : strokes)
      person.Press(stroke.Key, stroke.Held);
    person.Press(VK_TAB);
    const HWND shown = person.Control(GetParent(box), u"txtShown");
    person.AwaitFocus(shown);
    for (const Stroke& stroke : strokes)
      person.Press(stroke.Key, stroke.Held);
    person.Await([&] { return TextOf(shown) == u"kL"; }, "the last stroke");
  });
  EXPECT_EQ(secret, plain);
  EXPECT_EQ(Held(), "kL");
}

TEST_F(PasswordBox, TakesWhatIsPasted) {
  const Clipboard clipboard(L"pasted\r\nsecond line");
  form.txtPassword.Text = Password(u"old");
  form.txtPassword.GotFocus = [&] {
    form.txtPassword.SelStart = 0;
    form.txtPassword.SelLength = 3;
  };
  std::vector<std::string> held;
  form.txtPassword.Change = [&] { held.push_back(Held()); };
  Work([&](Person& person, HWND box) {
    person.Press('V', VK_CONTROL);
    person.Press(VK_INSERT, VK_SHIFT);
    person.Await([&] { return TextOf(box) == String(12, u'*'); }, "what was pasted");
    SendMessageW(box, WM_PASTE, 0, 0);
  });
  EXPECT_EQ(held, (std::vector<std::string>{"pasted", "pastedpasted", "pastedpastedpasted"}));
}

TEST_F(PasswordBox, GivesNothingToTheClipboard) {
  const Clipboard clipboard(L"before");
  form.txtPassword.Text = Password(u"secret");
  Work([&](Person& person, HWND box) {
    person.Press(VK_HOME);
    person.Press(VK_END, VK_SHIFT);
    person.Press('C', VK_CONTROL);
    person.Press('X', VK_CONTROL);
    person.Press(VK_INSERT, VK_CONTROL);
    person.Press(VK_DELETE, VK_SHIFT);
    SendMessageW(box, WM_COPY, 0, 0);
    SendMessageW(box, WM_CUT, 0, 0);
  });
  EXPECT_EQ(Clipboard::Text(), L"before");
  EXPECT_EQ(Held(), "secret");
}

TEST_F(PasswordBox, ShowsAsManyAsterisksAsTheTextOfTheFormHasCharacters) {
  form.txtPassword.Text = Password(u"four");
  form.Soon([&] { form.txtPassword.Text = Password(u"longer"); });
  Work([&](Person& person, HWND box) {
    person.Await([&] { return TextOf(box) == u"******"; }, "the new text");
  });
  EXPECT_EQ(changes, 2);
  EXPECT_EQ(Held(), "longer");
}

TEST_F(PasswordBox, TakesNoInputWhenLocked) {
  const Clipboard clipboard(L"pasted");
  form.txtPassword.Text = Password(u"fixed");
  form.txtPassword.Locked = true;
  std::atomic<bool> last = false;
  form.txtPassword.KeyUp = [&](int& key, int) { last = last || key == VK_DELETE; };
  changes = 0;
  Work([&](Person& person, HWND box) {
    person.Press('A');
    person.Press('V', VK_CONTROL);
    person.Press(VK_INSERT, VK_SHIFT);
    person.Press(VK_BACK);
    person.Press(VK_DELETE);
    person.Await([&] { return last.load(); }, "the keys");
    EXPECT_EQ(TextOf(box), u"*****");
  });
  EXPECT_EQ(Held(), "fixed");
  EXPECT_EQ(changes, 0);
}

TEST_F(PasswordBox, UndoesNothing) {
  Work([&](Person& person, HWND box) {
    person.Press('A');
    person.Press(VK_BACK);
    person.Press('Z', VK_CONTROL);
    person.Press('B');
    person.Await([&] { return TextOf(box) == u"*"; }, "the letter");
    EXPECT_EQ(SendMessageW(box, EM_UNDO, 0, 0), 0);
    EXPECT_EQ(SendMessageW(box, EM_CANUNDO, 0, 0), 0);
  });
  EXPECT_EQ(Held(), "b");
}

TEST_F(PasswordBox, DeletesCharactersOfTwoUnitsAsAWhole) {
  Work([&](Person& person, HWND box) {
    for (const WPARAM unit : {WPARAM{'a'}, WPARAM{0xD83D}, WPARAM{0xDE00}})
      PostMessageW(box, WM_CHAR, unit, 1);
    person.Await([&] { return TextOf(box) == u"***"; }, "the characters");
    person.Press(VK_BACK);
    person.Await([&] { return TextOf(box) == u"*"; }, "the deletion");
  });
  EXPECT_EQ(Held(), "a");
}

TEST_F(PasswordBox, HandlersSeeTheCharactersAndMayReplaceThem) {
  String seen;
  form.txtPassword.KeyPress = [&](char16_t& c) {
    if (c == ui::kKeyEscape) return;
    seen += c;
    c = c == u'a' ? u'\0' : u'x';
  };
  Work([&](Person& person, HWND box) {
    person.Press('A');
    person.Press('B');
    person.Await([&] { return TextOf(box) == u"*"; }, "the replaced character");
  });
  EXPECT_EQ(ToUtf8(seen), "ab");
  EXPECT_EQ(Held(), "x");
}

}  // namespace

}  // namespace krx::test
