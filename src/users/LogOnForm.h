#pragma once

#include <array>

#include "users/UserForm.h"

namespace krx::users {

// The log-on dialog but for its name field: asks until a log-on succeeds or the operator leaves,
// reports refusals, and sends him to change an expired password.
class LogOnForm : public UserForm {
 public:
  ui::Label lblName{*this, u"lblName"};
  ui::Label lblPassword{*this, u"lblPassword"};
  ui::PasswordBox txtPassword{*this, u"txtPassword"};
  ui::KRXKey keyOK{*this, u"keyOK"};
  ui::KRXKey keyCancel{*this, u"keyCancel"};

  bool OkPressed = false;

  // True when a user has logged on; false on Cancel, close button and logging off. A failing call
  // of the user management or a service ends it with that error.
  bool LogOn();

 protected:
  // `log_off` is the log-off button, whose name differs between the dialogs.
  LogOnForm(service::Apartment& apartment, String name, String log_off);

  // Binds the name field of the derived dialog, once it exists.
  void BindNameField(ui::Control& field);
  void LoadLogOn(StringView caption_suffix);
  void EnableOK(const String& name) { keyOK.Enabled = !name.empty(); }

  virtual String NameText() const = 0;
  // What the dialog does between its loop and being unloaded.
  virtual void Leave() {}

  ui::KRXKey log_off_;

 private:
  std::vector<service::InputRow> InputRows() override;
  std::vector<ui::KRXKey*> Buttons() override { return {&keyOK, &keyCancel, &log_off_}; }
  bool Attempt(OnFirstUse<host::UserSession>& session);
  void RenewPassword(StringView message);
  void LogOff();

  ui::Control* name_field_ = nullptr;
};

}  // namespace krx::users
