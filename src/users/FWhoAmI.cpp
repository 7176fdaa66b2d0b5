#include "users/FWhoAmI.h"

#include "service/MessageBoxStyle.h"
#include "service/Skip.h"

namespace krx::users {

FWhoAmI::FWhoAmI(service::Apartment& apartment)
    : UserForm(apartment, u"FWhoAmI"),
      administration_(apartment.Runtime, &host::Runtime::CreateUserAdministration),
      classes_(apartment.Runtime, &host::Runtime::CreateUserClassAdministration) {
  NameLabels(lblWhoAmI, {{u"lblFullName", u"&Vollst\u00e4ndiger Name"},
                         {u"lblName", u"&Name"},
                         {u"lblComment", u"&Kommentar"},
                         {u"lblUserClass", u"&Benutzerklasse"}});
  for (ui::TextBox* const field : {&txtFullName, &txtName, &txtComment, &txtUserClass}) {
    MakeDisplayField(*field);
  }
  OrderRows();
  wide_row_ = WideRow::EndsWithFrame;
  LoadStep = [this] {
    LoadUser();
    LoadTexts();
  };
  keyOK.Click = [this] { Unload(); };
  keyClose.Click = [this] { Unload(); };
  Paint = [] {};  // this dialog moves no focus when it paints
}

void FWhoAmI::WhoAmI() {
  Load();
  if (!txtName.Text().empty()) {
    ShowModal();
    return;
  }
  ShowMessage(u"msgNoCurrentUser", service::kInformation, idxCaption.Text());
  Unload();
}

void FWhoAmI::LoadUser() {
  using service::Skip;
  host::CurrentUser user;
  host::UserInfo info;
  host::UserClassInfo user_class;
  Skip([&] { user = administration_->GetCurrentUser(); });
  if (!user.LoggedOn) return;
  Skip([&] { info = administration_->GetUserInfo(user.Name); });
  Skip([&] { user_class = classes_->GetUserClassInfo(user.ClassName); });
  txtName.Text = user.Name;
  txtFullName.Text = info.FullName;
  txtUserClass.Text = user_class.DisplayText;
  txtComment.Text = info.Comment;
}

void FWhoAmI::LoadTexts() {
  LoadCaption(u"capCurrentUser");
  LoadButtons();
  LoadLabels(lblWhoAmI);
  LoadLook();
}

// On the screen the class stands above the comment.
std::vector<service::InputRow> FWhoAmI::InputRows() {
  return {{lblWhoAmI[0], txtFullName},
          {lblWhoAmI[1], txtName},
          {lblWhoAmI[3], txtUserClass},
          {lblWhoAmI[2], txtComment}};
}

}  // namespace krx::users
