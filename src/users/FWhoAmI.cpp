#include "users/FWhoAmI.h"

#include "service/Skip.h"

namespace krx::users {

FWhoAmI::FWhoAmI(service::Apartment& apartment) : UserForm(apartment, u"FWhoAmI") {
  constexpr std::array<StringView, 4> kLabels{u"lblFullName", u"lblName", u"lblComment",
                                              u"lblUserClass"};
  for (std::size_t i = 0; i < kLabels.size(); ++i)
    lblWhoAmI[i].Tag = kLabels[i];
  for (ui::TextBox* const field : {&txtFullName, &txtName, &txtComment, &txtUserClass}) {
    MakeDisplayField(*field);
  }
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
  OnFirstUse<host::UserAdministration> administration(TheApartment().Runtime,
                                                      &host::Runtime::CreateUserAdministration);
  OnFirstUse<host::UserClassAdministration> classes(TheApartment().Runtime,
                                                    &host::Runtime::CreateUserClassAdministration);
  host::CurrentUser user;
  host::UserInfo info;
  host::UserClassInfo user_class;
  Skip([&] { user = administration->GetCurrentUser(); });
  if (!user.LoggedOn) return;
  Skip([&] { info = administration->GetUserInfo(user.Name); });
  Skip([&] { user_class = classes->GetUserClassInfo(user.ClassName); });
  txtName.Text = user.Name;
  txtFullName.Text = info.FullName;
  txtUserClass.Text = user_class.DisplayText;
  txtComment.Text = info.Comment;
}

void FWhoAmI::LoadTexts() {
  LoadCaption(u"capCurrentUser");
  const std::array keys{&keyOK};
  constexpr std::array<StringView, 1> kTexts{u"keyOK"};
  LoadKeys(keys, kTexts);
  for (ui::Label& label : lblWhoAmI)
    LoadLabel(label, label.Tag);
  for (ui::TextBox* const field : {&txtFullName, &txtName, &txtComment, &txtUserClass}) {
    LoadInput(*field);
  }
  const std::array rows{
      service::InputRow{lblWhoAmI[0], txtFullName}, service::InputRow{lblWhoAmI[1], txtName},
      service::InputRow{lblWhoAmI[3], txtUserClass}, service::InputRow{lblWhoAmI[2], txtComment}};
  LayOut(rows, keys);
}

}  // namespace krx::users
