// The who-am-I dialog with and without a user.

#include "users/UsersTest.h"

namespace krx::drive {
namespace {

constexpr const wchar_t* kWhoAmIForm = L"FWhoAmI";

class WhoAmI : public UsersTest {
 protected:
  void Ask(const std::string& name) {
    RunUserScript("LogOn \"" + name + "\"\r\nDialogs.KRWhoAmI\r\nWScript.Echo CurrentUser()\r\n");
  }
};

TEST_F(WhoAmI, ShowsTheUserWhoIsLoggedOn) {
  Ask(Narrow(kOperator));
  const Window form = Form(kWhoAmIForm, L"keyOK");
  EXPECT_EQ(form.Child(L"idxCaption").Text(), Text("capCurrentUser"));
  EXPECT_EQ(form.Child(L"txtFullName").Text(), L"Eva Meier");
  EXPECT_EQ(form.Child(L"txtName").Text(), kOperator);
  EXPECT_EQ(form.Child(L"txtUserClass").Text(), L"Operator");
  EXPECT_EQ(form.Child(L"txtComment").Text(), L"Early shift");
  PressKey(L"Enter");
  EXPECT_EQ(Printed(), (Lines{"eva.meier", "end"}));
}

TEST_F(WhoAmI, AnEmptyCommentIsShownEmpty) {
  Ask(Narrow(kAdministrator));
  const Window form = Form(kWhoAmIForm, L"keyOK");
  EXPECT_EQ(form.Child(L"txtName").Text(), kAdministrator);
  EXPECT_EQ(form.Child(L"txtComment").Text(), L"");
  form.Child(L"keyOK").Click();
  EXPECT_EQ(Printed(), (Lines{"admin", "end"}));
}

TEST_F(WhoAmI, EscAndTheCloseKeyCloseIt) {
  RunUserScript("LogOn \"eva.meier\"\r\nDialogs.KRWhoAmI\r\nDialogs.KRWhoAmI\r\n");
  const Window form = Form(kWhoAmIForm, L"keyOK");
  form.Child(L"keyClose").Click();
  form.WaitUntilGone();
  Form(kWhoAmIForm, L"keyOK");
  PressKey(L"Esc");
  EXPECT_EQ(Printed(), Lines{"end"});
}

TEST_F(WhoAmI, TheFieldsTakeNoInput) {
  Ask(Narrow(kOperator));
  const Window form = Form(kWhoAmIForm, L"keyOK");
  form.Child(L"txtName").Click();
  form.WaitForFocusOn(L"txtName");
  TypeText(L"xyz");
  PressKey(L"Delete");
  Move(form, L"Tab", L"keyOK");  // all keys before have been handled
  EXPECT_EQ(form.Child(L"txtName").Text(), kOperator);
  PressKey(L"Esc");
  EXPECT_EQ(Printed(), (Lines{"eva.meier", "end"}));
}

TEST_F(WhoAmI, WithNobodyLoggedOnAMessageSaysSo) {
  RunUserScript("Dialogs.KRWhoAmI\r\n");
  Confirm(Text("msgNoCurrentUser"), Text("capCurrentUser"));
  EXPECT_EQ(Printed(), Lines{"end"});
}

}  // namespace
}  // namespace krx::drive
