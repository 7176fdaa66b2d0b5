#include "runtime/users/rules/UserRules.h"

#include <algorithm>

namespace krx::runtime {

const UserClass* UserRules::FindClass(StringView name) const {
  const auto found = std::find_if(Classes.begin(), Classes.end(),
                                  [name](const UserClass& one) { return one.Name == name; });
  return found == Classes.end() ? nullptr : &*found;
}

bool UserRules::IsAdministratorClass(StringView name) const {
  const UserClass* const found = FindClass(name);
  return found != nullptr && found->Level >= AdministratorLevel;
}

}  // namespace krx::runtime
