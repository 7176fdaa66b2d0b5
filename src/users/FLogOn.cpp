#include "users/FLogOn.h"

#include "service/MKRXDialog.h"

namespace krx::users {

FLogOn::FLogOn(service::Apartment& apartment) : LogOnForm(apartment, u"FLogOn", u"keyLogOut") {
  BindNameField(txtName);
  txtName.Change = [this] { EnableOK(txtName.Text()); };
  txtName.GotFocus = [this] { service::SelectAllText(txtName); };
  LoadStep = [this] { LoadLogOn(u""); };
}

}  // namespace krx::users
