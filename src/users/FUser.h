#pragma once

#include <array>
#include <vector>

#include "users/UserForm.h"

namespace krx::users {

// Lists the users and lets an administrator add, change, remove, activate and deactivate them.
class FUser : public UserForm {
 public:
  explicit FUser(service::Apartment& apartment);

  ui::Frame& fraUser = fra;
  ui::ListView lvwUser{*this, u"lvwUser"};
  ui::KRXKey keyAddUser{*this, u"keyAddUser"};
  ui::KRXKey keyChangeUser{*this, u"keyChangeUser"};
  ui::KRXKey keyRemoveUser{*this, u"keyRemoveUser"};
  ui::KRXKey keyActivateUser{*this, u"keyActivateUser"};
  ui::KRXKey keyDeactivateUser{*this, u"keyDeactivateUser"};
  ui::KRXKey keyOK{*this, u"keyOK"};

  // Returns when the operator leaves. Failing calls raise Error.
  void ShowUsers();
  // Reads all users anew. The selected user stays selected where he is still listed, and the list
  // stays where it is scrolled to. When a call fails the list stays as it was.
  void RefreshUsers();

 private:
  using Row = std::vector<String>;

  std::vector<ui::KRXKey*> Buttons() override;
  void CalcPositions() override;
  void Bind();
  void LoadTexts();
  void LoadTitles();
  String SelectedUser() const;
  void ChangeSelected();
  template <class Action>
  void ActOnSelected(Action action);

  std::int32_t OwnLevel(const host::CurrentUser& current);
  bool IsListed(const String& user, std::int32_t level, const host::CurrentUser& current,
                std::int32_t own_level);
  std::vector<Row> ReadUsers();
  void ShowRows(std::vector<Row> rows);
  void SizeColumns();

  OnFirstUse<host::UserAdministration> administration_;
  OnFirstUse<host::UserClassAdministration> classes_;
};

}  // namespace krx::users
