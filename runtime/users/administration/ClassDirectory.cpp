#include "runtime/users/administration/ClassDirectory.h"

namespace krx::runtime {

std::optional<UserClass> ClassDirectory::Find(const String& class_name) {
  const UserRules rules = management_.Rules();
  const UserClass* const found = rules.FindClass(class_name);
  if (found == nullptr) return std::nullopt;
  return *found;
}

host::UserClassInfo ClassDirectory::GetUserClassInfo(const String& class_name) {
  const std::optional<UserClass> found = Find(class_name);
  if (!found) return {};
  return {found->DisplayText, found->Level};
}

host::UserClasses ClassDirectory::GetUserClasses() {
  host::UserClasses classes;
  for (const UserClass& one : management_.Rules().Classes) {
    classes.Names.push_back(one.Name);
    classes.Levels.push_back(one.Level);
  }
  return classes;
}

}  // namespace krx::runtime
