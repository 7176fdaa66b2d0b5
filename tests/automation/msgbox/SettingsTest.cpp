// The settings that all dialog objects share, and the host application.

#include <algorithm>

#include "support/DialogTest.h"

namespace krx::drive {
namespace {

constexpr const char* kHostClass =
    "Class Host\r\n"
    "  Public Property Get EXEName()\r\n"
    "    EXEName = \"Plant control\"\r\n"
    "  End Property\r\n"
    "End Class\r\n";

constexpr const char* kSecondInstance =
    "Dim second\r\nSet second = CreateObject(\"KRXDialogs.KRXDialog\")\r\n";

class Settings : public DialogTest {
 protected:
  std::wstring CaptionOfNextBox() {
    const Window box = NextBox();
    const std::wstring caption = box.Child(L"idxCaption").Text();
    // What a task list or a screen reader shows, in one line.
    std::wstring one_line = caption;
    std::replace(one_line.begin(), one_line.end(), L'\n', L' ');
    EXPECT_EQ(box.Text(), one_line);
    PressKey(L"Esc");
    box.WaitUntilGone();
    return caption;
  }
};

TEST_F(Settings, StartWithTheirDefaults) {
  RunScript(
      "WScript.Echo Dialogs.FontClassCaption\r\nWScript.Echo Dialogs.FontClassText\r\n"
      "WScript.Echo Dialogs.FontClassButton\r\nWScript.Echo Dialogs.FontClassInput\r\n"
      "WScript.Echo Dialogs.ButtonMinHeight\r\nWScript.Echo Dialogs.CaptionMinHeight\r\n");
  EXPECT_EQ(Printed(), (Lines{"KRDialogsCaption", "KRDialogsText", "KRDialogsButton",
                              "KRDialogsInput", "0", "0"}));
}

TEST_F(Settings, AreSharedByTwoInstances) {
  RunScript(std::string(kSecondInstance) +
            "second.FontClassButton = \"KRPanelButton\"\r\nsecond.ButtonMinHeight = 900\r\n"
            "Dialogs.CaptionMinHeight = 600.5\r\n"
            "WScript.Echo Dialogs.FontClassButton\r\nWScript.Echo Dialogs.ButtonMinHeight\r\n"
            "WScript.Echo second.CaptionMinHeight\r\n");
  EXPECT_EQ(Printed(), (Lines{"KRPanelButton", "900", "600.5"}));
}

TEST_F(Settings, AreResetForTheNextInstanceWhenAnyIsDestroyed) {
  RunScript(std::string(kSecondInstance) +
            "Dialogs.FontClassButton = \"KRPanelButton\"\r\nDialogs.ButtonMinHeight = 900\r\n"
            "Set second = Nothing\r\n"
            "Set second = CreateObject(\"KRXDialogs.KRXDialog\")\r\n"
            "WScript.Echo second.FontClassButton\r\nWScript.Echo Dialogs.ButtonMinHeight\r\n");
  EXPECT_EQ(Printed(), (Lines{"KRDialogsButton", "0"}));
}

TEST_F(Settings, MinimumHeightsShowOnTheScreen) {
  RunScript("Dialogs.ButtonMinHeight = 900\r\nDialogs.CaptionMinHeight = 600\r\n" + Ask(1));
  const Window box = NextBox();
  const RECT key = box.Child(L"keyButton(0)").Bounds();
  const RECT caption = box.Child(L"idxCaption").Bounds();
  EXPECT_EQ(key.bottom - key.top, 60);          // 900 twips, 15 to the pixel
  EXPECT_EQ(caption.bottom - caption.top, 40);  // 600 twips
  PressKey(L"Enter");
  EXPECT_EQ(Printed(), Lines{"1"});
}

TEST_F(Settings, AnEmptyTitleShowsTheLibrarysName) {
  RunScript("WScript.Echo Dialogs.KRMsgBox(\"Text\")\r\n");
  EXPECT_EQ(CaptionOfNextBox(), L"KRXDialogs");
  EXPECT_EQ(Printed(), Lines{"1"});
}

TEST_F(Settings, AnEmptyTitleShowsTheHostApplicationsNameOnceOneIsSet) {
  RunScript(std::string(kHostClass) +
            "Dim app\r\nSet app = New Host\r\nDialogs.SetHostApp app\r\n"
            "WScript.Echo Dialogs.KRMsgBox(\"Text\")\r\n");
  EXPECT_EQ(CaptionOfNextBox(), L"Plant control");
  EXPECT_EQ(Printed(), Lines{"1"});
}

TEST_F(Settings, TheHostApplicationIsResetWithTheOtherSettings) {
  RunScript(std::string(kHostClass) + kSecondInstance +
            "Dialogs.SetHostApp New Host\r\nSet second = Nothing\r\n"
            "Set second = CreateObject(\"KRXDialogs.KRXDialog\")\r\n"
            "WScript.Echo second.KRMsgBox(\"Text\")\r\n");
  EXPECT_EQ(CaptionOfNextBox(), L"KRXDialogs");
  EXPECT_EQ(Printed(), Lines{"1"});
}

TEST_F(Settings, ATitleOfTwoLinesIsShownInTwoLines) {
  RunScript(
      "WScript.Echo Dialogs.KRMsgBox(\"Text\", 0, \"One\" & Chr(13) & Chr(10) & \"Two\")\r\n");
  EXPECT_EQ(CaptionOfNextBox(), L"One\nTwo");
  EXPECT_EQ(Printed(), Lines{"1"});
}

}  // namespace
}  // namespace krx::drive
