// A compiled client that knows the interface, with windows and timers of its own.

#include "support/DialogTest.h"

namespace krx::drive {
namespace {

class EarlyBound : public DialogTest {};

TEST_F(EarlyBound, AClientGetsTheResultAsTheEnumOfTheTypeLibrary) {
  RunProgram("early_client.exe answer");
  NextBox().Child(L"keyButton(1)").Click();
  EXPECT_EQ(Printed(), Lines{"no"});
}

TEST_F(EarlyBound, ABoxOpensOverAnotherFromATimerOfTheClientsThread) {
  RunProgram("early_client.exe nested");
  const Window outer = NextBox();
  const HANDLE nested_wanted = OpenEventW(EVENT_MODIFY_STATE, FALSE, L"krx-nested-wanted");
  ASSERT_TRUE(SetEvent(nested_wanted));
  CloseHandle(nested_wanted);
  const Window nested = NextBox();
  EXPECT_TRUE(outer.Visible());
  EXPECT_FALSE(outer.Enabled());
  EXPECT_EQ(nested.Child(L"idxMessage").Text(), L"Nested");
  // The key, for the window manager may still be putting both boxes in their places, and it takes
  // a press of the mouse with it that comes in the same moment.
  nested.WaitForFocusOn(L"keyButton(0)");
  PressKey(L"Enter");
  nested.WaitUntilGone();
  TheClient().WaitForLine("nested 4");
  EXPECT_TRUE(Within(kPatience, [&] { return outer.Enabled(); }));
  outer.WaitForFocusOn(L"keyButton(0)");
  PressKey(L"Enter");
  EXPECT_EQ(Printed(), (Lines{"nested 4", "outer 6"}));
}

TEST_F(EarlyBound, OtherWindowsOfTheThreadAreDisabledWhileABoxIsUp) {
  RunProgram("early_client.exe windows");
  const Window box = NextBox();
  EXPECT_FALSE(WaitForTitle(L"Client window").Enabled());
  EXPECT_FALSE(WaitForTitle(L"Disabled window").Enabled());
  EXPECT_TRUE(box.Enabled());
  PressKey(L"Enter");
  EXPECT_EQ(Printed(),
            (Lines{"client window enabled", "disabled window disabled", "focus restored"}));
}

TEST_F(EarlyBound, AQuitThatComesWhileABoxIsUpReachesTheClientsOwnLoop) {
  RunProgram("early_client.exe quit");
  EXPECT_EQ(Printed(), (Lines{"result 6", "quit 7"}));
}

TEST_F(EarlyBound, FailuresArriveAsStatusWithAnErrorObject) {
  RunProgram("early_client.exe failures");
  EXPECT_EQ(Printed(), (Lines{"mismatch 800A000D", "with text", "no place for a host 80004003"}));
}

}  // namespace
}  // namespace krx::drive
