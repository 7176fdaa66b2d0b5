// Where the box stands, what it shows, and in which language.

#include <algorithm>

#include "support/DialogTest.h"

namespace krx::drive {
namespace {

RECT WorkArea() {
  RECT area{};
  SystemParametersInfoW(SPI_GETWORKAREA, 0, &area, 0);
  return area;
}

bool Inside(const RECT& inner, const RECT& outer) {
  return inner.left >= outer.left && inner.top >= outer.top && inner.right <= outer.right &&
         inner.bottom <= outer.bottom;
}

class Placement : public DialogTest {};

TEST_F(Placement, TheBoxOpensInTheMiddleOfTheWorkArea) {
  RunScript(Ask(3 + 32));
  const RECT box = NextBox().Bounds();
  const RECT area = WorkArea();
  EXPECT_NEAR(box.left - area.left, area.right - box.right, 1);
  EXPECT_NEAR(box.top - area.top, area.bottom - box.bottom, 1);
  PressKey(L"Esc");
  EXPECT_EQ(Printed(), Lines{"6"});
}

TEST_F(Placement, ALongTextIsWrappedAndTheBoxStaysInsideTheWorkArea) {
  RunScript(
      "Dim text, i\r\nFor i = 1 To 100\r\ntext = text & \"long text \"\r\nNext\r\n"
      "WScript.Echo Dialogs.KRMsgBox(text, 1, \"Title\")\r\n");
  const Window box = NextBox();
  const RECT area = WorkArea();
  EXPECT_TRUE(Inside(box.Bounds(), area));
  const Window message = box.Child(L"idxMessage");
  // At most 60 % of the work area and 30 twips, which are 2 pixels here.
  EXPECT_LE(message.Bounds().right - message.Bounds().left, (area.right - area.left) * 6 / 10 + 3);
  const std::wstring text = message.Text();
  EXPECT_GE(std::count(text.begin(), text.end(), L'\n'), 3);
  PressKey(L"Enter");
  EXPECT_EQ(Printed(), Lines{"1"});
}

TEST_F(Placement, EveryVisibleControlLiesInsideTheBox) {
  RunScript(
      "WScript.Echo Dialogs.KRMsgBoxEx(\"Text\", 32, \"Title\", \"plant.chm\", 0, \"One\", "
      "\"A button with a rather long text\", \"Three\")\r\n");
  const Window box = NextBox();
  for (const Window& control : box.Descendants()) {
    if (!control.Visible()) continue;
    EXPECT_TRUE(Inside(control.Bounds(), box.Bounds())) << Narrow(control.Name());
  }
  PressKey(L"Enter");
  EXPECT_EQ(Printed(), Lines{"11"});
}

// The gap between answers equals the icon's left distance of 180 twips; help stands one and a half
// of it away.
TEST_F(Placement, ButtonsStandInOneRowWithTheirGaps) {
  RunScript("WScript.Echo Dialogs.KRMsgBox(\"Text\", 1, \"Title\", \"plant.chm\")\r\n");
  const Window box = NextBox();
  const RECT ok = box.Child(L"keyButton(0)").Bounds();
  const RECT cancel = box.Child(L"keyButton(1)").Bounds();
  const RECT help = box.Child(L"keyHelp").Bounds();
  EXPECT_EQ(ok.top, cancel.top);
  EXPECT_EQ(ok.top, help.top);
  EXPECT_NEAR(cancel.left - ok.right, 12, 1);    // 180 twips, 15 to the pixel
  EXPECT_NEAR(help.left - cancel.right, 18, 1);  // 270 twips
  PressKey(L"Enter");
  EXPECT_EQ(Printed(), Lines{"1"});
}

TEST_F(Placement, TheFormAndItsControlsCarryTheirNames) {
  RunScript(Ask(32));
  const Window box = NextBox();
  EXPECT_EQ(box.Name(), L"FMessageBox");
  for (const wchar_t* name :
       {L"idxCaption", L"idxMessage", L"picIcon", L"keyButton(0)", L"keyClose"})
    EXPECT_TRUE(box.Find(name).has_value()) << Narrow(name);
  PressKey(L"Enter");
  EXPECT_EQ(Printed(), Lines{"1"});
}

class Language : public DialogTest {};

TEST_F(Language, GermanTextsAndUmlautsAreOnTheScreen) {
  RunScript(
      "Runtime.Language = \"de\"\r\n"
      "WScript.Echo Dialogs.KRMsgBox(\"Gr\" & Chr(246) & Chr(223) & \"e\", 3, Chr(220) & \"ber\", "
      "\"plant.chm\")\r\n");
  const Window box = NextBox();
  EXPECT_EQ(box.Child(L"idxMessage").Text(), L"Größe");
  EXPECT_EQ(box.Text(), L"Über");
  EXPECT_EQ(Shown(box.Child(L"keyButton(0)")), Text("Yes", "de"));
  EXPECT_EQ(Shown(box.Child(L"keyButton(1)")), Text("No", "de"));
  EXPECT_EQ(Shown(box.Child(L"keyButton(2)")), Text("Cancel", "de"));
  EXPECT_EQ(Shown(box.Child(L"keyHelp")), Text("Help", "de"));
  PressKey(L"Alt+n");
  EXPECT_EQ(Printed(), Lines{"7"});
}

TEST_F(Language, ASwitchCountsForTheNextBox) {
  RunScript(
      "Dim name\r\nFor Each name In Array(\"de\", \"en\")\r\nRuntime.Language = name\r\n"
      "WScript.Echo Dialogs.KRMsgBox(\"Text\", 2, \"Title\")\r\nNext\r\n");
  for (const char* language : {"de", "en"}) {
    const Window box = NextBox();
    EXPECT_EQ(Shown(box.Child(L"keyButton(1)")), Text("Retry", language));
    box.Child(L"keyButton(1)").Click();
    box.WaitUntilGone();
  }
  EXPECT_EQ(Printed(), (Lines{"4", "4"}));
}

}  // namespace
}  // namespace krx::drive
