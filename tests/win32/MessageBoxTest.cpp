#include <gtest/gtest.h>

#include "Desk.h"
#include "Person.h"

namespace krx::test {

namespace {

BOOL CALLBACK CountWindow(HWND, LPARAM data) {
  ++*reinterpret_cast<int*>(data);
  return TRUE;
}

TEST(FMessageBox, EveryButtonIsClickedByName) {
  constexpr int kYesNoCancel = 3;
  const std::pair<StringView, int> answers[] = {
      {u"keyButton(0)", 6}, {u"keyButton(1)", 7}, {u"keyButton(2)", 2}, {u"keyClose", 6}};
  for (const auto& [button, result] : answers) {
    Desk desk;
    int got = 0;
    RunWith([&] { got = desk.Dialog->KRMsgBox(u"Text", kYesNoCancel | 32, u"Title"); },
            [button = button](Person& person) {
              const HWND box = person.AwaitForm(u"FMessageBox");
              EXPECT_EQ(TextOf(box), u"Title");
              EXPECT_NE(person.FindControl(box, u"picIcon"), nullptr);
              EXPECT_EQ(TextOf(person.Control(box, u"idxMessage")), u"Text");
              person.Click(person.Control(box, button));
            });
    EXPECT_EQ(got, result) << ToUtf8(button);
  }
}

TEST(FMessageBox, OnlyVisibleControlsHaveWindows) {
  Desk desk;
  RunWith([&] { desk.Dialog->KRMsgBox(u"Text"); },
          [](Person& person) {
            const HWND box = person.AwaitForm(u"FMessageBox");
            int windows = 0;
            EnumChildWindows(box, CountWindow, reinterpret_cast<LPARAM>(&windows));
            EXPECT_EQ(windows, 4);  // caption, close key, message, one button
            person.Press(VK_RETURN);
          });
}

TEST(FMessageBox, TheHelpKeyLeavesTheBoxOpen) {
  Desk desk;
  int got = 0;
  RunWith([&] { got = desk.Dialog->KRMsgBox(u"Text", 4, u"Title", u"help"); },
          [](Person& person) {
            const HWND box = person.AwaitForm(u"FMessageBox");
            const HWND help = person.Control(box, u"keyHelp");
            person.Click(help);
            person.AwaitFocus(help);
            person.AwaitRelease(help);
            person.Press(VK_TAB);
            person.AwaitFocus(person.Control(box, u"keyButton(0)"));
            person.Press(VK_TAB);
            person.AwaitFocus(person.Control(box, u"keyButton(1)"));
            person.Press(VK_RETURN);
          });
  EXPECT_EQ(got, 7);
}

TEST(FMessageBox, IsDraggedByItsCaptionLine) {
  Desk desk;
  RunWith([&] { desk.Dialog->KRMsgBox(u"A text that makes the box wide enough", 0, u"Title"); },
          [](Person& person) {
            const HWND box = person.AwaitForm(u"FMessageBox");
            person.Drag(person.Control(box, u"idxCaption"), 61, 43);
            person.Press(VK_RETURN);
          });
}

TEST(FMessageBox, IsNotDraggedFromItsMargin) {
  Desk desk;
  RunWith([&] { desk.Dialog->KRMsgBox(u"A text that makes the box wide enough", 1, u"Title"); },
          [](Person& person) {
            const HWND box = person.AwaitForm(u"FMessageBox");
            const RECT start = PlaceOf(box);
            const RECT line = PlaceOf(person.Control(box, u"idxCaption"));
            // From the margin below the caption line onto the line, and along it.
            person.DragTo({line.left + 4, line.bottom + 6}, {line.left + 40, line.top + 6});
            // Once the key is through, so is the mouse.
            person.Press(VK_TAB);
            person.AwaitFocus(person.Control(box, u"keyButton(1)"));
            const RECT end = PlaceOf(box);
            EXPECT_EQ(end.left, start.left);
            EXPECT_EQ(end.top, start.top);
            person.Press(VK_RETURN);
          });
}

TEST(FMessageBox, ActivatesItselfAfterItsSeconds) {
  Desk desk;
  service::FreeButtons extra;
  extra.Button1 = u"Go";
  extra.AutoActivation = 1;
  int got = 0;
  RunWith([&] { got = desk.Dialog->KRMsgBoxEx(u"Text", 0, u"Title", u"", 0, extra); },
          [](Person& person) { person.AwaitForm(u"FMessageBox"); });
  EXPECT_EQ(got, 11);
}

}  // namespace

}  // namespace krx::test
