// The log-on dialog under real keys and the real mouse, against the reference user management.

#include "users/UsersTest.h"

namespace krx::drive {
namespace {

constexpr const wchar_t* kLogOnForm = L"FLogOn";
constexpr const char* kLogOn = "KRUserLogOn()";

class LogOn : public UsersTest {
 protected:
  void ExpectFields(const Window& form, const std::wstring& name, std::size_t password_length) {
    EXPECT_EQ(form.Child(L"txtName").Text(), name);
    EXPECT_EQ(form.Child(L"txtPassword").Text(), std::wstring(password_length, L'*'));
  }

  // Leaves the dialog, which has to return False with nobody logged on.
  void GiveUp() {
    PressKey(L"Esc");
    EXPECT_EQ(Printed(), (Lines{"False, nobody", "end"}));
  }
};

TEST_F(LogOn, TheRightPasswordLogsOn) {
  RunDialog(kLogOn);
  UsersTest::LogOn(kOperator, kPassword);
  EXPECT_EQ(Printed(), (Lines{"True, eva.meier", "end"}));
}

TEST_F(LogOn, TheMouseConfirmsAsWell) {
  RunDialog(kLogOn);
  const Window form = Form(kLogOnForm, L"txtName");
  Type(form, L"txtName", kOperator);
  form.Child(L"txtPassword").Click();
  Type(form, L"txtPassword", kPassword);
  form.Child(L"keyOK").Click();
  EXPECT_EQ(Printed(), (Lines{"True, eva.meier", "end"}));
}

TEST_F(LogOn, AWrongPasswordKeepsBothFieldsAndLeadsToThePassword) {
  RunDialog(kLogOn);
  UsersTest::LogOn(kOperator, L"falsch");
  Confirm(Text("msgInvalidPassword"));
  const Window form = Form(kLogOnForm, L"txtPassword");
  ExpectFields(form, kOperator, 6);
  EXPECT_TRUE(form.Child(L"keyOK").Enabled());
  Type(form, L"txtPassword", kPassword);  // replaces what stands there
  PressKey(L"Enter");
  EXPECT_EQ(Printed(), (Lines{"True, eva.meier", "end"}));
}

TEST_F(LogOn, FiveWrongPasswordsLockTheUserOut) {
  RunDialog(kLogOn);
  UsersTest::LogOn(kOperator, L"falsch");
  for (int attempt = 2; attempt <= 5; ++attempt) {
    Confirm(Text("msgInvalidPassword"));
    const Window form = Form(kLogOnForm, L"txtPassword");
    Type(form, L"txtPassword", std::wstring(static_cast<std::size_t>(attempt), L'x'));
    PressKey(L"Enter");
  }
  Confirm(Text("msgInvalidPassword"));
  Type(Form(kLogOnForm, L"txtPassword"), L"txtPassword", kPassword);
  PressKey(L"Enter");
  Confirm(Text("msgTooManyFailedLogons"));
  const Window form = Form(kLogOnForm, L"txtName");
  ExpectFields(form, kOperator, std::wstring(kPassword).size());
  GiveUp();
}

TEST_F(LogOn, AnUnknownUserLeadsToTheName) {
  RunDialog(kLogOn);
  UsersTest::LogOn(L"niemand", kPassword);
  Confirm(Text("msgUnknownUser"));
  const Window form = Form(kLogOnForm, L"txtName");
  ExpectFields(form, L"niemand", std::wstring(kPassword).size());
  Type(form, L"txtName", kOperator);
  Move(form, L"Enter", L"txtPassword");
  PressKey(L"Enter");
  EXPECT_EQ(Printed(), (Lines{"True, eva.meier", "end"}));
}

TEST_F(LogOn, ADeactivatedUserLeadsToTheName) {
  RunDialog(kLogOn);
  UsersTest::LogOn(kDeactivated, kPassword);
  Confirm(Text("msgUserDeactivated"));
  ExpectFields(Form(kLogOnForm, L"txtName"), kDeactivated, std::wstring(kPassword).size());
  GiveUp();
}

TEST_F(LogOn, AnExpiredPasswordIsRenewedInTheNestedDialog) {
  RunDialog(kLogOn);
  UsersTest::LogOn(kExpired, kPassword);
  Confirm(Text("msgPasswordExpired"));
  const Window nested = Form(L"FChangePassword", L"txtActPassword");
  EXPECT_EQ(nested.Child(L"txtName").Text(), kExpired);
  EXPECT_EQ(nested.Child(L"txtFullName").Text(), L"Ida Alt");
  ChangePassword(kPassword, L"Acht Pumpen");
  const Window form = Form(kLogOnForm, L"txtPassword");
  ExpectFields(form, kExpired, std::wstring(kPassword).size());
  Type(form, L"txtPassword", L"Acht Pumpen");
  PressKey(L"Enter");
  EXPECT_EQ(Printed(), (Lines{"True, alt", "end"}));
}

TEST_F(LogOn, ACancelledRenewalLeadsBackAndIsAskedForAgain) {
  RunDialog(kLogOn);
  UsersTest::LogOn(kRenewing, kPassword);
  for (const wchar_t* way_out : {L"keyCancel", L"keyClose"}) {
    Confirm(Text("msgRenewPassword"));
    const Window nested = Form(L"FChangePassword", L"txtActPassword");
    nested.Child(way_out).Click();
    nested.WaitUntilGone();
    Form(kLogOnForm, L"txtPassword");
    PressKey(L"Enter");
  }
  Confirm(Text("msgRenewPassword"));
  Form(L"FChangePassword", L"txtActPassword");
  PressKey(L"Esc");
  Form(kLogOnForm, L"txtPassword");
  GiveUp();
}

TEST_F(LogOn, ARefusedRenewalStaysInTheNestedDialog) {
  RunDialog(kLogOn);
  UsersTest::LogOn(kRenewing, kPassword);
  Confirm(Text("msgRenewPassword"));
  ChangePassword(kPassword, L"kurz");
  Confirm(Text("msgInvalidPasswordLength"));
  const Window nested = Form(L"FChangePassword", L"txtPassword");
  Type(nested, L"txtPassword", L"lang genug");
  Move(nested, L"Enter", L"txtPassword2");
  Type(nested, L"txtPassword2", L"lang genug");
  PressKey(L"Enter");
  Type(Form(kLogOnForm, L"txtPassword"), L"txtPassword", L"lang genug");
  PressKey(L"Enter");
  EXPECT_EQ(Printed(), (Lines{"True, neu", "end"}));
}

TEST_F(LogOn, CancelEscAndTheCloseKeyReturnFalse) {
  RunUserScript(
      "Dim i\r\nFor i = 1 To 4\r\nWScript.Echo CStr(Dialogs.KRUserLogOn()) & \", \" & "
      "CurrentUser()\r\nNext\r\n");
  for (const wchar_t* way_out : {L"keyCancel", L"keyClose", L"Esc", L"Alt+F4"}) {
    const Window form = Form(kLogOnForm, L"txtName");
    Type(form, L"txtName", kOperator);
    if (std::wstring(way_out).starts_with(L"key")) {
      form.Child(way_out).Click();
    } else {
      PressKey(way_out);
    }
    form.WaitUntilGone();
  }
  const std::string no = "False, nobody";
  EXPECT_EQ(Printed(), (Lines{no, no, no, no, "end"}));
}

TEST_F(LogOn, TheLogOffKeyEndsTheSessionAndTheDialog) {
  RunUserScript(
      "LogOn \"eva.meier\"\r\nWScript.Echo CurrentUser()\r\n"
      "WScript.Echo CStr(Dialogs.KRUserLogOn()) & \", \" & CurrentUser()\r\n"
      "Dialogs.KRWhoAmI\r\n"
      "WScript.Echo CStr(Dialogs.KRUserLogOn())\r\n");
  Window form = Form(kLogOnForm, L"txtName");
  form.Child(L"keyLogOut").Click();
  form.WaitUntilGone();
  Confirm(Text("msgNoCurrentUser"), Text("capCurrentUser"));
  // With nobody logged on it closes the dialog all the same; this time by its access key.
  form = Form(kLogOnForm, L"txtName");
  PressKey(L"Alt+l");
  EXPECT_EQ(Printed(), (Lines{"eva.meier", "False, nobody", "False", "end"}));
}

TEST_F(LogOn, WhoStaysLoggedOnWhileTheDialogIsCancelled) {
  RunUserScript(
      "LogOn \"eva.meier\"\r\n"
      "WScript.Echo CStr(Dialogs.KRUserLogOn()) & \", \" & CurrentUser()\r\n");
  Form(kLogOnForm, L"txtName");
  PressKey(L"Esc");
  EXPECT_EQ(Printed(), (Lines{"False, eva.meier", "end"}));
}

TEST_F(LogOn, AnEmptyNameCannotBeConfirmed) {
  RunDialog(kLogOn);
  const Window form = Form(kLogOnForm, L"txtName");
  const Window ok = form.Child(L"keyOK");
  EXPECT_FALSE(ok.Enabled());
  Move(form, L"Enter", L"txtPassword");
  Type(form, L"txtPassword", kPassword);
  EXPECT_FALSE(ok.Enabled());
  Move(form, L"Enter", L"txtName");
  TypeText(L"x");
  EXPECT_TRUE(Within(kPatience, [&] { return ok.Enabled(); }));
  PressKey(L"Left");
  PressKey(L"Delete");
  EXPECT_TRUE(Within(kPatience, [&] { return !ok.Enabled(); }));
  ok.Click();
  EXPECT_TRUE(form.Visible());
  GiveUp();
}

TEST_F(LogOn, TabAndAccessKeysReachEveryControl) {
  RunDialog(kLogOn);
  const Window form = Form(kLogOnForm, L"txtName");
  Move(form, L"Tab", L"txtPassword");
  Move(form, L"Tab", L"keyCancel");  // OK is disabled
  Move(form, L"Tab", L"keyLogOut");
  Move(form, L"Tab", L"txtName");
  Move(form, L"Shift+Tab", L"keyLogOut");
  Move(form, L"Alt+p", L"txtPassword");
  Move(form, L"Alt+n", L"txtName");
  Type(form, L"txtName", L"np");  // letters alone are text, no access keys
  Move(form, L"Tab", L"txtPassword");
  Move(form, L"Tab", L"keyOK");
  GiveUp();
}

TEST_F(LogOn, AuditNamesTheEventsButNeverAPassword) {
  RunDialog(kLogOn);
  UsersTest::LogOn(kOperator, L"falsch geraten");
  Confirm(Text("msgInvalidPassword"));
  Type(Form(kLogOnForm, L"txtPassword"), L"txtPassword", kPassword);
  PressKey(L"Enter");
  EXPECT_EQ(Printed(), (Lines{"True, eva.meier", "end"}));
  const std::string log = Store->AuditLog();
  EXPECT_NE(log.find(",eva.meier,log-on,,logged on,"), std::string::npos) << log;
  EXPECT_NE(log.find(",eva.meier,log-on,,refused: "), std::string::npos) << log;
  EXPECT_EQ(log.find("falsch geraten"), std::string::npos);
  EXPECT_EQ(log.find(Narrow(kPassword)), std::string::npos);
}

// The first administrator, from the provisioning command to the first true log-on.
TEST_F(LogOn, TheFirstAdministratorRenewsTheGeneratedPassword) {
  Store.emplace();
  const std::wstring generated = Widen(Store->Provision("leitung"));
  EXPECT_GE(generated.size(), 8u);
  RunDialog(kLogOn);
  UsersTest::LogOn(L"leitung", generated);
  Confirm(Text("msgRenewPassword"));
  Form(L"FChangePassword", L"txtActPassword");
  ChangePassword(generated, L"Neun Kessel");
  const Window form = Form(kLogOnForm, L"txtPassword");
  ExpectFields(form, L"leitung", generated.size());
  Type(form, L"txtPassword", L"Neun Kessel");
  PressKey(L"Enter");
  EXPECT_EQ(Printed(), (Lines{"True, leitung", "end"}));
}

}  // namespace
}  // namespace krx::drive
