// What concerns a session, shown beside the dialogs of a real client.

#include "users/UsersTest.h"

namespace krx::drive {
namespace {

class SessionTest : public UsersTest {
 protected:
  // A window that comes up below the pointer is input to some systems.
  void SetUp() override {
    UsersTest::SetUp();
    MoveMouse({1, GetSystemMetrics(SM_CYSCREEN) - 2});
  }
  void SetRule(const std::string& line) { Store->AddRule(line); }

  // The notice of the client; nothing while none is shown.
  std::optional<Window> Notice() {
    for (const Window& window : WindowsOf(TheClient().ProcessId())) {
      wchar_t name[64] = {};
      GetClassNameW(window.Handle(), name, 64);
      if (std::wstring_view(name) == L"KorvelNotice") return window;
    }
    return std::nullopt;
  }
  // Once it is there.
  Window WaitForNotice() {
    std::optional<Window> found;
    if (!Within(kPatience, [&] { return (found = Notice()).has_value(); }))
      throw std::runtime_error("no notice comes");
    return *found;
  }
};

TEST_F(SessionTest, WithoutRulesNothingIsShown) {
  RunUserScript("LogOn \"eva.meier\"\r\nDialogs.KRWhoAmI\r\n");
  Form(L"FWhoAmI", L"keyOK");
  EXPECT_FALSE(Notice());
  PressKey(L"Enter");
  EXPECT_EQ(Printed(), Lines{"end"});
}

TEST_F(SessionTest, TheLastLogOnIsToldBesideTheDialogsUntilItIsTouched) {
  SetRule("last-log-on-notice = on");
  RunUserScript(
      "WScript.Echo CStr(Dialogs.KRUserLogOn()) & \", \" & CurrentUser()\r\n"
      "Dialogs.KRWhoAmI\r\n"
      "WScript.Echo CStr(Dialogs.KRUserLogOn()) & \", \" & CurrentUser()\r\n"
      "Dialogs.KRWhoAmI\r\n");
  LogOn(kOperator, L"falsch");
  Confirm(Text("msgInvalidPassword"));
  Type(Form(L"FLogOn", L"txtPassword"), L"txtPassword", kPassword);
  PressKey(L"Enter");
  const Window form = Form(L"FWhoAmI", L"keyOK");
  const Window first = WaitForNotice();
  std::wstring expected = Text("msgNoLastLogOn");
  expected.replace(expected.find(L"{failures}"), 10, L"1");
  EXPECT_EQ(Narrow(first.Text()), Narrow(expected));
  form.WaitUntilAtRest(L"keyOK");  // the notice takes nothing from the dialog
  first.Click();
  first.WaitUntilGone();
  form.WaitUntilAtRest(L"keyOK");
  PressKey(L"Enter");
  LogOn(kOperator, kPassword);
  Form(L"FWhoAmI", L"keyOK");
  const std::wstring text = Text("msgLastLogOn");
  const std::wstring told = WaitForNotice().Text();
  EXPECT_TRUE(told.starts_with(text.substr(0, text.find(L'{')))) << Narrow(told);
  EXPECT_TRUE(told.ends_with(L": 0.")) << Narrow(told);
  EXPECT_EQ(told.find(L'{'), std::wstring::npos);
  PressKey(L"Enter");
  EXPECT_EQ(Printed(), (Lines{"True, eva.meier", "True, eva.meier", "end"}));
}

TEST_F(SessionTest, WhoDoesNothingIsToldAndLoggedOffUnderAnOpenDialog) {
  SetRule("log-off-after-idle-minutes = 1");
  RunUserScript(
      "Runtime.Language = \"de\"\r\nLogOn \"eva.meier\"\r\nDialogs.KRWhoAmI\r\n"
      "WScript.Echo CurrentUser()\r\n");
  const Window form = Form(L"FWhoAmI", L"keyOK");
  const Window notice = WaitForNotice();
  const std::wstring text = Text("msgIdleLogOff", "de");
  EXPECT_TRUE(notice.Text().starts_with(L"eva.meier ")) << Narrow(notice.Text());
  EXPECT_TRUE(notice.Text().ends_with(text.substr(text.find(L"{seconds}") + 9)));
  form.WaitUntilAtRest(L"keyOK");
  notice.WaitUntilGone();  // after its countdown
  form.WaitUntilAtRest(L"keyOK");
  PressKey(L"Enter");
  EXPECT_EQ(Printed(), (Lines{"nobody", "end"}));
  EXPECT_NE(Store->AuditLog().find("after 1 min without input"), std::string::npos);
}

TEST_F(SessionTest, AnyKeyGoesOnWithTheSession) {
  SetRule("log-off-after-idle-minutes = 1");
  RunUserScript("LogOn \"eva.meier\"\r\nDialogs.KRWhoAmI\r\nWScript.Echo CurrentUser()\r\n");
  const Window form = Form(L"FWhoAmI", L"keyOK");
  const Window notice = WaitForNotice();
  PressKey(VK_SHIFT);
  notice.WaitUntilGone();
  form.WaitUntilAtRest(L"keyOK");
  PressKey(L"Enter");
  EXPECT_EQ(Printed(), (Lines{"eva.meier", "end"}));
}

}  // namespace
}  // namespace krx::drive
