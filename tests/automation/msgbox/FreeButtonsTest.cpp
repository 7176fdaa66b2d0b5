// Free buttons, the help button and auto-activation.

#include <chrono>

#include "support/DialogTest.h"

namespace krx::drive {
namespace {

using Clock = std::chrono::steady_clock;

class FreeButtons : public DialogTest {};

TEST_F(FreeButtons, ReturnElevenTwelveAndThirteen) {
  RunScript(
      "Dim i\r\nFor i = 1 To 3\r\n"
      "WScript.Echo Dialogs.KRMsgBoxEx(\"Text\", 0, \"Title\", \"\", 0, \"One\", \"Two\", "
      "\"Three\")\r\nNext\r\n");
  for (const wchar_t* name : {L"keyButton(0)", L"keyButton(1)", L"keyButton(2)"}) {
    const Window box = NextBox();
    EXPECT_EQ(Shown(box.Child(L"keyButton(1)")), L"Two");
    box.Child(name).Click();
    box.WaitUntilGone();
  }
  EXPECT_EQ(Printed(), (Lines{"11", "12", "13"}));
}

TEST_F(FreeButtons, TheFirstOneTakesThePlaceOfTheSingleOk) {
  RunScript("WScript.Echo Dialogs.KRMsgBoxEx(\"Text\", 0, \"Title\", \"\", 0, \"Go on\")\r\n");
  const Window box = NextBox();
  EXPECT_EQ(VisibleButtons(box), std::vector<std::wstring>{L"keyButton(0)"});
  EXPECT_EQ(Shown(box.Child(L"keyButton(0)")), L"Go on");
  PressKey(L"Enter");
  EXPECT_EQ(Printed(), Lines{"11"});
}

TEST_F(FreeButtons, TheThirdOneJoinsYesAndNo) {
  RunScript(
      "WScript.Echo Dialogs.KRMsgBoxEx(\"Text\", 4, \"Title\", \"\", 0, \"\", \"\", "
      "\"Later\")\r\n");
  const Window box = NextBox();
  EXPECT_EQ(VisibleButtons(box).size(), 3u);
  EXPECT_EQ(Shown(box.Child(L"keyButton(0)")), Text("Yes"));
  box.Child(L"keyButton(2)").Click();
  EXPECT_EQ(Printed(), Lines{"13"});
}

class HelpButton : public DialogTest {};

TEST_F(HelpButton, LeavesTheBoxOpen) {
  RunScript("WScript.Echo Dialogs.KRMsgBox(\"Text\", 1, \"Title\", \"plant.chm\")\r\n");
  const Window box = NextBox();
  ASSERT_EQ(VisibleButtons(box),
            (std::vector<std::wstring>{L"keyButton(0)", L"keyButton(1)", L"keyHelp"}));
  box.Child(L"keyHelp").Click();
  box.WaitForFocusOn(L"keyHelp");
  box.Child(L"keyButton(1)").Click();
  EXPECT_EQ(Printed(), Lines{"2"});
}

// Help sends the two letters F and 1. They are no access keys: the letter alone must not press the
// button whose access key is F.
TEST_F(HelpButton, LeavesTheBoxOpenBesideAButtonWhoseAccessKeyIsF) {
  RunScript(
      "WScript.Echo Dialogs.KRMsgBoxEx(\"Text\", 0, \"Title\", \"plant.chm\", 0, \"&Fertig\", "
      "\"&Other\")\r\n");
  const Window box = NextBox();
  box.Child(L"keyHelp").Click();
  box.WaitForFocusOn(L"keyHelp");
  // Sending takes several calls, and a key that comes between them is pressed with the Shift of the
  // capital letter. The button answers again when all is sent.
  const HWND key = box.Child(L"keyHelp").Handle();
  EXPECT_TRUE(
      Within(kPatience, [&] { return (SendMessageW(key, BM_GETSTATE, 0, 0) & BST_PUSHED) == 0; }));
  PressKey(L"Tab");
  box.WaitForFocusOn(L"keyButton(0)");
  PressKey(L"Tab");
  box.WaitForFocusOn(L"keyButton(1)");
  EXPECT_TRUE(box.Visible());
  PressKey(L"Enter");
  EXPECT_EQ(Printed(), Lines{"12"});
}

TEST_F(HelpButton, IsShownForAHelpFileOnlyWhateverTheStyleSays) {
  RunScript(Ask(16384));
  const Window box = NextBox();
  EXPECT_EQ(VisibleButtons(box), std::vector<std::wstring>{L"keyButton(0)"});
  PressKey(L"Enter");
  EXPECT_EQ(Printed(), Lines{"1"});
}

class AutoActivation : public DialogTest {};

TEST_F(AutoActivation, ReturnsTheDefaultButtonsCodeAfterTheSeconds) {
  const auto start = Clock::now();
  RunScript(
      "WScript.Echo Dialogs.KRMsgBoxEx(\"Text\", 4 + 256, \"Title\", \"\", 0, \"\", \"\", \"\", 2)"
      "\r\n");
  NextBox();
  EXPECT_EQ(Printed(), Lines{"7"});
  EXPECT_GE(Clock::now() - start, std::chrono::seconds(2));
}

TEST_F(AutoActivation, AnAnswerBeforeItsTimeCounts) {
  RunScript(
      "WScript.Echo Dialogs.KRMsgBoxEx(\"Text\", 4, \"Title\", \"\", 0, \"\", \"\", \"\", 60)\r\n");
  const Window box = NextBox();
  box.Child(L"keyButton(1)").Click();
  EXPECT_EQ(Printed(), Lines{"7"});
}

TEST_F(AutoActivation, IsOffForZeroAndBelow) {
  RunScript(
      "WScript.Echo Dialogs.KRMsgBoxEx(\"Text\", 0, \"Title\", \"\", 0, \"\", \"\", \"\", -1)\r\n");
  const Window box = NextBox();
  // A countdown that begins later has ended meanwhile.
  const ScriptFile later(
      "WScript.Echo CreateObject(\"KRXDialogs.KRXDialog\").KRMsgBoxEx(\"Text\", 0, \"Later\", "
      "\"\", "
      "0, \"\", \"\", \"\", 2)\r\n");
  Client counting(later.Command());
  EXPECT_EQ(counting.Finish(), 0u);
  EXPECT_EQ(counting.Lines(), Lines{"1"});
  EXPECT_TRUE(box.Visible());
  box.Child(L"keyButton(0)").Click();
  EXPECT_EQ(Printed(), Lines{"1"});
}

}  // namespace
}  // namespace krx::drive
