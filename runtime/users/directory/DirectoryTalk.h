#pragma once

#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "runtime/users/directory/DirectoryUser.h"
#include "runtime/users/directory/Judgement.h"

namespace krx::runtime {

struct DirectoryLogOn {
  DirectoryVerdict Verdict = DirectoryVerdict::UnknownUser;
  DirectoryUser User;  // empty when unknown
  String Reason;       // for the audit file
};

struct DirectoryChange {
  std::int32_t Code = 0;  // ChangePasswordResult
  String Name;            // empty when unknown
  String Reason;
};

// What is said on one connection to look users up, log them on and change their passwords. Raises
// DirectorySilence when no answer comes and Error for answers that are about no user.
class DirectoryTalk {
 public:
  // `search_password` is that of the entry that searches; null where none does.
  DirectoryTalk(DirectoryConnection& connection, const DirectoryRules& rules,
                const Password* search_password)
      : connection_(connection), rules_(rules), search_password_(search_password) {}

  // The user with his class; nothing when the directory has none of this name, or when he is in
  // no group that the rules map to a class.
  std::optional<DirectoryUser> Find(const String& name);
  // All users that have a class.
  std::vector<DirectoryUser> All();
  // Their names and classes alone, from the groups: quickly, where the entries are named by the
  // name of the user. Nothing where they are not.
  std::optional<std::vector<DirectoryUser>> Names();
  DirectoryLogOn LogOn(const String& name, const Password& password);
  DirectoryChange Change(const String& name, const Password& changed, const Password& current);

 private:
  // The entry of this name, with no class; nothing when there is none.
  std::optional<DirectoryUser> Entry(const String& name);
  // Who searches, logs on to the connection.
  void BeSearcher();
  // The first class of the rules whose group the user is in; empty when there is none.
  String ClassOf(const DirectoryUser& user);
  // Hands out each value of each group's members, and the number of the group in the rules.
  using TakeMember = std::function<void(const String& value, std::size_t group)>;
  void ReadMembers(const TakeMember& take);
  void ReadMembers(std::size_t group, const TakeMember& take);
  DirectoryVerdict BindAs(const String& name, const DirectoryUser& user, const Password& password);
  DirectoryLogOn LogOnByName(const String& name, const Password& password);
  std::int32_t SendChange(const DirectoryUser& user, DirectoryVerdict verdict,
                          const Password& changed, const Password& current, String& reason);

  DirectoryConnection& connection_;
  const DirectoryRules& rules_;
  const Password* search_password_;
};

}  // namespace krx::runtime
