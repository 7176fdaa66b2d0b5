#include "users/FLogOn.h"

namespace krx::users {

FLogOn::FLogOn(service::Apartment& apartment) : LogOnForm(apartment, u"FLogOn", u"keyLogOut") {
  BindNameField(txtName);
  txtName.Change = [this] { EnableOK(txtName.Text()); };
  SelectAllOnFocus(txtName);
  LoadStep = [this] { LoadLogOn(u""); };
}

}  // namespace krx::users
