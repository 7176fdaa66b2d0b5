#pragma once

#include <array>

#include "users/UserForm.h"

namespace krx::users {

// Shows who is logged on, read-only; says so in a message when nobody is.
class FWhoAmI : public UserForm {
 public:
  explicit FWhoAmI(service::Apartment& apartment);

  std::array<ui::Label, 4> lblWhoAmI{{{*this, u"lblWhoAmI(0)"},
                                      {*this, u"lblWhoAmI(1)"},
                                      {*this, u"lblWhoAmI(2)"},
                                      {*this, u"lblWhoAmI(3)"}}};
  ui::TextBox txtFullName{*this, u"txtFullName"};
  ui::TextBox txtName{*this, u"txtName"};
  ui::TextBox txtComment{*this, u"txtComment"};
  ui::TextBox txtUserClass{*this, u"txtUserClass"};
  ui::KRXKey keyOK{*this, u"keyOK"};

  // A user whose data cannot be read counts as nobody; a failing message raises Error.
  void WhoAmI();

 private:
  void LoadUser();
  void LoadTexts();
  std::vector<service::InputRow> InputRows() override;
  std::vector<ui::KRXKey*> Buttons() override { return {&keyOK}; }

  OnFirstUse<host::UserAdministration> administration_;
  OnFirstUse<host::UserClassAdministration> classes_;
};

}  // namespace krx::users
