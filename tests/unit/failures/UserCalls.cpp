#include <utility>

#include "failures/Calls.h"
#include "panel/Layouts.h"
#include "service/MKRXDialog.h"
#include "ui/Keyboard.h"

namespace krx::test {

namespace {

using headless::Operator;

void Fill(Operator& op, StringView box, StringView text) {
  auto& field = op.Get<ui::EditBox>(box);
  field.SetFocus();
  service::SelectAllText(field);
  op.Type(text);
}

void LogOn(Operator& op) {
  if (op.Form().Name() == u"FLogOn") {
    Fill(op, u"txtName", u"a user with a long name");
  } else {
    op.Get<ui::KRXComboBox>(u"cboName").Select(1);
  }
  Fill(op, u"txtPassword", u"secret");
  for (const StringView key : {u"q", u"w"}) {
    if (op.BoardKey(key)) op.Tap(key);
  }
  op.Click(u"keyOK");
}

void Change(Operator& op) {
  Fill(op, u"txtActPassword", u"secret");
  Fill(op, u"txtPassword", u"another secret");
  Fill(op, u"txtPassword2", u"another secret");
  op.Click(u"keyOK");
}

// As often as the user management refuses.
void Enter(Operator& op) {
  if (!op.Get<ui::TextBox>(u"txtName").Locked()) Fill(op, u"txtName", u"eva");
  Fill(op, u"txtFullName", u"Eva Meier of the early shift");
  Fill(op, u"txtPassword", u"a first secret");
  Fill(op, u"txtPassword2", u"a first secret");
  auto& classes = op.Get<ui::KRXComboBox>(u"cboUserClass");
  if (!classes.Items().empty()) classes.Select(0);
  for (int i = 0; i < 9 && op.Form().Visible(); ++i)
    op.Click(u"keyOK");
}

void Administer(Operator& op) {
  op.Click(u"keyAddUser");
  for (const StringView key :
       {u"keyActivateUser", u"keyDeactivateUser", u"keyChangeUser", u"keyRemoveUser"}) {
    if (op.Get<ui::ListView>(u"lvwUser").RowCount() > 0) op.ClickRow(u"lvwUser", 0);
    op.Click(key);
  }
  op.Click(u"keyOK");
}

void Acknowledge(Operator& op) {
  op.Press(ui::kKeyEnter);
}

// A wrong password, an expired one, which is renewed, and the right one.
std::function<void(Plant&)> LoggingOn(const String& form) {
  return [form](Plant& plant) {
    plant.Platform.Always[u"FMessageBox"] = Acknowledge;
    plant.Runtime.Codes = {host::LogOnInvalidPassword, host::LogOnPasswordExpired,
                           host::ChangePasswordSucceeded, host::LogOnSucceeded};
    plant.Platform.Expect(form, LogOn);
    plant.Platform.Expect(form, LogOn);
    plant.Platform.Expect(u"FChangePassword", Change);
    plant.Platform.Expect(form, LogOn);
  };
}

// The same by the keyboard on the screen.
void LoggingOnByTouch(Plant& plant) {
  plant.Runtime.Panel.Keyboard = KeyboardUse::Always;
  plant.Runtime.Layout = u"en";
  for (const StringView name : {u"en", u"symbols", u"accents"})
    plant.Platform.Layouts[String(name)] = LayoutText(ToUtf8(name));
  LoggingOn(u"FLogOn")(plant);
}

std::string Told(bool result) {
  return result ? "true" : "false";
}

}  // namespace

std::vector<PlantCall> UserCalls() {
  const auto changing = [](Plant& plant) {
    plant.Platform.Always[u"FMessageBox"] = Acknowledge;
    plant.Runtime.Codes = {host::ChangePasswordInvalidPassword, host::ChangePasswordNotAccepted,
                           host::ChangePasswordSucceeded};
    for (std::size_t i = 0; i < plant.Runtime.Codes.size(); ++i)
      plant.Platform.Expect(u"FChangePassword", Change);
  };
  const auto adding = [](Plant& plant) {
    plant.Platform.Always[u"FMessageBox"] = Acknowledge;
    plant.Runtime.Codes = {host::CreateUserExists, host::CreateUserNotAccepted,
                           host::CreateUserSucceeded};
    plant.Platform.Expect(u"FAddUser", Enter);
  };
  const auto administering = [](Plant& plant) {
    plant.Platform.Always[u"FMessageBox"] = Acknowledge;
    plant.Platform.Expect(u"FUser", Administer);
    for (int i = 0; i < 2; ++i)
      plant.Platform.Expect(u"FAddUser", Enter);
  };
  const auto done = [](auto&& open) {
    return [open](Plant& plant) {
      open(plant);
      return std::string("done");
    };
  };
  return {
      {"KRUserLogOn", LoggingOnByTouch,
       [](Plant& plant) { return Told(plant.Dialog->KRUserLogOn()); }},
      {"KRUserLogOnCombo", LoggingOn(u"FLogOnCombo"),
       [](Plant& plant) { return Told(plant.Dialog->KRUserLogOnCombo()); }},
      {"KRWhoAmI",
       [](Plant& plant) {
         plant.Platform.Expect(u"FWhoAmI", [](Operator& op) { op.Click(u"keyOK"); });
       },
       done([](Plant& plant) { plant.Dialog->KRWhoAmI(); })},
      {"KRChangePassword", changing, done([](Plant& plant) { plant.Dialog->KRChangePassword(); })},
      {"KRAddUser", adding, [](Plant& plant) { return Told(plant.Dialog->KRAddUser()); }},
      {"KRUser", administering, done([](Plant& plant) { plant.Dialog->KRUser(); })},
  };
}

}  // namespace krx::test
