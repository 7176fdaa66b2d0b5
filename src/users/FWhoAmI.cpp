#include "users/FWhoAmI.h"

#include "service/Skip.h"

namespace krx::users {

FWhoAmI::FWhoAmI(service::Apartment& apartment)
    : UserForm(apartment, u"FWhoAmI"),
      administration_(apartment.Runtime, &host::Runtime::CreateUserAdministration),
      classes_(apartment.Runtime, &host::Runtime::CreateUserClassAdministration) {
  // The captions hold until the texts are loaded, and where that fails.
  constexpr std::array<std::array<StringView, 2>, 4> kLabels{
      {{u"lblFullName", u"&Vollst\u00e4ndiger Name"},
       {u"lblName", u"&Name"},
       {u"lblComment", u"&Kommentar"},
       {u"lblUserClass", u"&Benutzerklasse"}}};
  for (std::size_t i = 0; i < kLabels.size(); ++i) {
    lblWhoAmI[i].Tag = kLabels[i][0];
    lblWhoAmI[i].Caption = String(kLabels[i][1]);
  }
  for (ui::TextBox* const field : {&txtFullName, &txtName, &txtComment, &txtUserClass}) {
    MakeDisplayField(*field);
  }
  OrderRows(InputRows());
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
  LoadText(keyOK, u"keyOK");
  for (ui::Label& label : lblWhoAmI)
    LoadText(label, label.Tag);
  const std::array keys{&keyOK};
  LoadFonts(keys, InputRows());
  ScreenChanged = [this, keys] {
    LayOut(InputRows(), keys, service::kCaptionPadding, WideRow::EndsWithFrame);
  };
  ScreenChanged();
}

// On the screen the class stands above the comment.
std::array<service::InputRow, 4> FWhoAmI::InputRows() {
  return {{{lblWhoAmI[0], txtFullName},
           {lblWhoAmI[1], txtName},
           {lblWhoAmI[3], txtUserClass},
           {lblWhoAmI[2], txtComment}}};
}

}  // namespace krx::users
