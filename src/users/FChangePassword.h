#pragma once

#include <array>
#include <optional>

#include "users/UserForm.h"

namespace krx::users {

// Replaces a user's password: shows who he is and asks for the current password and the new one
// twice.
class FChangePassword : public UserForm {
 public:
  explicit FChangePassword(service::Apartment& apartment);

  std::array<ui::Label, 6> lblChangePW{{{*this, u"lblChangePW(0)"},
                                        {*this, u"lblChangePW(1)"},
                                        {*this, u"lblChangePW(2)"},
                                        {*this, u"lblChangePW(3)"},
                                        {*this, u"lblChangePW(4)"},
                                        {*this, u"lblChangePW(5)"}}};
  ui::TextBox txtName{*this, u"txtName"};
  ui::TextBox txtFullName{*this, u"txtFullName"};
  ui::TextBox txtComment{*this, u"txtComment"};
  ui::PasswordBox txtActPassword{*this, u"txtActPassword"};
  ui::PasswordBox txtPassword{*this, u"txtPassword"};
  ui::PasswordBox txtPassword2{*this, u"txtPassword2"};
  ui::KRXKey keyOK{*this, u"keyOK"};
  ui::KRXKey keyCancel{*this, u"keyCancel"};

  bool OkPressed = false;

  // Changes the password of the named user, or of the one who is logged on. True when it has been
  // changed; false when the operator gave up or there is no such user. Failing calls raise Error.
  bool ChangePassword(const std::optional<String>& user = std::nullopt);

 private:
  std::vector<service::InputRow> InputRows() override;
  std::vector<ui::KRXKey*> Buttons() override { return {&keyOK, &keyCancel}; }
  void LoadTexts();
  String FindUser(const std::optional<String>& user);
  bool Ask(const String& user);
  bool Attempt();
  void EnableOK();

  OnFirstUse<host::UserAdministration> administration_;
};

}  // namespace krx::users
