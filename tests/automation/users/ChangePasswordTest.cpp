// The change-password dialog of the user who is logged on, with every refusal that an operator can
// bring about.

#include "users/UsersTest.h"

namespace krx::drive {
namespace {

constexpr const wchar_t* kChangePasswordForm = L"FChangePassword";

class ChangePassword : public UsersTest {
 protected:
  // The script prints 2 when `password` logs the operator on afterwards.
  void Open(const std::string& password) {
    RunUserScript(
        "LogOn \"eva.meier\"\r\nDialogs.KRChangePassword\r\nDim code\r\n"
        "Session.LogOnUser \"eva.meier\", \"" +
        password + "\", code\r\nWScript.Echo code\r\n");
  }
  void OpenAndKeep() { Open(Narrow(kPassword)); }

  void ExpectLengths(const Window& form, std::size_t current, std::size_t changed) {
    EXPECT_EQ(form.Child(L"txtActPassword").Text(), std::wstring(current, L'*'));
    EXPECT_EQ(form.Child(L"txtPassword").Text(), std::wstring(changed, L'*'));
    EXPECT_EQ(form.Child(L"txtPassword2").Text(), std::wstring(changed, L'*'));
  }

  void GiveUp() {
    PressKey(L"Esc");
    EXPECT_EQ(Printed(), (Lines{"2", "end"}));
  }
};

TEST_F(ChangePassword, TheNewPasswordHoldsFromThenOn) {
  Open("Acht Pumpen");
  const Window form = Form(kChangePasswordForm, L"txtActPassword");
  EXPECT_EQ(form.Child(L"txtName").Text(), kOperator);
  EXPECT_EQ(form.Child(L"txtFullName").Text(), L"Eva Meier");
  EXPECT_EQ(form.Child(L"txtComment").Text(), L"Early shift");
  UsersTest::ChangePassword(kPassword, L"Acht Pumpen");
  EXPECT_EQ(Printed(), (Lines{"2", "end"}));
}

TEST_F(ChangePassword, APasswordTooShortLeadsToTheNewOne) {
  OpenAndKeep();
  UsersTest::ChangePassword(kPassword, L"sieben7");
  Confirm(Text("msgInvalidPasswordLength"));
  ExpectLengths(Form(kChangePasswordForm, L"txtPassword"), std::wstring(kPassword).size(), 7);
  GiveUp();
}

TEST_F(ChangePassword, TheUserNameIsRefused) {
  OpenAndKeep();
  UsersTest::ChangePassword(kPassword, kOperator);
  Confirm(Text("msgInvalidPassword"));
  ExpectLengths(Form(kChangePasswordForm, L"txtActPassword"), std::wstring(kPassword).size(), 9);
  GiveUp();
}

TEST_F(ChangePassword, APasswordUsedBeforeIsRefused) {
  OpenAndKeep();
  UsersTest::ChangePassword(kPassword, kPassword);
  Confirm(Text("msgInvalidPassword"));
  Form(kChangePasswordForm, L"txtActPassword");
  GiveUp();
}

TEST_F(ChangePassword, AWrongCurrentPasswordLeadsToItAndCanBeCorrected) {
  Open("Acht Pumpen");
  UsersTest::ChangePassword(L"falsch", L"Acht Pumpen");
  Confirm(Text("msgInvalidPassword"));
  const Window form = Form(kChangePasswordForm, L"txtActPassword");
  ExpectLengths(form, 6, 11);
  Type(form, L"txtActPassword", kPassword);
  EXPECT_TRUE(form.Child(L"keyOK").Enabled());
  form.Child(L"keyOK").Click();
  EXPECT_EQ(Printed(), (Lines{"2", "end"}));
}

TEST_F(ChangePassword, CancelAndTheCloseKeyChangeNothing) {
  for (const wchar_t* way_out : {L"keyCancel", L"keyClose"}) {
    OpenAndKeep();
    const Window form = Form(kChangePasswordForm, L"txtActPassword");
    form.Child(way_out).Click();
    EXPECT_EQ(Printed(), (Lines{"2", "end"}));
  }
}

TEST_F(ChangePassword, OkNeedsTheSameNewPasswordTwice) {
  OpenAndKeep();
  const Window form = Form(kChangePasswordForm, L"txtActPassword");
  const Window ok = form.Child(L"keyOK");
  EXPECT_FALSE(ok.Enabled());
  Type(form, L"txtActPassword", kPassword);
  Move(form, L"Tab", L"txtPassword");
  Type(form, L"txtPassword", L"Acht Pumpen");
  Move(form, L"Tab", L"txtPassword2");
  Type(form, L"txtPassword2", L"Acht pumpen");
  Move(form, L"Enter", L"txtActPassword");  // no message, but back to the first field
  EXPECT_FALSE(ok.Enabled());
  Move(form, L"Tab", L"txtPassword");
  Move(form, L"Tab", L"txtPassword2");
  Type(form, L"txtPassword2", L"Acht Pumpen");
  EXPECT_TRUE(Within(kPatience, [&] { return ok.Enabled(); }));
  GiveUp();
}

// The current password is not what OK waits for; this is how the dialog is meant.
TEST_F(ChangePassword, TheCurrentPasswordTypedLastLeavesOkDisabled) {
  OpenAndKeep();
  const Window form = Form(kChangePasswordForm, L"txtActPassword");
  const Window ok = form.Child(L"keyOK");
  Move(form, L"Tab", L"txtPassword");
  Type(form, L"txtPassword", L"Acht Pumpen");
  Move(form, L"Tab", L"txtPassword2");
  Type(form, L"txtPassword2", L"Acht Pumpen");
  Move(form, L"Enter", L"txtActPassword");
  Type(form, L"txtActPassword", kPassword);
  Move(form, L"Tab", L"txtPassword");
  EXPECT_FALSE(ok.Enabled());
  Type(form, L"txtPassword", L"Neun Pumpen");
  Move(form, L"Tab", L"txtPassword2");
  EXPECT_FALSE(ok.Enabled());
  Type(form, L"txtPassword2", L"Neun Pumpen");
  EXPECT_TRUE(Within(kPatience, [&] { return ok.Enabled(); }));
  GiveUp();
}

TEST_F(ChangePassword, TheNamesAreForReadingOnly) {
  OpenAndKeep();
  const Window form = Form(kChangePasswordForm, L"txtActPassword");
  for (const wchar_t* name : {L"txtName", L"txtFullName", L"txtComment"}) {
    const Window field = form.Child(name);
    const std::wstring before = field.Text();
    field.Click();
    form.WaitForFocusOn(name);
    TypeText(L"xyz");
    form.Child(L"txtPassword").Click();
    form.WaitForFocusOn(L"txtPassword");
    EXPECT_EQ(field.Text(), before);
  }
  GiveUp();
}

TEST_F(ChangePassword, WithNobodyLoggedOnAMessageSaysSo) {
  RunUserScript("Dialogs.KRChangePassword\r\n");
  Confirm(Text("msgNoCurrentUser"), Text("capChangePassword"));
  EXPECT_EQ(Printed(), Lines{"end"});
}

}  // namespace
}  // namespace krx::drive
