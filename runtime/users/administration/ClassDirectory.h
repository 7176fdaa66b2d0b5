#pragma once

#include "host/UserManager.h"
#include "runtime/users/UserManagement.h"

namespace krx::runtime {

// Reads the user classes of the rules, in the order in which the rules name them. Raises Error when
// the rules cannot be read.
class ClassDirectory : public host::UserClassAdministration {
 public:
  explicit ClassDirectory(UserManagement& management) : management_(management) {}

  // The class, or nothing when there is none of this name.
  std::optional<UserClass> Find(const String& class_name);

  // An unknown class has an empty text and level 0.
  host::UserClassInfo GetUserClassInfo(const String& class_name) override;
  host::UserClasses GetUserClasses() override;

 private:
  UserManagement& management_;
};

}  // namespace krx::runtime
