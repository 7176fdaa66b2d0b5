// The driver itself, tried on a program that comes with the system.

#include <gtest/gtest.h>

#include <stdexcept>

#include "driver/Client.h"
#include "driver/Input.h"
#include "driver/Texts.h"
#include "driver/Window.h"

namespace krx::drive {
namespace {

class Driver : public ::testing::Test {
 protected:
  Client editor{L"notepad.exe"};
  Window window = WaitForTitle(L"Untitled - Notepad");

  Window TextBox() const { return window.Descendants().at(0); }
};

TEST_F(Driver, TypesTextWithUmlautsIntoAnotherProcess) {
  window.WaitUntilActive();
  ASSERT_TRUE(Within(kPatience, [&] { return TextBox().Focused(); }));
  TypeText(L"Grüße");
  TextBox().WaitForText(L"Grüße");
}

TEST_F(Driver, SendsKeysWithModifiers) {
  window.WaitUntilActive();
  ASSERT_TRUE(Within(kPatience, [&] { return TextBox().Focused(); }));
  TypeText(L"ab");
  TextBox().WaitForText(L"ab");
  PressKey(L"Ctrl+a");
  PressKey(L"Delete");
  EXPECT_TRUE(Within(kPatience, [&] { return TextBox().Text().empty(); }));
}

TEST_F(Driver, ReportsTheEndOfAProcessAndItsExitCode) {
  EXPECT_TRUE(editor.Running());
  window.WaitUntilActive();
  PressKey(L"Alt+F4");
  EXPECT_EQ(editor.Finish(), 0u);
  EXPECT_FALSE(window.Exists());
}

TEST(ScriptClient, PrintsLinesAndReturnsItsExitCode) {
  const ScriptFile script("WScript.Echo 1\r\nWScript.Echo \"two\"\r\nWScript.Quit 3\r\n");
  Client client(script.Command());
  EXPECT_EQ(client.Finish(), 3u);
  EXPECT_EQ(client.Lines(), (std::vector<std::string>{"1", "two"}));
}

// Such a program kept a test waiting for the end of its client's output for good.
TEST(ScriptClient, EndsWhileAProgramThatItHasStartedGoesOn) {
  Client client(L"cmd.exe /c \"echo 1&start /b notepad.exe\"");
  EXPECT_EQ(client.Finish(), 0u);
  EXPECT_EQ(client.Lines(), std::vector<std::string>{"1"});
  WaitForTitle(L"Untitled - Notepad").WaitUntilActive();
  PressKey(L"Alt+F4");
}

TEST(TextTables, GiveTheTextsOfBothLanguagesWithoutTheMarksOfAccessKeys) {
  EXPECT_NE(Text("Yes"), Text("Yes", "de"));
  EXPECT_EQ(Text("Yes").find(L'&'), std::wstring::npos);
  EXPECT_NE(Text("msgUnknownUser").find(L'\n'), std::wstring::npos);
}

TEST(TextTables, RefuseAKeyOrALanguageThatTheyDoNotHave) {
  EXPECT_THROW(Text("NoSuchKey"), std::runtime_error);
  EXPECT_THROW(Text("Yes", "xx"), std::runtime_error);
}

}  // namespace
}  // namespace krx::drive
