#pragma once

#include "host/UserManager.h"
#include "runtime/users/logon/CredentialCheck.h"

namespace krx::runtime {

// Logs users on to this process and off again.
class LogOnService : public host::UserSession {
 public:
  explicit LogOnService(UserManagement& management) : management_(management) {}

  // LogOnResult. A refusal leaves who was logged on; a success takes his place. Raises Error when
  // store or rules cannot be read, when the attempt cannot be stored and when it cannot be
  // recorded: nobody is logged on unseen. A disk that is full is no error where the rules say so.
  std::int32_t LogOnUser(const String& user, const Password& password) override;
  // 0 when a user was logged off, 1 when nobody was logged on. Raises Error when it cannot be
  // recorded; the user is logged off all the same.
  std::int32_t LogOffUser() override;

 private:
  std::int32_t JudgeAndRecord(const UserRules& rules, const CheckedUser& checked,
                              const Password& password);
  void RecordReplaced(UserStore::Writing& writing, const String& name);
  std::int32_t Settle(UserStore::Writing& writing, const UserRules& rules,
                      const CheckedUser& checked, std::optional<PasswordHash> rehashed);

  UserManagement& management_;
};

}  // namespace krx::runtime
