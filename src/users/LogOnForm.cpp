#include "users/LogOnForm.h"

#include <array>

#include "service/MKRXDialog.h"
#include "users/FChangePassword.h"

namespace krx::users {

LogOnForm::LogOnForm(service::Apartment& apartment, String name, String log_off)
    : UserForm(apartment, std::move(name)), log_off_(*this, std::move(log_off)) {
  keyOK.Enabled = false;
  keyOK.Click = [this] {
    OkPressed = true;
    Hide();
  };
  keyCancel.Click = [this] { Hide(); };
  keyClose.Click = [this] { Hide(); };
  log_off_.Click = [this] { LogOff(); };
  txtPassword.GotFocus = [this] { service::SelectAllText(txtPassword); };
  OnEnter(txtPassword, [this] {
    ui::Control& next = keyOK.Enabled() ? static_cast<ui::Control&>(keyOK) : *name_field_;
    next.SetFocus();
    if (keyOK.Enabled()) keyOK.Click();
  });
}

void LogOnForm::BindNameField(ui::Control& field) {
  name_field_ = &field;
  OnEnter(field, [this] { txtPassword.SetFocus(); });
  // The derived dialog creates the field last; on the screen it comes first.
  field.TabIndex = lblPassword.TabIndex();
}

void LogOnForm::LoadLogOn(StringView caption_suffix) {
  LoadCaption(u"capLogon", caption_suffix);
  const std::array keys{&keyOK, &keyCancel, &log_off_};
  constexpr std::array<StringView, 3> kTexts{u"keyOK", u"keyCancel", u"keyLogOut"};
  LoadKeys(keys, kTexts);
  LoadLabel(lblName, u"lblName");
  LoadLabel(lblPassword, u"lblPassword");
  LoadInput(*name_field_);
  LoadInput(txtPassword);
  const std::array rows{service::InputRow{lblName, *name_field_},
                        service::InputRow{lblPassword, txtPassword}};
  LayOut(rows, keys);
}

bool LogOnForm::LogOn() {
  OnFirstUse<host::UserSession> session(TheApartment().Runtime, &host::Runtime::CreateUserSession);
  Load();
  FocusControl = name_field_;
  bool succeeded = false;
  do {
    OkPressed = false;
    ShowModal();
    if (!OkPressed) break;
    succeeded = Attempt(session);
  } while (!succeeded);
  Leave();
  Unload();
  return succeeded;
}

bool LogOnForm::Attempt(OnFirstUse<host::UserSession>& session) {
  switch (session->LogOnUser(NameText(), txtPassword.Text())) {
    case host::LogOnUnknownUser:
      Refuse(u"msgUnknownUser", *name_field_);
      break;
    case host::LogOnInvalidPassword:
      Refuse(u"msgInvalidPassword", txtPassword);
      break;
    case host::LogOnSucceeded:
      return true;
    case host::LogOnUserDeactivated:
      Refuse(u"msgUserDeactivated", *name_field_);
      break;
    case host::LogOnPasswordExpired:
      RenewPassword(u"msgPasswordExpired");
      break;
    case host::LogOnTooManyFailedLogons:
      Refuse(u"msgTooManyFailedLogons", *name_field_);
      break;
    case host::LogOnRenewPassword:
      RenewPassword(u"msgRenewPassword");
      break;
    default:
      break;  // a silent refusal
  }
  return false;
}

void LogOnForm::Refuse(StringView message, ui::Control& focus) {
  ShowMessage(message, service::kExclamation, String());
  FocusControl = &focus;
}

void LogOnForm::RenewPassword(StringView message) {
  ShowMessage(message, service::kExclamation, String());
  // Whatever comes of it, the operator logs on anew with the password that holds then.
  FChangePassword(TheApartment()).ChangePassword(NameText());
  FocusControl = &txtPassword;
}

void LogOnForm::LogOff() {
  TheApartment().Runtime.CreateUserSession()->LogOffUser();
  Hide();
}

}  // namespace krx::users
