#include "users/LogOnForm.h"

#include "service/MessageBoxStyle.h"
#include "users/FChangePassword.h"

namespace krx::users {

LogOnForm::LogOnForm(service::Apartment& apartment, String name, String log_off)
    : UserForm(apartment, std::move(name)), log_off_(*this, std::move(log_off)) {
  keyOK.Enabled = false;
  HideOnAnswer(keyOK, keyCancel, OkPressed);
  log_off_.Click = [this] { LogOff(); };
  SelectAllOnFocus(txtPassword);
}

void LogOnForm::BindNameField(ui::Control& field) {
  name_field_ = &field;
  OnEnter(field, [this] { txtPassword.SetFocus(); });
  ConfirmOnEnter(txtPassword, keyOK, field);
  OrderRows();
}

std::vector<service::InputRow> LogOnForm::InputRows() {
  return {{lblName, *name_field_}, {lblPassword, txtPassword}};
}

void LogOnForm::LoadLogOn(StringView caption_suffix) {
  LoadCaption(u"capLogon", caption_suffix);
  LoadText(keyOK, u"keyOK");
  LoadText(keyCancel, u"keyCancel");
  LoadText(log_off_, u"keyLogOut");
  LoadText(lblName, u"lblName");
  LoadText(lblPassword, u"lblPassword");
  LoadLook();
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
