#pragma once

#include "host/UserManager.h"
#include "runtime/users/UserManagement.h"

namespace krx::runtime {

// Reads and changes users on behalf of the user logged on to this process. Changes need the rights
// of AdministrationRights; a change that the fixed codes have no own code for (no rights, nobody
// logged on, an unknown class in CreateUser, an argument out of range) is refused as "call failed",
// and the audit record says why. Nobody removes or deactivates himself or changes his own class,
// and the last active administrator stays one.
class UserDirectory : public host::UserAdministration {
 public:
  explicit UserDirectory(UserManagement& management) : management_(management) {}

  // ChangePasswordResult; see ChangePassword.
  std::int32_t ChangeUserPassword(const String& user, const Password& new_password,
                                  const Password& current_password) override;

  // CreateUserResult. The date is the day from which the password's age counts, the zero date is
  // today; the state is active, deactivated or, as the dialogs pass it, to be renewed.
  std::int32_t CreateUser(const host::UserRecord& record) override;
  // ModifyUserResult. Replaces everything but the name, the password included; ends a lock-out.
  std::int32_t ModifyUser(const host::UserRecord& record) override;
  // Numbered like ModifyUserResult.
  std::int32_t RemoveUser(const String& user) override;
  // Numbered like ModifyUserResult. Activating also ends a lock-out.
  std::int32_t SetUserActive(const String& user, std::int32_t active) override;

  // What is read raises Error when store or rules cannot be read. An unknown user has an empty
  // record.
  host::UserClassOfUser GetUserClass(const String& user) override;
  host::UserInfo GetUserInfo(const String& user) override;
  // The same, or nothing for an unknown user.
  std::optional<host::UserInfo> FindUserInfo(const String& user);
  // By name, upper and lower case alike; the selection is the name of a class, or empty for all.
  std::vector<String> GetUserNames(const String& selection) override;
  host::CurrentUser GetCurrentUser() override;
  std::int32_t GetAdministrationMode() override;

 private:
  UserManagement& management_;
};

}  // namespace krx::runtime
