#include "runtime/users/administration/AdministrationRights.h"

#include <algorithm>

namespace krx::runtime {

bool AdministrationRights::MayAdminister(StringView class_name) const {
  if (actor_ == nullptr) return false;
  const UserClass* const own = rules_.FindClass(actor_->ClassName);
  if (own == nullptr) return false;
  const UserClass* const other = rules_.FindClass(class_name);
  const bool is_administrator = own->Level >= rules_.AdministratorLevel;
  switch (rules_.AdministrationMode) {
    case 0:
      return other != nullptr && other->Level < own->Level;
    case 1:
      return is_administrator;
    case 2:
      return is_administrator && other != nullptr && other->Level <= own->Level;
    default:
      return false;
  }
}

bool AdministrationRights::MayAdministerAny() const {
  return std::any_of(rules_.Classes.begin(), rules_.Classes.end(),
                     [this](const UserClass& one) { return MayAdminister(one.Name); });
}

}  // namespace krx::runtime
