#pragma once

#include <array>
#include <span>

#include "users/UserForm.h"

namespace krx::users {

// Creates a user, or changes one whose name is given.
class FAddUser : public UserForm {
 public:
  explicit FAddUser(service::Apartment& apartment);

  std::array<ui::Label, 6> lblAddUser{{{*this, u"lblAddUser(0)"},
                                       {*this, u"lblAddUser(1)"},
                                       {*this, u"lblAddUser(2)"},
                                       {*this, u"lblAddUser(3)"},
                                       {*this, u"lblAddUser(4)"},
                                       {*this, u"lblAddUser(5)"}}};
  ui::TextBox txtName{*this, u"txtName"};
  ui::TextBox txtFullName{*this, u"txtFullName"};
  ui::PasswordBox txtPassword{*this, u"txtPassword"};
  ui::PasswordBox txtPassword2{*this, u"txtPassword2"};
  ui::KRXComboBox cboUserClass{*this, u"cboUserClass"};
  ui::TextBox txtComment{*this, u"txtComment"};
  ui::KRXKey keyOK{*this, u"keyOK"};
  ui::KRXKey keyCancel{*this, u"keyCancel"};

  // True when the user management has accepted the user. Where nobody is logged on, a message says
  // so and no user is asked for. Failing calls raise Error.
  bool AddUser();
  // The same for a user who exists; his name stays, and nobody changes his own class.
  bool ChangeUser(const String& user);

 private:
  enum class Mode { Add, Change };

  void Open(Mode mode, StringView caption);
  void BindFields();
  std::vector<service::InputRow> InputRows() override;
  std::vector<ui::KRXKey*> Buttons() override { return {&keyOK, &keyCancel}; }
  void LoadTexts();
  void ListClasses();
  void LeaveSecondPassword();
  void CheckEntries();
  void Save();
  // How the dialog answers a refusal: what it says, and where it leads the operator.
  struct Refusal {
    StringView Message;
    ui::Control& Focus;
  };
  void React(std::int32_t code, std::span<const Refusal> refusals);

  Mode mode_ = Mode::Add;
  bool result_ = false;
  String caption_;
  OnFirstUse<host::UserAdministration> administration_;
  OnFirstUse<host::UserClassAdministration> classes_;
};

}  // namespace krx::users
