// A password that was pressed on the screen is nowhere in the client any more once the dialog is
// gone.

#include "panel/Board.h"
#include "support/ForgottenSecret.h"
#include "users/UsersTest.h"

namespace krx::drive {
namespace {

constexpr const wchar_t* kSecret = L"kqzvwxjhmbtydfgnpcrsla";

class SecretOnKeys : public DialogTest {};

TEST_F(SecretOnKeys, WhatWasPressedIsGoneAfterTheLogOn) {
  const UserStoreFolder store;
  store.Provision(kAdministrator, kSecret);
  store.Use();
  RunScript(
      "CreateObject(\"KorvelRuntime.PanelSettings\").Keyboard = \"always\"\r\n"
      "WScript.Echo CStr(Dialogs.KRUserLogOn())\r\nDialogs.KRMsgBox \"a box that waits\"\r\n");
  const Window form = WaitForForm(L"FLogOn");
  const auto fill = [&form](const wchar_t* field, const std::wstring& text, bool is_secret) {
    form.WaitForFocusOn(field);
    form.WaitUntilAtRest();
    const Board board;
    board.Type(text);
    form.Child(field).WaitForText(is_secret ? std::wstring(text.size(), L'*') : text);
    board.Press(L"Enter");
  };
  fill(L"txtName", kAdministrator, false);
  fill(L"txtPassword", kSecret, true);
  const Window box = NextBox();
  ExpectNowhereIn(TheClient(), kSecret, L"a box that waits", "log-on");
  PressKey(L"Enter");
  box.WaitUntilGone();
  EXPECT_EQ(Printed().front(), "True");
}

}  // namespace
}  // namespace krx::drive
