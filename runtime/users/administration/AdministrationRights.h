#pragma once

#include "runtime/users/rules/UserRules.h"
#include "runtime/users/store/StoredUser.h"

namespace krx::runtime {

// Who may administer whom. Mode 0: every user those whose class is strictly below his own. Mode 1:
// administrators everybody. Mode 2: administrators everybody whose class is not above their own.
// Any other mode: nobody. A class that the rules no longer name is open to mode 1 alone.
class AdministrationRights {
 public:
  // `actor` is the user logged on; null when nobody is.
  AdministrationRights(const UserRules& rules, const StoredUser* actor)
      : rules_(rules), actor_(actor) {}

  // Whether he may create, change and remove users of this class and hand it out.
  bool MayAdminister(StringView class_name) const;
  // Whether he may administer any class at all; such a user may change his own record, too.
  bool MayAdministerAny() const;

 private:
  const UserRules& rules_;
  const StoredUser* actor_;
};

}  // namespace krx::runtime
