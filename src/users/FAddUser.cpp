#include "users/FAddUser.h"

#include <algorithm>

#include "service/KRXDialog.h"
#include "service/MessageBoxStyle.h"
#include "service/Skip.h"

namespace krx::users {

FAddUser::FAddUser(service::Apartment& apartment)
    : UserForm(apartment, u"FAddUser"),
      administration_(apartment.Runtime, &host::Runtime::CreateUserAdministration),
      classes_(apartment.Runtime, &host::Runtime::CreateUserClassAdministration) {
  NameLabels(lblAddUser, {{u"lblName", u"&Name"},
                          {u"lblFullName", u"&Vollst\u00e4ndiger Name"},
                          {u"lblPassword", u"&Passwort"},
                          {u"lblRepeatPassword", u"Passwort &wiederholen"},
                          {u"lblUserClass", u"&Benutzerklasse"},
                          {u"lblComment", u"&Kommentar"}});
  OrderRows();
  keyOK.Enabled = false;

  LoadStep = [this] {
    LoadTexts();
    ListClasses();
  };
  keyOK.Click = [this] { Save(); };
  keyCancel.Click = [this] { Unload(); };
  keyClose.Click = [this] { Unload(); };
  BindFields();
}

void FAddUser::BindFields() {
  for (ui::TextBox* const box : {&txtName, &txtFullName, &txtComment})
    SelectAllOnFocus(*box);
  for (ui::PasswordBox* const box : {&txtPassword, &txtPassword2}) {
    SelectAllOnFocus(*box);
    box->Change = [this] { CheckEntries(); };
  }
  txtName.Change = [this] { CheckEntries(); };
  cboUserClass.Change = [this] { CheckEntries(); };
  OnEnter(txtName, [this] { txtFullName.SetFocus(); });
  OnEnter(txtFullName, [this] { txtPassword.SetFocus(); });
  OnEnter(txtPassword, [this] { txtPassword2.SetFocus(); });
  OnEnter(txtPassword2, [this] { LeaveSecondPassword(); });
  OnEnter(cboUserClass, [this] { txtComment.SetFocus(); });
  ConfirmOnEnter(txtComment, keyOK, txtName);
}

std::vector<service::InputRow> FAddUser::InputRows() {
  return {{lblAddUser[0], txtName},      {lblAddUser[1], txtFullName},
          {lblAddUser[2], txtPassword},  {lblAddUser[3], txtPassword2},
          {lblAddUser[4], cboUserClass}, {lblAddUser[5], txtComment}};
}

void FAddUser::LoadTexts() {
  service::Skip([this] { SetCaption(caption_); });
  LoadButtons();
  LoadLabels(lblAddUser);
  LoadLook();
}

// A statement that fails leaves its value as it is, and the others go on: where the mode cannot be
// had the operator is restricted.
void FAddUser::ListClasses() {
  using service::Skip;
  std::int32_t mode = 0;
  std::int32_t own_level = 0;
  host::CurrentUser current;
  host::UserClasses all;
  Skip([&] { mode = administration_->GetAdministrationMode(); });
  if (mode < 0 || mode > 2) return;
  const bool restricted = mode == 0;
  if (restricted) {
    Skip([&] { current = administration_->GetCurrentUser(); });
    Skip([&] { own_level = classes_->GetUserClassInfo(current.ClassName).Level; });
  }
  Skip([&] { all = classes_->GetUserClasses(); });
  for (std::size_t i = 0; i < all.Names.size(); ++i) {
    const bool below = i < all.Levels.size() && all.Levels[i] < own_level;
    if (!below && restricted) continue;
    Skip([&] { cboUserClass.AddItem(all.Names[i], ui::ComboBox::kAtEnd); });
  }
}

// The caption is fetched before the form loads, because the layout depends on it.
void FAddUser::Open(Mode mode, StringView caption) {
  mode_ = mode;
  caption_ = Text(caption);
  Load();
}

bool FAddUser::AddUser() {
  Open(Mode::Add, u"capAddUser");
  if (!administration_->GetCurrentUser().Name.empty()) {
    ShowModal();
    return result_;
  }
  const String message = Text(u"msgNoCurrentUser") + u"\n" + Text(u"msgNoAddUser");
  DialogService().KRMsgBox(message, service::kExclamation, idxCaption.Text(), String(), 0);
  Unload();
  return false;
}

bool FAddUser::ChangeUser(const String& user) {
  Open(Mode::Change, u"capChangeUser");
  // The name can be read and copied by keyboard, but work begins at the first field to be changed.
  MakeDisplayField(txtName);
  txtName.TabStop = true;
  FocusControl = &txtFullName;
  const host::CurrentUser current = administration_->GetCurrentUser();
  const host::UserClassOfUser user_class = administration_->GetUserClass(user);
  const host::UserInfo info = administration_->GetUserInfo(user);
  txtName.Text = user;
  txtFullName.Text = info.FullName;
  txtComment.Text = info.Comment;
  cboUserClass.Text = user_class.ClassName;
  if (user == current.Name) cboUserClass.Enabled = false;
  ShowModal();
  return result_;
}

// The class of one's own account cannot be chosen and would keep the focus here.
void FAddUser::LeaveSecondPassword() {
  ui::Control& next = cboUserClass.Enabled() ? static_cast<ui::Control&>(cboUserClass) : txtComment;
  next.SetFocus();
}

void FAddUser::CheckEntries() {
  keyOK.Enabled = !txtName.Text().empty() && !txtPassword.Text().Empty() &&
                  !cboUserClass.Text().empty() && txtPassword.Text() == txtPassword2.Text();
}

// Adding and changing number their refusals differently; both numberings are meant.
void FAddUser::Save() {
  const host::UserRecord record{txtName.Text(), txtFullName.Text(), txtComment.Text(),
                                Password(txtPassword.Text().View()), cboUserClass.Text()};
  if (mode_ == Mode::Add) {
    const Refusal refusals[] = {{u"msgInvalidPasswordLength", txtPassword},
                                {u"msgInvalidPassword", txtPassword},
                                {u"msgUserExists", txtName},
                                {u"msgUnableToSaveUser", txtName},
                                {u"msgCallFailed", keyCancel}};
    React(administration_->CreateUser(record), refusals);
  } else {
    const Refusal refusals[] = {
        {u"msgUnknownUser", keyCancel},       {u"msgUnknownUserClass", cboUserClass},
        {u"msgUnableToSaveUser", keyCancel},  {u"msgInvalidPasswordLength", txtPassword},
        {u"msgInvalidPassword", txtPassword}, {u"msgCallFailed", keyCancel}};
    React(administration_->ModifyUser(record), refusals);
  }
}

// Refusals are numbered from 1; a code beyond them is a silent one.
void FAddUser::React(std::int32_t code, std::span<const Refusal> refusals) {
  if (code == 0) {
    result_ = true;
    return Unload();
  }
  if (code < 0 || static_cast<std::size_t>(code) > refusals.size()) return;
  const Refusal& refusal = refusals[static_cast<std::size_t>(code) - 1];
  ShowMessage(refusal.Message, service::kExclamation, String());
  refusal.Focus.SetFocus();
}

}  // namespace krx::users
