// Passwords that were typed into the dialogs are nowhere in the client any more once these are
// gone.

#include "support/ForgottenSecret.h"
#include "users/UsersTest.h"

namespace krx::drive {
namespace {

constexpr const wchar_t* kFirst = L"kqzvw7xjh2mbt4ydfgn9pcr5s8la";
constexpr const wchar_t* kSecond = L"w3nxq8fhzj5bktvdm7rcyg2psl4e";
constexpr const wchar_t* kThird = L"z9hmvkc6tbxqjw2fdnr8gpyl3s5u";

class SecretInDialogs : public DialogTest {
 protected:
  void ExpectForgotten(const std::wstring& secret, const char* what) {
    ExpectNowhereIn(TheClient(), secret, L"a box that waits", what);
  }
  void Confirm(const Window& box) {
    PressKey(L"Enter");
    box.WaitUntilGone();
  }

  void Type(const Window& form, const std::wstring& control, const std::wstring& text) {
    form.WaitForFocusOn(control);
    form.WaitUntilAtRest(control);
    TypeText(text);
    const bool is_secret = control.find(L"Password") != std::wstring::npos;
    form.Child(control).WaitForText(is_secret ? std::wstring(text.size(), L'*') : text);
    PressKey(L"Enter");
  }
};

TEST_F(SecretInDialogs, WhatWasTypedIsGoneAfterLogOnChangeAndCreation) {
  const UserStoreFolder store;
  store.Provision(kAdministrator, kFirst, "");
  store.Use();
  RunScript(
      "Dialogs.KRUserLogOn\r\nDialogs.KRMsgBox \"a box that waits\"\r\n"
      "Dialogs.KRChangePassword\r\nDialogs.KRMsgBox \"a box that waits\"\r\n"
      "Dialogs.KRAddUser\r\nDialogs.KRMsgBox \"a box that waits\"\r\n");
  const Window log_on = WaitForForm(L"FLogOn");
  Type(log_on, L"txtName", kAdministrator);
  Type(log_on, L"txtPassword", kFirst);
  const Window after_log_on = NextBox();
  ExpectForgotten(kFirst, "log-on");
  Confirm(after_log_on);
  const Window change = WaitForForm(L"FChangePassword");
  Type(change, L"txtActPassword", kFirst);
  Type(change, L"txtPassword", kSecond);
  Type(change, L"txtPassword2", kSecond);
  const Window after_change = NextBox();
  ExpectForgotten(kFirst, "change, old password");
  ExpectForgotten(kSecond, "change, new password");
  Confirm(after_change);
  const Window creation = WaitForForm(L"FAddUser");
  Type(creation, L"txtName", L"uta");
  Type(creation, L"txtFullName", L"Uta Neu");
  Type(creation, L"txtPassword", kThird);
  Type(creation, L"txtPassword2", kThird);
  creation.WaitForFocusOn(L"cboUserClass");
  PressKey(L"Down");
  ASSERT_TRUE(Within(kPatience, [&] { return !creation.Child(L"cboUserClass").Text().empty(); }));
  PressKey(L"Enter");
  creation.WaitForFocusOn(L"txtComment");
  PressKey(L"Enter");
  const Window after_creation = NextBox();
  ExpectForgotten(kThird, "creation");
  Confirm(after_creation);
  Printed();
}

}  // namespace
}  // namespace krx::drive
