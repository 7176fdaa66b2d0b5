// The log-on dialog with the list of users, on a plant with 500 of them.

#include <array>

#include "users/UsersTest.h"

namespace krx::drive {
namespace {

constexpr const wchar_t* kLogOnComboForm = L"FLogOnCombo";
constexpr const char* kLogOnByList = "KRUserLogOnCombo()";
constexpr int kUsers = 500;
constexpr int kFinger = 34;  // pixels at 96 dpi; 9 mm

std::wstring NameOf(int number) {
  const std::wstring digits = std::to_wstring(number);
  return L"user" + std::wstring(3 - digits.size(), L'0') + digits;
}

// The administrator and the users in an order that is not that of their names.
const UserStoreFolder& Plant() {
  static const UserStoreFolder store;
  static const bool ready = [] {
    store.Provision(kAdministrator, kPassword,
                    "Dim i\r\nFor i = " + std::to_string(kUsers - 2) +
                        " To 0 Step -1\r\n"
                        "  Users.CreateUser \"user\" & Right(\"00\" & i, 3), \"\", \"\", " +
                        ScriptLiteral(kPassword) +
                        ", \"Operator\", 0, 0, Result\r\n  Check Result, 0\r\nNext\r\n");
    return true;
  }();
  static_cast<void>(ready);
  return store;
}

class LogOnCombo : public UsersTest {
 protected:
  // A list that opens under the pointer marks the row there, sooner or later.
  void SetUp() override {
    UsersTest::SetUp();
    MoveMouse({0, 0});
  }

  void UseThePlant() {
    Store.emplace(Plant());
    Store->Use();
  }

  std::vector<std::wstring> Entries(const Window& combo) {
    const auto count = SendMessageW(combo.Handle(), CB_GETCOUNT, 0, 0);
    std::vector<std::wstring> entries;
    for (WPARAM i = 0; i < static_cast<WPARAM>(count); ++i) {
      std::array<wchar_t, 100> text{};
      SendMessageW(combo.Handle(), CB_GETLBTEXT, i, reinterpret_cast<LPARAM>(text.data()));
      entries.emplace_back(text.data());
    }
    return entries;
  }

  void Tap(const Window& list, int row) {
    const auto height = static_cast<int>(SendMessageW(list.Handle(), LB_GETITEMHEIGHT, 0, 0));
    const RECT bounds = list.Bounds();
    ClickMouse(MouseButton::Left,
               {(bounds.left + bounds.right) / 2, bounds.top + row * height + height / 2});
    list.WaitUntilGone();
  }

  void WaitForName(const Window& form, const std::wstring& name) {
    form.Child(L"cboName").WaitForText(name);
  }

