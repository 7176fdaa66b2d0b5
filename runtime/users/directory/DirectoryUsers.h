#pragma once

#include <chrono>
#include <mutex>
#include <optional>

#include "base/Password.h"
#include "runtime/users/Session.h"
#include "runtime/users/directory/DirectoryList.h"
#include "runtime/users/directory/OfflineUsers.h"
#include "runtime/users/rules/UserRules.h"

namespace krx::runtime {

// How an operation on a user of the directory ended.
struct DirectoryOutcome {
  std::int32_t Code = 0;
  String Name;                        // for the audit file; empty when no user has it
  String Outcome;                     // the same
  std::optional<DirectoryUser> User;  // who is to be logged on
};

// The users of the plant's directory service, for the user management of one process. Whatever
// asks a server waits as the rules say; see DirectoryService.
class DirectoryUsers {
 public:
  DirectoryUsers(DirectoryService& service, OfflineUsers& offline)
      : service_(service), offline_(offline), list_(service) {}

  // Judges a log-on, by a server or, where the rules allow it and no server answers, by what is
  // kept here. LogOnResult; raises DirectorySilence where nobody can judge, and Error for answers
  // that are about no user.
  DirectoryOutcome LogOn(const UserRules& rules, const std::optional<Password>& search_password,
                         const String& name, const Password& password);
  // ChangePasswordResult; raises the same, and nothing can be changed without a server.
  DirectoryOutcome Change(const UserRules& rules, const std::optional<Password>& search_password,
                          const String& name, const Password& changed, const Password& current);

  // All users, from a list that is fresh or the best there is.
  std::shared_ptr<const UsersByName> List(const UserRules& rules,
                                          const std::optional<Password>& search_password);
  // The user, by a fresh list, by a server, by an older list or by what is kept here; nothing when
  // there is none. Never fails for want of a server.
  std::optional<DirectoryUser> Find(const UserRules& rules,
                                    const std::optional<Password>& search_password,
                                    const String& name);
  // The same, but raises DirectorySilence when no server answers and no fresh list has him.
  std::optional<DirectoryUser> FindForSure(const UserRules& rules,
                                           const std::optional<Password>& search_password,
                                           const String& name);
  // Whether a user who is logged on may stay so: the user as he is now, or nothing when the
  // directory has none of his name any more, or has deactivated him. A server is asked when as
  // long has passed as lists count as fresh; while none answers, he stays.
  std::optional<DirectoryUser> Current(const UserRules& rules,
                                       const std::optional<Password>& search_password,
                                       const String& name);

 private:
  // Who was found to be let in, and until when nobody need ask again.
  struct Seen {
    DirectoryUser User;
    std::chrono::steady_clock::time_point Until;
  };

  void See(const UserRules& rules, const DirectoryUser& user);
  DirectoryOutcome LogOnOffline(const UserRules& rules, const String& name,
                                const Password& password, const DirectorySilence& silence);
  void Keep(const UserRules& rules, const String& name, const DirectoryLogOn& answer,
            const Password& password);

  DirectoryService& service_;
  OfflineUsers& offline_;
  DirectoryList list_;
  std::mutex guard_;
  std::optional<Seen> seen_;
};

}  // namespace krx::runtime
