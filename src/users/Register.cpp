#include "users/Register.h"

#include "users/FAddUser.h"
#include "users/FChangePassword.h"
#include "users/FLogOn.h"
#include "users/FLogOnCombo.h"
#include "users/FUser.h"
#include "users/FWhoAmI.h"

namespace krx::users {

void Register(service::Apartment& apartment) {
  using service::Apartment;
  apartment.Dialogs.LogOn = [](Apartment& a) { return FLogOn(a).LogOn(); };
  apartment.Dialogs.LogOnCombo = [](Apartment& a) { return FLogOnCombo(a).LogOn(); };
  apartment.Dialogs.WhoAmI = [](Apartment& a) { FWhoAmI(a).WhoAmI(); };
  apartment.Dialogs.ChangePassword = [](Apartment& a, const std::optional<String>& user) {
    return FChangePassword(a).ChangePassword(user);
  };
  apartment.Dialogs.AddUser = [](Apartment& a) { return FAddUser(a).AddUser(); };
  apartment.Dialogs.User = [](Apartment& a) { FUser(a).ShowUsers(); };
}

}  // namespace krx::users