  void Finish(const Window& form, const std::wstring& name) {
    Move(form, L"Enter", L"txtPassword");
    Type(form, L"txtPassword", kPassword);
    PressKey(L"Enter");
    EXPECT_EQ(Printed(), (Lines{"True, " + Narrow(name), "end"}));
  }
};

TEST_F(LogOnCombo, ListsAllUsersInTheirOrderAndSelectsNone) {
  UseThePlant();
  RunDialog(kLogOnByList);
  const Window form = Form(kLogOnComboForm, L"cboName");
  EXPECT_EQ(form.Child(L"idxCaption").Text(), Text("capLogon") + L' ');
  std::vector<std::wstring> names{L"admin"};
  for (int i = 0; i < kUsers - 1; ++i)
    names.push_back(NameOf(i));
  EXPECT_EQ(Entries(form.Child(L"cboName")), names);
  EXPECT_EQ(form.Child(L"cboName").Text(), L"");
  EXPECT_FALSE(form.Child(L"keyOK").Enabled());
  PressKey(L"Esc");
  EXPECT_EQ(Printed(), (Lines{"False, nobody", "end"}));
}

TEST_F(LogOnCombo, AFingerPicksAUser) {
  UseThePlant();
  RunDialog(kLogOnByList);
  const Window form = Form(kLogOnComboForm, L"cboName");
  form.Child(L"cboName").Click();
  const Window list = WaitForList(form);
  EXPECT_GE(SendMessageW(list.Handle(), LB_GETITEMHEIGHT, 0, 0), kFinger);
  const RECT bounds = list.Bounds();
  EXPECT_GE(bounds.bottom - bounds.top, 5 * kFinger) << "too few users in sight";
  Tap(list, 3);  // below the administrator and two others
  WaitForName(form, NameOf(2));
  EXPECT_TRUE(form.Child(L"keyOK").Enabled());
  Finish(form, NameOf(2));
}

TEST_F(LogOnCombo, TheKeyboardPicksAUserWithoutOpeningTheList) {
  UseThePlant();
  RunDialog(kLogOnByList);
  const Window form = Form(kLogOnComboForm, L"cboName");
  PressKey(L"Home");
  WaitForName(form, L"admin");
  PressKey(L"End");
  WaitForName(form, NameOf(kUsers - 2));
  PressKey(L"Up");
  WaitForName(form, NameOf(kUsers - 3));
  EXPECT_TRUE(form.Child(L"keyOK").Enabled());
  Finish(form, NameOf(kUsers - 3));
}

TEST_F(LogOnCombo, TheKeyboardPicksAUserFromTheOpenList) {
  UseThePlant();
  RunDialog(kLogOnByList);
  const Window form = Form(kLogOnComboForm, L"cboName");
  PressKey(L"F4");
  const Window list = WaitForList(form);
  PressKey(L"Down");
  PressKey(L"Down");
  Move(form, L"Enter", L"txtPassword");  // takes the entry and leads on
  EXPECT_FALSE(list.Visible());
  WaitForName(form, NameOf(0));
  Type(form, L"txtPassword", kPassword);
  PressKey(L"Enter");
  EXPECT_EQ(Printed(), (Lines{"True, " + Narrow(NameOf(0)), "end"}));
}

TEST_F(LogOnCombo, EscClosesAnOpenListFirst) {
  RunDialog(kLogOnByList);
  const Window form = Form(kLogOnComboForm, L"cboName");
  PressKey(L"F4");
  const Window list = WaitForList(form);
  PressKey(L"Esc");
  list.WaitUntilGone();
  EXPECT_TRUE(form.Visible());
  PressKey(L"Esc");
  EXPECT_EQ(Printed(), (Lines{"False, nobody", "end"}));
}

TEST_F(LogOnCombo, WithoutAUserEnterInThePasswordLeadsToTheList) {
  RunDialog(kLogOnByList);
  const Window form = Form(kLogOnComboForm, L"cboName");
  Move(form, L"Enter", L"txtPassword");
  Type(form, L"txtPassword", kPassword);
  Move(form, L"Enter", L"cboName");
  EXPECT_FALSE(form.Child(L"keyOK").Enabled());
  PressKey(L"Esc");
  EXPECT_EQ(Printed(), (Lines{"False, nobody", "end"}));
}

TEST_F(LogOnCombo, RefusalsLeadToTheListOrToThePassword) {
  RunDialog(kLogOnByList);
  Window form = Form(kLogOnComboForm, L"cboName");
  ASSERT_EQ(
      Entries(form.Child(L"cboName")),
      (std::vector<std::wstring>{kAdministrator, kExpired, kOperator, kRenewing, kDeactivated}));
  PressKey(L"Home");
  WaitForName(form, kAdministrator);
  PressKey(L"End");
  WaitForName(form, kDeactivated);
  Move(form, L"Enter", L"txtPassword");
  Type(form, L"txtPassword", kPassword);
  PressKey(L"Enter");
  Confirm(Text("msgUserDeactivated"));
  form = Form(kLogOnComboForm, L"cboName");
  WaitForName(form, kDeactivated);
  PressKey(L"Home");
  PressKey(L"Down");
  PressKey(L"Down");
  WaitForName(form, kOperator);
  Move(form, L"Enter", L"txtPassword");
  Type(form, L"txtPassword", L"falsch");
  PressKey(L"Enter");
  Confirm(Text("msgInvalidPassword"));
  form = Form(kLogOnComboForm, L"txtPassword");
  WaitForName(form, kOperator);
  Type(form, L"txtPassword", kPassword);
  PressKey(L"Enter");
  EXPECT_EQ(Printed(), (Lines{"True, eva.meier", "end"}));
}

TEST_F(LogOnCombo, AnExpiredPasswordOfAPickedUserIsRenewedInTheNestedDialog) {
  RunDialog(kLogOnByList);
  Window form = Form(kLogOnComboForm, L"cboName");
  PressKey(L"Home");
  PressKey(L"Down");
  WaitForName(form, kExpired);
  Move(form, L"Enter", L"txtPassword");
  Type(form, L"txtPassword", kPassword);
  PressKey(L"Enter");
  Confirm(Text("msgPasswordExpired"));
  EXPECT_EQ(Form(L"FChangePassword", L"txtActPassword").Child(L"txtName").Text(), kExpired);
  ChangePassword(kPassword, L"Acht Pumpen");
  form = Form(kLogOnComboForm, L"txtPassword");
  WaitForName(form, kExpired);
  Type(form, L"txtPassword", L"Acht Pumpen");
  PressKey(L"Enter");
  EXPECT_EQ(Printed(), (Lines{"True, alt", "end"}));
}

TEST_F(LogOnCombo, TheLogOffKeyAndCancelReturnFalse) {
  RunUserScript(
      "LogOn \"eva.meier\"\r\n"
      "WScript.Echo CStr(Dialogs.KRUserLogOnCombo()) & \", \" & CurrentUser()\r\n"
      "WScript.Echo CStr(Dialogs.KRUserLogOnCombo()) & \", \" & CurrentUser()\r\n");
  const Window form = Form(kLogOnComboForm, L"cboName");
  form.Child(L"keyCancel").Click();
  form.WaitUntilGone();
  Form(kLogOnComboForm, L"cboName").Child(L"keyLogOff").Click();
  EXPECT_EQ(Printed(), (Lines{"False, eva.meier", "False, nobody", "end"}));
}

// Without a readable store there are no names; the dialog opens all the same.
TEST_F(LogOnCombo, AListThatCannotBeReadIsEmpty) {
  Store.emplace();
  Store->Use();
  RunDialog(kLogOnByList);
  const Window form = Form(kLogOnComboForm, L"cboName");
  EXPECT_TRUE(Entries(form.Child(L"cboName")).empty());
  EXPECT_FALSE(form.Child(L"keyOK").Enabled());
  PressKey(L"Esc");
  EXPECT_EQ(Printed(), (Lines{"False, nobody", "end"}));
}

}  // namespace
}  // namespace krx::drive
