#pragma once

#include "users/LogOnForm.h"

namespace krx::users {

// Log-on by typed name.
class FLogOn : public LogOnForm {
 public:
  explicit FLogOn(service::Apartment& apartment);

  ui::TextBox txtName{*this, u"txtName"};
  ui::KRXKey& keyLogOut = log_off_;

 protected:
  String NameText() const override { return txtName.Text(); }
};

}  // namespace krx::users
