#pragma once

#include "host/UserManager.h"
#include "runtime/users/UserManagement.h"
#include "runtime/users/directory/DirectoryUsers.h"

namespace krx::runtime {

// The users of the plant: those of this machine, and behind them those of the directory service
// where the rules name one. A name that both have is this machine's.
class PlantUsers : public host::UserAdministration {
 public:
  PlantUsers(UserManagement& management, host::UserAdministration& local, DirectoryUsers& directory)
      : management_(management), local_(local), directory_(directory) {}

  // The server changes the password of a user of the directory. Without a server it is "call
  // failed".
  std::int32_t ChangeUserPassword(const String& user, const Password& new_password,
                                  const Password& current_password) override;

  // Users are created on this machine, but not beside one of the same name in the directory. What
  // the directory administers is not changed: "call failed", and the audit records say why.
  std::int32_t CreateUser(const host::UserRecord& record) override;
  std::int32_t ModifyUser(const host::UserRecord& record) override;
  std::int32_t RemoveUser(const String& user) override;
  std::int32_t SetUserActive(const String& user, std::int32_t active) override;

  host::UserClassOfUser GetUserClass(const String& user) override;
  host::UserInfo GetUserInfo(const String& user) override;
  std::vector<String> GetUserNames(const String& selection) override;
  // A user whom the directory lets in no more is logged off.
  host::CurrentUser GetCurrentUser() override;
  std::int32_t GetAdministrationMode() override { return local_.GetAdministrationMode(); }

 private:
  // The user of the directory; nothing when he is this machine's or nobody's.
  std::optional<DirectoryUser> OfDirectory(const String& user);
  template <class Change>
  std::int32_t Unless(const String& user, const String& action, Change&& change);
  void CheckCurrentUser();

  UserManagement& management_;
  host::UserAdministration& local_;
  DirectoryUsers& directory_;
};

// Logs users of the plant on to this process and off again.
class PlantSession : public host::UserSession {
 public:
  PlantSession(UserManagement& management, host::UserSession& local,
               host::UserAdministration& local_users, DirectoryUsers& directory)
      : management_(management), local_(local), local_users_(local_users), directory_(directory) {}

  // LogOnResult. Raises Error when nobody can judge the log-on, or when it cannot be recorded.
  std::int32_t LogOnUser(const String& user, const Password& password) override;
  std::int32_t LogOffUser() override { return local_.LogOffUser(); }

 private:
  UserManagement& management_;
  host::UserSession& local_;
  host::UserAdministration& local_users_;
  DirectoryUsers& directory_;
};

}  // namespace krx::runtime
