#pragma once

#include <string>
#include <vector>

#include "service/MKRXDialog.h"
#include "service/MessageBoxStyle.h"
#include "support/DialogTest.h"
#include "ui/Keyboard.h"

namespace krx::test {

// The user dialogs over a scripted user management. A message box is written down as the operator
// sees it, "Box text|style|title", and answered by its only button.
class UsersTest : public DialogTest {
 protected:
  using Operator = headless::Operator;
  using Script = headless::HeadlessPlatform::Script;
  using Calls = std::vector<std::string>;

  UsersTest() {
    platform.Always[u"FMessageBox"] = [this](Operator& op) {
      const int icon = op.Get<ui::PictureBox>(u"picIcon").Picture()->Icon.Id;
      const auto style =
          icon == ui::kExclamationIcon ? service::kExclamation : service::kInformation;
      log.Note("Box " + ToUtf8(op.Get<ui::KRXIndex>(u"idxMessage").WholeText()) + "|" +
               std::to_string(style) + "|" + ToUtf8(op.Get<ui::KRXIndex>(u"idxCaption").Text()));
      for (const StringView key : {u"keyButton(1)", u"keyButton(2)", u"keyHelp"})
        EXPECT_FALSE(op.Get(key).Visible());
      op.Press(ui::kKeyEnter);
    };
  }

  FakeUsers& Users() { return runtime.Users; }

  // Replaces what is in the box, as by selecting all of it first.
  static void Fill(Operator& op, StringView box, StringView text) {
    auto& field = op.Get<ui::EditBox>(box);
    field.SetFocus();
    service::SelectAllText(field);
    if (text.empty()) field.Edited(0, field.TextLength(), u"");
    op.Type(text);
  }
  static std::string Secret(Operator& op, StringView box) {
    return ToUtf8(op.Get<ui::PasswordBox>(box).Text().View());
  }
  static bool Enabled(Operator& op, StringView control) { return op.Get(control).Enabled(); }

  // The next change-password dialog, and what the operator does there.
  void ExpectChange(Script script) { platform.Expect(u"FChangePassword", std::move(script)); }
  static void FillChange(Operator& op, StringView current, StringView fresh) {
    Fill(op, u"txtActPassword", current);
    Fill(op, u"txtPassword", fresh);
    Fill(op, u"txtPassword2", fresh);
  }
};

// What differs between the two log-on dialogs.
struct LogOnDialog {
  String Form;
  String NameField;
  String LogOffKey;
  std::string Title;
  bool (service::KRXDialog::*Open)();
  bool HasList;
};

inline const LogOnDialog kTypedName{
    u"FLogOn", u"txtName", u"keyLogOut", "capLogon", &service::KRXDialog::KRUserLogOn, false};
inline const LogOnDialog kListedName{u"FLogOnCombo",
                                     u"cboName",
                                     u"keyLogOff",
                                     "capLogon ",
                                     &service::KRXDialog::KRUserLogOnCombo,
                                     true};

inline void PrintTo(const LogOnDialog& dialog, std::ostream* out) {
  *out << ToUtf8(dialog.Form);
}

// What both log-on dialogs do alike.
class LogOnTest : public UsersTest, public ::testing::WithParamInterface<LogOnDialog> {
 protected:
  LogOnTest() { Users().Names = {u"anna", u"Berta", u"carl"}; }

  static const LogOnDialog& Which() { return GetParam(); }

  bool LogOn() { return (dialog.get()->*Which().Open)(); }

  void Expect(Script script) { platform.Expect(Which().Form, std::move(script)); }
  // The dialog comes once more and is given up.
  void ExpectGivingUp() {
    Expect([](Operator& op) { op.Click(u"keyCancel"); });
  }

  // Types the name, or picks it from the list.
  static void Name(Operator& op, const String& name) {
    if (!Which().HasList) return Fill(op, Which().NameField, name);
    auto& box = op.Get<ui::KRXComboBox>(Which().NameField);
    box.SetFocus();
    const auto& items = box.Items();
    const auto found = std::find(items.begin(), items.end(), name);
    if (found == items.end()) {
      box.Text = name;
    } else {
      box.Select(static_cast<int>(found - items.begin()));
    }
  }
  static String NameText(Operator& op) { return op.Get(Which().NameField).DisplayedText(); }
  static Script Confirm(String name, String password) {
    return [name, password](Operator& op) {
      Name(op, name);
      Fill(op, u"txtPassword", password);
      op.Click(u"keyOK");
    };
  }

  // The calls of loading the dialog before `calls`, and the ends of its objects behind them.
  static Calls InDialog(Calls calls) {
    if (!Which().HasList) return calls;
    calls.insert(calls.begin(), {"CreateUserAdministration", "UserAdministration1.GetUserNames()"});
    calls.push_back("~UserAdministration1");
    return calls;
  }
  // The number that a nested dialog's administration object gets.
  static std::string Nested() { return Which().HasList ? "2" : "1"; }
};

inline std::string NameOfDialog(const ::testing::TestParamInfo<LogOnDialog>& info) {
  return ToUtf8(info.param.Form);
}

#define BOTH_LOG_ON_DIALOGS(suite) \
  INSTANTIATE_TEST_SUITE_P(Dialogs, suite, ::testing::Values(kTypedName, kListedName), NameOfDialog)

}  // namespace krx::test
