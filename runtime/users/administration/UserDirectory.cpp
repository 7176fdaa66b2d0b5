#include "runtime/users/administration/UserDirectory.h"

#include "runtime/users/administration/UserChange.h"
#include "runtime/users/logon/LogOnGuard.h"
#include "runtime/users/logon/PasswordAge.h"
#include "runtime/users/logon/PasswordChange.h"

namespace krx::runtime {
namespace {

std::int32_t StateOf(const UserRules& rules, UserSource& users, const StoredUser& user,
                     std::int64_t now) {
  if (user.Deactivated) return host::UserDeactivated;
  if (LogOnGuard(rules, users, now).IsLockedOut(user)) return host::UserLocked;
  return user.MustRenew ? host::UserActiveChangePassword : host::UserActive;
}

}  // namespace

std::int32_t UserDirectory::ChangeUserPassword(const String& user, const Password& new_password,
                                               const Password& current_password) {
  return ChangePassword(management_, user, new_password, current_password);
}

std::int32_t UserDirectory::CreateUser(const host::UserRecord& record) {
  return runtime::CreateUser(management_, record);
}

std::int32_t UserDirectory::ModifyUser(const host::UserRecord& record) {
  return runtime::ModifyUser(management_, record);
}

std::int32_t UserDirectory::RemoveUser(const String& user) {
  return runtime::RemoveUser(management_, user);
}

std::int32_t UserDirectory::SetUserActive(const String& user, std::int32_t active) {
  return runtime::SetUserActive(management_, user, active);
}

host::UserClassOfUser UserDirectory::GetUserClass(const String& user) {
  const std::optional<StoredUser> found = UserStore::Reading(management_.Store).Find(user);
  if (!found) return {};
  return {found->ClassName, true};
}

host::UserInfo UserDirectory::GetUserInfo(const String& user) {
  return FindUserInfo(user).value_or(host::UserInfo());
}

std::optional<host::UserInfo> UserDirectory::FindUserInfo(const String& user) {
  const UserRules rules = management_.Rules();
  UserStore::Reading users(management_.Store);
  const std::optional<StoredUser> found = users.Find(user);
  if (!found) return std::nullopt;
  const std::int64_t now = management_.System.Time.Now();
  const PasswordAge age(rules, *found, now);
  host::UserInfo info;
  info.FullName = found->FullName;
  info.Comment = found->Comment;
  info.State = StateOf(rules, users, *found, now);
  info.RemainingLogOns = age.LogOnsLeft();
  info.PasswordChangedOn = ToDay(found->PasswordChangedOn);
  info.RenewPassword = found->MustRenew ? 0 : age.DaysLeft();
  return info;
}

std::vector<String> UserDirectory::GetUserNames(const String& selection) {
  UserStore::Reading users(management_.Store);
  std::vector<String> names;
  for (const StoredUser& user : users.List()) {
    if (selection.empty() || user.ClassName == selection) names.push_back(user.Name);
  }
  return names;
}

host::CurrentUser UserDirectory::GetCurrentUser() {
  std::optional<StoredUser> actor;
  {
    UserStore::Reading users(management_.Store);
    actor = management_.Actor(users);
  }
  if (actor) return {actor->Name, actor->ClassName, true};
  management_.EndLostSession();
  return {};
}

std::int32_t UserDirectory::GetAdministrationMode() {
  return management_.Rules().AdministrationMode;
}

}  // namespace krx::runtime
