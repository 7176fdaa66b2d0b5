#include "users/FChangePassword.h"

#include "service/MessageBoxStyle.h"

namespace krx::users {

namespace {

// This dialog's caption line is higher than the others'; this is meant.
constexpr Twips kCaptionPadding = 60;

}  // namespace

FChangePassword::FChangePassword(service::Apartment& apartment)
    : UserForm(apartment, u"FChangePassword"),
      administration_(apartment.Runtime, &host::Runtime::CreateUserAdministration) {
  NameLabels(lblChangePW, {{u"lblName"},
                           {u"lblFullName"},
                           {u"lblComment"},
                           {u"lblActualPassword"},
                           {u"lblNewPassword"},
                           {u"lblRepeatPassword"}});
  OrderRows();
  caption_padding_ = kCaptionPadding;
  for (ui::TextBox* const field : {&txtName, &txtFullName, &txtComment})
    MakeDisplayField(*field);
  keyOK.Enabled = false;

  LoadStep = [this] { LoadTexts(); };
  HideOnAnswer(keyOK, keyCancel, OkPressed);
  // A change of the current password does not check again; this is meant.
  txtPassword.Change = [this] { EnableOK(); };
  txtPassword2.Change = [this] { EnableOK(); };
  for (ui::PasswordBox* const box : {&txtActPassword, &txtPassword, &txtPassword2})
    SelectAllOnFocus(*box);
  OnEnter(txtActPassword, [this] { txtPassword.SetFocus(); });
  OnEnter(txtPassword, [this] { txtPassword2.SetFocus(); });
  ConfirmOnEnter(txtPassword2, keyOK, txtActPassword);
}

std::vector<service::InputRow> FChangePassword::InputRows() {
  return {{lblChangePW[0], txtName},     {lblChangePW[1], txtFullName},
          {lblChangePW[2], txtComment},  {lblChangePW[3], txtActPassword},
          {lblChangePW[4], txtPassword}, {lblChangePW[5], txtPassword2}};
}

void FChangePassword::LoadTexts() {
  LoadCaption(u"capChangePassword");
  LoadButtons();
  LoadLabels(lblChangePW);
  LoadLook();
}

bool FChangePassword::ChangePassword(const std::optional<String>& user) {
  Load();
  const String name = FindUser(user);
  const bool changed = !name.empty() && Ask(name);
  Unload();
  return changed;
}

String FChangePassword::FindUser(const std::optional<String>& user) {
  if (user) {
    if (administration_->GetUserClass(*user).Found) return *user;
    ShowMessage(u"msgUnknownUser", service::kInformation, idxCaption.Text());
    return {};
  }
  const host::CurrentUser current = administration_->GetCurrentUser();
  if (!current.LoggedOn) {
    ShowMessage(u"msgNoCurrentUser", service::kInformation, idxCaption.Text());
  }
  return current.Name;
}

bool FChangePassword::Ask(const String& user) {
  const host::UserInfo info = administration_->GetUserInfo(user);
  txtName.Text = user;
  txtFullName.Text = info.FullName;
  txtComment.Text = info.Comment;
  FocusControl = &txtActPassword;
  for (;;) {
    OkPressed = false;
    ShowModal();
    if (!OkPressed) return false;
    if (Attempt()) return true;
  }
}

bool FChangePassword::Attempt() {
  switch (administration_->ChangeUserPassword(txtName.Text(), txtPassword.Text(),
                                              txtActPassword.Text())) {
    case host::ChangePasswordSucceeded:
      return true;
    case host::ChangePasswordUnknownUser:
      Refuse(u"msgUnknownUser", keyCancel);
      break;
    case host::ChangePasswordInvalidPassword:
    case host::ChangePasswordNotAccepted:
      Refuse(u"msgInvalidPassword", txtActPassword);
      break;
    case host::ChangePasswordUnableToSave:
      Refuse(u"msgUnableToSaveUser", keyCancel);
      break;
    case host::ChangePasswordInvalidLength:
      Refuse(u"msgInvalidPasswordLength", txtPassword);
      break;
    case host::ChangePasswordCallFailed:
      Refuse(u"msgCallFailed", keyCancel);
      break;
    default:
      break;  // a silent refusal
  }
  return false;
}

void FChangePassword::EnableOK() {
  keyOK.Enabled = txtPassword.Text() == txtPassword2.Text() && !txtPassword.Text().Empty() &&
                  !txtActPassword.Text().Empty();
}

}  // namespace krx::users
