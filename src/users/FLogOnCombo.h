#pragma once

#include "users/LogOnForm.h"

namespace krx::users {

// Log-on by a name picked from the list of all users, for touch panels.
class FLogOnCombo : public LogOnForm {
 public:
  explicit FLogOnCombo(service::Apartment& apartment);

  ui::KRXComboBox cboName{*this, u"cboName"};
  ui::KRXKey& keyLogOff = log_off_;

 protected:
  String NameText() const override { return cboName.Text(); }
  void Leave() override { FocusControl = nullptr; }

 private:
  void ListUsers();

  OnFirstUse<host::UserAdministration> administration_;
};

}  // namespace krx::users
