// The message box under the keyboard: focus, tab order, access keys, Enter, Space and Esc.

#include "support/DialogTest.h"

namespace krx::drive {
namespace {

constexpr const char* kYesNoCancel = "WScript.Echo Dialogs.KRMsgBox(\"Text\", 3, \"Title\")\r\n";

class Keyboard : public DialogTest {};

TEST_F(Keyboard, EnterPressesTheDefaultButton) {
  RunScript(kYesNoCancel);
  const Window box = NextBox();
  box.WaitForFocusOn(L"keyButton(0)");
  PressKey(L"Enter");
  EXPECT_EQ(Printed(), Lines{"6"});
}

TEST_F(Keyboard, EnterPressesTheFocusedButtonEvenIfAnotherIsTheDefault) {
  RunScript(kYesNoCancel);
  const Window box = NextBox();
  box.WaitForFocusOn(L"keyButton(0)");
  PressKey(L"Tab");
  box.WaitForFocusOn(L"keyButton(1)");
  PressKey(L"Enter");
  EXPECT_EQ(Printed(), Lines{"7"});
}

TEST_F(Keyboard, SpacePressesTheFocusedButton) {
  RunScript("WScript.Echo Dialogs.KRMsgBox(\"Text\", 3 + 512, \"Title\")\r\n");
  const Window box = NextBox();
  box.WaitForFocusOn(L"keyButton(2)");
  PressKey(L"Space");
  EXPECT_EQ(Printed(), Lines{"2"});
}

TEST_F(Keyboard, TabAndShiftTabRunThroughTheButtonsInBothDirections) {
  RunScript(kYesNoCancel);
  const Window box = NextBox();
  box.WaitForFocusOn(L"keyButton(0)");
  PressKey(L"Tab");
  box.WaitForFocusOn(L"keyButton(1)");
  PressKey(L"Tab");
  box.WaitForFocusOn(L"keyButton(2)");
  PressKey(L"Shift+Tab");
  box.WaitForFocusOn(L"keyButton(1)");
  PressKey(L"Shift+Tab");
  box.WaitForFocusOn(L"keyButton(0)");
  PressKey(L"Enter");
  EXPECT_EQ(Printed(), Lines{"6"});
}

TEST_F(Keyboard, TabComesRoundToWhereItStarted) {
  RunScript(kYesNoCancel);
  const Window box = NextBox();
  box.WaitForFocusOn(L"keyButton(0)");
  // At most the three answers and the close button take part.
  bool round = false;
  for (int i = 0; i < 4 && !round; ++i) {
    const auto before = box.FocusedChild();
    PressKey(L"Tab");
    ASSERT_TRUE(Within(kPatience, [&] {
      const auto now = box.FocusedChild();
      return now && !(*now == *before);
    }));
    round = box.FocusedChild()->Name() == L"keyButton(0)";
  }
  EXPECT_TRUE(round);
  PressKey(L"Esc");
  EXPECT_EQ(Printed(), Lines{"6"});
}

TEST_F(Keyboard, EscDoesWhatTheCloseButtonDoesAndReturnsTheDefaultButtonsCode) {
  RunScript("WScript.Echo Dialogs.KRMsgBox(\"Text\", 3 + 256, \"Title\")\r\n");
  NextBox().WaitForFocusOn(L"keyButton(1)");
  PressKey(L"Esc");
  EXPECT_EQ(Printed(), Lines{"7"});
}

TEST_F(Keyboard, EscClosesABoxWithoutAnswerButton) {
  RunScript("WScript.Echo Dialogs.KRMsgBox(\"Text\", 6, \"Title\")\r\n");
  NextBox();
  PressKey(L"Esc");
  EXPECT_EQ(Printed(), Lines{"0"});
}

TEST_F(Keyboard, AccessKeysPressTheirButtons) {
  RunScript(
      "Dim i\r\nFor i = 1 To 3\r\n"
      "WScript.Echo Dialogs.KRMsgBoxEx(\"Text\", 0, \"Title\", \"\", 0, \"&First\", \"Secon&d\", "
      "\"&Third\")\r\nNext\r\n");
  for (const wchar_t* key : {L"Alt+d", L"Alt+t", L"Alt+f"}) {
    const Window box = NextBox();
    PressKey(key);
    box.WaitUntilGone();
  }
  EXPECT_EQ(Printed(), (Lines{"12", "13", "11"}));
}

// As everywhere in dialogs: where no text can be typed, the letter alone will do.
TEST_F(Keyboard, AnAccessKeyNeedsNoModifier) {
  RunScript(kYesNoCancel);
  NextBox().WaitForFocusOn(L"keyButton(0)");
  PressKey(L"n");
  EXPECT_EQ(Printed(), Lines{"7"});
}

TEST_F(Keyboard, OtherKeysLeaveTheBoxOpen) {
  RunScript(kYesNoCancel);
  const Window box = NextBox();
  box.WaitForFocusOn(L"keyButton(0)");
  PressKey(L"Alt+q");
  TypeText(L"xz");
  PressKey(L"Delete");
  PressKey(L"Tab");
  box.WaitForFocusOn(L"keyButton(1)");  // all keys before have been handled
  EXPECT_TRUE(box.Visible());
  PressKey(L"Enter");
  EXPECT_EQ(Printed(), Lines{"7"});
}

}  // namespace
}  // namespace krx::drive
