// How failures arrive in the error object of a script client.

#include "support/DialogTest.h"

namespace krx::drive {
namespace {

// Prints number, source and description of the error of one statement.
std::string Try(const std::string& statement) {
  return "On Error Resume Next\r\n" + statement +
         "\r\nWScript.Echo Err.Number\r\nWScript.Echo Err.Source\r\n"
         "WScript.Echo Err.Description\r\n";
}

// Takes the runtime's registration away for as long as it lives.
class WithoutRuntime {
 public:
  WithoutRuntime() { Register(L"/u "); }
  ~WithoutRuntime() { Register(L""); }
  WithoutRuntime(const WithoutRuntime&) = delete;
  WithoutRuntime& operator=(const WithoutRuntime&) = delete;

 private:
  static void Register(const std::wstring& option) {
    Client tool(L"regsvr32.exe /s " + option + L"\"" +
                (ProgramFolder() / "KorvelRuntime.dll").wstring() + L"\"");
    EXPECT_EQ(tool.Finish(), 0u);
  }
};

class Errors : public DialogTest {};

TEST_F(Errors, ADefaultButtonWithoutResultCodeIsATypeMismatch) {
  RunScript(Try("Dialogs.KRMsgBox \"Text\", 256, \"Title\""));
  const Lines lines = Printed();
  ASSERT_EQ(lines.size(), 3u);
  EXPECT_EQ(lines[0], "13");
  EXPECT_FALSE(lines[1].empty());
  EXPECT_FALSE(lines[2].empty());
}

TEST_F(Errors, TheHelpButtonAsDefaultIsATypeMismatchToo) {
  RunScript(Try("Dialogs.KRMsgBox \"Text\", 768, \"Title\", \"plant.chm\""));
  EXPECT_EQ(Printed().at(0), "13");
}

TEST_F(Errors, AHostApplicationThatIsNoObjectIsATypeMismatch) {
  RunScript(Try("Dialogs.SetHostApp 5") +
            Try("Dim text\r\ntext = \"x\"\r\nDialogs.SetHostApp text"));
  const Lines lines = Printed();
  ASSERT_EQ(lines.size(), 6u);
  EXPECT_EQ(lines[0], "13");
  EXPECT_EQ(lines[3], "13");
}

TEST_F(Errors, ADialogThatNeedsTheClearedHostApplicationFailsWithObjectNotSet) {
  RunScript(
      "Dim second\r\nSet second = CreateObject(\"KRXDialogs.KRXDialog\")\r\n"
      "Set second = Nothing\r\n" +
      Try("Dialogs.KRMsgBox \"Text\""));
  const Lines lines = Printed();
  ASSERT_EQ(lines.size(), 3u);
  EXPECT_EQ(lines[0], "91");
  EXPECT_FALSE(lines[2].empty());
}

TEST_F(Errors, AMissingRuntimeReachesTheClientAsAnErrorWithText) {
  const WithoutRuntime gone;
  RunPlainScript("Dim Dialogs\r\nSet Dialogs = CreateObject(\"KRXDialogs.KRXDialog\")\r\n" +
                 Try("Dialogs.KRMsgBox \"Text\", 0, \"Title\""));
  const Lines lines = Printed();
  ASSERT_EQ(lines.size(), 3u);
  EXPECT_EQ(lines[0], "-2147221164");  // 0x80040154, class not registered
  EXPECT_EQ(lines[1], "KRXDialogs");
  EXPECT_EQ(lines[2], "The runtime's class FontService is not registered");
}

TEST_F(Errors, AnUnknownMemberIsRefused) {
  RunScript(Try("Dialogs.NoSuchMethod"));
  EXPECT_EQ(Printed().at(0), "438");
}

TEST_F(Errors, AClientGoesOnWorkingAfterAnError) {
  RunScript("On Error Resume Next\r\nDialogs.KRMsgBox \"Text\", 256, \"Title\"\r\n" + Ask(0));
  NextBox();
  PressKey(L"Enter");
  EXPECT_EQ(Printed(), Lines{"1"});
}

}  // namespace
}  // namespace krx::drive
