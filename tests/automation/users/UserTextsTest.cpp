// Which text of the tables each control of the user dialogs shows, in both languages; those that
// are labels say so before their fields.

#include <vector>

#include "access/Reader.h"
#include "users/UsersTest.h"

namespace krx::drive {
namespace {

struct Row {
  const wchar_t* Control;
  const char* Key;  // of its text
};
using Rows = std::vector<Row>;

class UserTexts : public UsersTest, public ::testing::WithParamInterface<const char*> {
 protected:
  static std::wstring Text(const char* key) { return drive::Text(key, GetParam()); }

  void Run(const std::string& body) {
    RunUserScript(std::string("Runtime.Language = \"") + GetParam() + "\"\r\n" + body);
  }

  // A text whose key begins so is the label of the control.
  static std::wstring Seen(const Window& form, const Row& row) {
    const bool label = std::string_view(row.Key).starts_with("lbl");
    return label ? HeadingOf(form, row.Control).Text : Shown(form.Child(row.Control));
  }
  static void Expect(const Window& form, const Rows& rows) {
    for (const Row& row : rows)
      EXPECT_EQ(Narrow(Seen(form, row)), Narrow(Text(row.Key))) << Narrow(row.Control);
  }
};

TEST_P(UserTexts, LogOnAndItsMessage) {
  Run("WScript.Echo CStr(Dialogs.KRUserLogOn())\r\n");
  Expect(Form(L"FLogOn", L"txtName"), {{L"idxCaption", "capLogon"},
                                       {L"txtName", "lblName"},
                                       {L"txtPassword", "lblPassword"},
                                       {L"keyOK", "keyOK"},
                                       {L"keyCancel", "keyCancel"},
                                       {L"keyLogOut", "keyLogOut"}});
  LogOn(kOperator, L"falsch");
  Confirm(Text("msgInvalidPassword"));
  Form(L"FLogOn", L"txtPassword");
  PressKey(L"Esc");
  EXPECT_EQ(Printed(), (Lines{"False", "end"}));
}

TEST_P(UserTexts, LogOnWithTheList) {
  Run("WScript.Echo CStr(Dialogs.KRUserLogOnCombo())\r\n");
  const Window form = Form(L"FLogOnCombo", L"cboName");
  EXPECT_EQ(Narrow(Shown(form.Child(L"idxCaption"))), Narrow(Text("capLogon") + L' '));
  Expect(form, {{L"cboName", "lblName"},
                {L"txtPassword", "lblPassword"},
                {L"keyOK", "keyOK"},
                {L"keyCancel", "keyCancel"},
                {L"keyLogOff", "keyLogOut"}});
  PressKey(L"Esc");
  EXPECT_EQ(Printed(), (Lines{"False", "end"}));
}

TEST_P(UserTexts, ChangePassword) {
  Run("LogOn \"eva.meier\"\r\nDialogs.KRChangePassword\r\n");
  Expect(Form(L"FChangePassword", L"txtActPassword"), {{L"idxCaption", "capChangePassword"},
                                                       {L"txtName", "lblName"},
                                                       {L"txtFullName", "lblFullName"},
                                                       {L"txtComment", "lblComment"},
                                                       {L"txtActPassword", "lblActualPassword"},
                                                       {L"txtPassword", "lblNewPassword"},
                                                       {L"txtPassword2", "lblRepeatPassword"},
                                                       {L"keyOK", "keyOK"},
                                                       {L"keyCancel", "keyCancel"}});
  PressKey(L"Esc");
  EXPECT_EQ(Printed(), Lines{"end"});
}

TEST_P(UserTexts, WhoAmIWithAndWithoutUser) {
  Run("Dialogs.KRWhoAmI\r\nLogOn \"eva.meier\"\r\nDialogs.KRWhoAmI\r\n");
  Confirm(Text("msgNoCurrentUser"), Text("capCurrentUser"));
  Expect(Form(L"FWhoAmI", L"keyOK"), {{L"idxCaption", "capCurrentUser"},
                                      {L"txtFullName", "lblFullName"},
                                      {L"txtName", "lblName"},
                                      {L"txtComment", "lblComment"},
                                      {L"txtUserClass", "lblUserClass"},
                                      {L"keyOK", "keyOK"}});
  PressKey(L"Enter");
  EXPECT_EQ(Printed(), Lines{"end"});
}

INSTANTIATE_TEST_SUITE_P(Languages, UserTexts, ::testing::Values("en", "de"),
                         [](const auto& language) { return std::string(language.param); });

}  // namespace
}  // namespace krx::drive
