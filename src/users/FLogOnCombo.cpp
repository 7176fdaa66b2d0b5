#include "users/FLogOnCombo.h"

#include "service/Skip.h"

namespace krx::users {

FLogOnCombo::FLogOnCombo(service::Apartment& apartment)
    : LogOnForm(apartment, u"FLogOnCombo", u"keyLogOff"),
      administration_(apartment.Runtime, &host::Runtime::CreateUserAdministration) {
  BindNameField(cboName);
  cboName.Change = [this] { EnableOK(cboName.Text()); };
  cboName.SelectionChanged = [this] { EnableOK(cboName.Text()); };
  LoadStep = [this] {
    service::Skip([this] { ListUsers(); });
    LoadLogOn(u" ");  // the blank at the end of this dialog's title is meant
  };
}

void FLogOnCombo::ListUsers() {
  for (const String& name : administration_->GetUserNames(String())) {
    cboName.AddItem(name, ui::KRXComboBox::kAtEnd);
  }
}

}  // namespace krx::users
