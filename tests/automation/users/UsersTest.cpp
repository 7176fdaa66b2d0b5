#include "users/UsersTest.h"

namespace krx::drive {

namespace {

std::string Creation(const wchar_t* name, const std::string& full_name, const std::string& comment,
                     const std::string& date, int state) {
  return "Users.CreateUser " + ScriptLiteral(name) + ", \"" + full_name + "\", \"" + comment +
         "\", " + ScriptLiteral(kPassword) + ", \"Operator\", " + date + ", " +
         std::to_string(state) + ", Result\r\nCheck Result, 0\r\n";
}

std::string FirstUsers() {
  return Creation(kOperator, "Eva Meier", "Early shift", "0", 0) +
         Creation(kRenewing, "Ole Neu", "", "0", 3) +
         Creation(kExpired, "Ida Alt", "", "45000", 0) +  // some day in 2023
         Creation(kDeactivated, "Ruth Ruhend", "", "0", 1);
}

// Made once and copied for every test.
const UserStoreFolder& Template() {
  static const UserStoreFolder store("password-expiry-days = 365\n");
  static const bool ready = [] {
    store.Provision(kAdministrator, kPassword, FirstUsers());
    return true;
  }();
  static_cast<void>(ready);
  return store;
}

}  // namespace

void UsersTest::SetUp() {
  DialogTest::SetUp();
  Store.emplace(Template());
  Store->Use();
}

void UsersTest::RunUserScript(const std::string& body) {
  RunScript(
      "Dim Users, Session\r\n"
      "Set Users = CreateObject(\"KorvelRuntime.UserAdministration\")\r\n"
      "Set Session = CreateObject(\"KorvelRuntime.UserSession\")\r\n"
      "Function CurrentUser()\r\n"
      "  Dim name, class_name, logged_on\r\n"
      "  Users.GetCurrentUser name, class_name, logged_on\r\n"
      "  CurrentUser = \"nobody\"\r\n"
      "  If logged_on Then CurrentUser = name\r\n"
      "End Function\r\n"
      "Sub LogOn(name)\r\n"
      "  Dim code\r\n"
      "  Session.LogOnUser name, " +
      ScriptLiteral(kPassword) +
      ", code\r\n"
      "  If code <> 2 Then WScript.Echo \"log-on refused with \" & code\r\n"
      "End Sub\r\n" +
      body + "WScript.Echo \"end\"\r\n");
}

void UsersTest::RunDialog(const std::string& call) {
  RunUserScript("WScript.Echo CStr(Dialogs." + call + ") & \", \" & CurrentUser()\r\n");
}

Window UsersTest::Form(const std::wstring& name, const std::wstring& focus) {
  const Window form = WaitForForm(name);
  form.WaitUntilAtRest(focus);
  return form;
}

void UsersTest::Confirm(const std::wstring& text, const std::wstring& title) {
  const Window box = NextBox();
  EXPECT_EQ(Narrow(box.Child(L"idxMessage").Text()), Narrow(text));
  EXPECT_EQ(Narrow(box.Child(L"idxCaption").Text()), Narrow(title));
  PressKey(L"Enter");
  box.WaitUntilGone();
}

void UsersTest::Type(const Window& form, const std::wstring& control, const std::wstring& text) {
  form.WaitUntilAtRest(control);
  TypeText(text);
  const bool secret = control.find(L"Password") != std::wstring::npos;
  form.Child(control).WaitForText(secret ? std::wstring(text.size(), L'*') : text);
}

void UsersTest::Move(const Window& form, const wchar_t* key, const std::wstring& control) {
  PressKey(key);
  form.WaitForFocusOn(control);
}

void UsersTest::LogOn(const std::wstring& name, const std::wstring& password) {
  const Window form = Form(L"FLogOn", L"txtName");
  Type(form, L"txtName", name);
  Move(form, L"Enter", L"txtPassword");
  Type(form, L"txtPassword", password);
  PressKey(L"Enter");
}

void UsersTest::ChangePassword(const std::wstring& current, const std::wstring& changed) {
  const Window form = Form(L"FChangePassword", L"txtActPassword");
  Type(form, L"txtActPassword", current);
  Move(form, L"Enter", L"txtPassword");
  Type(form, L"txtPassword", changed);
  Move(form, L"Enter", L"txtPassword2");
  Type(form, L"txtPassword2", changed);
  PressKey(L"Enter");
}

}  // namespace krx::drive
