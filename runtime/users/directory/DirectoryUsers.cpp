#include "runtime/users/directory/DirectoryUsers.h"

#include <utility>

#include "host/UserManager.h"
#include "runtime/users/rules/Names.h"

namespace krx::runtime {
namespace {

constexpr std::chrono::seconds kAskedAgain{30};  // after no server has answered

DirectoryService::Access AccessOf(const UserRules& rules,
                                  const std::optional<Password>& search_password) {
  auto access = std::make_shared<DirectoryAccess>();
  access->Rules = rules.Directory;
  if (search_password) access->SearchPassword.emplace(search_password->View());
  return access;
}

// A copy that work on another thread shares, and that is wiped when the last one has done.
std::shared_ptr<const Password> Shared(const Password& password) {
  return std::make_shared<const Password>(password.View());
}

std::int32_t LogOnCodeOf(DirectoryVerdict verdict) {
  switch (verdict) {
    case DirectoryVerdict::Right:
      return host::LogOnSucceeded;
    case DirectoryVerdict::UnknownUser:
      return host::LogOnUnknownUser;
    case DirectoryVerdict::WrongPassword:
      return host::LogOnInvalidPassword;
    case DirectoryVerdict::Deactivated:
      return host::LogOnUserDeactivated;
    case DirectoryVerdict::LockedOut:
      return host::LogOnTooManyFailedLogons;
    case DirectoryVerdict::Expired:
      return host::LogOnPasswordExpired;
    case DirectoryVerdict::MustRenew:
      break;
  }
  return host::LogOnRenewPassword;
}

}  // namespace

DirectoryOutcome DirectoryUsers::LogOn(const UserRules& rules,
                                       const std::optional<Password>& search_password,
                                       const String& name, const Password& password) {
  if (!IsValidUserName(name)) return {host::LogOnUnknownUser, {}, u"refused: unknown user", {}};
  std::optional<DirectoryLogOn> answer;
  try {
    answer = service_.Ask<DirectoryLogOn>(AccessOf(rules, search_password),
                                          [name, secret = Shared(password)](DirectoryTalk& talk) {
                                            return talk.LogOn(name, *secret);
                                          });
  } catch (const DirectorySilence& silence) {
    if (rules.Directory.OfflineDays == 0) throw;
    return LogOnOffline(rules, name, password, silence);
  }
  Keep(rules, name, *answer, password);
  DirectoryOutcome outcome{LogOnCodeOf(answer->Verdict), answer->User.Name, {}, {}};
  if (answer->Verdict != DirectoryVerdict::Right) {
    outcome.Outcome = u"refused by the directory service: " + answer->Reason;
    return outcome;
  }
  outcome.Outcome = u"logged on by the directory service, class " + answer->User.ClassName;
  See(rules, answer->User);
  outcome.User = std::move(answer->User);
  return outcome;
}

void DirectoryUsers::Keep(const UserRules& rules, const String& name, const DirectoryLogOn& answer,
                          const Password& password) {
  if (rules.Directory.OfflineDays == 0) return;
  if (answer.Verdict == DirectoryVerdict::Right)
    offline_.Remember(rules, answer.User, password);
  else if (answer.Verdict != DirectoryVerdict::WrongPassword)
    offline_.Forget(answer.User.Name.empty() ? name : answer.User.Name);
}

DirectoryOutcome DirectoryUsers::LogOnOffline(const UserRules& rules, const String& name,
                                              const Password& password,
                                              const DirectorySilence& silence) {
  OfflineUsers::Answer answer = offline_.Check(rules, name, password);
  const String because = u" (" + silence.Description() + u")";
  switch (answer.Outcome) {
    case OfflineUsers::Verdict::Unknown:
      throw DirectorySilence(silence.Description());
    case OfflineUsers::Verdict::LockedOut:
      return {host::LogOnTooManyFailedLogons,
              answer.User.Name,
              u"refused offline: user is locked out" + because,
              {}};
    case OfflineUsers::Verdict::WrongPassword:
      return {host::LogOnInvalidPassword,
              answer.User.Name,
              u"refused offline: wrong password" + because,
              {}};
    case OfflineUsers::Verdict::Right:
      break;
  }
  See(rules, answer.User);
  return {host::LogOnSucceeded, answer.User.Name,
          u"logged on offline, class " + answer.User.ClassName + because, std::move(answer.User)};
}

DirectoryOutcome DirectoryUsers::Change(const UserRules& rules,
                                        const std::optional<Password>& search_password,
                                        const String& name, const Password& changed,
                                        const Password& current) {
  if (!IsValidUserName(name))
    return {host::ChangePasswordUnknownUser, {}, u"refused: unknown user", {}};
  const DirectoryChange change = service_.Ask<DirectoryChange>(
      AccessOf(rules, search_password),
      [name, to = Shared(changed), from = Shared(current)](DirectoryTalk& talk) {
        return talk.Change(name, *to, *from);
      });
  const bool done = change.Code == host::ChangePasswordSucceeded;
  // The old password is no good any more; the next log-on brings what is kept of the new one.
  if (done && rules.Directory.OfflineDays != 0) offline_.Forget(change.Name);
  return {change.Code,
          change.Name,
          (done ? String() : u"refused: ") + change.Reason + u" at the directory service",
          {}};
}

void DirectoryUsers::See(const UserRules& rules, const DirectoryUser& user) {
  const std::lock_guard lock(guard_);
  seen_ = {user,
           std::chrono::steady_clock::now() + std::chrono::minutes(rules.Directory.ListMinutes)};
}

std::optional<DirectoryUser> DirectoryUsers::Current(const UserRules& rules,
                                                     const std::optional<Password>& search_password,
                                                     const String& name) {
  const auto now = std::chrono::steady_clock::now();
  std::optional<DirectoryUser> known;
  {
    const std::lock_guard lock(guard_);
    const bool same = seen_ && seen_->User.Name == name;
    if (same) known = seen_->User;
    if (same && (now < seen_->Until || !rules.Directory.CanSearch())) return known;
  }
  try {
    std::optional<DirectoryUser> user = FindForSure(rules, search_password, name);
    if (!user || user->State == host::UserDeactivated) return std::nullopt;
    See(rules, *user);
    return user;
  } catch (const DirectorySilence&) {
    const std::lock_guard lock(guard_);
    if (seen_) seen_->Until = now + kAskedAgain;
    return known;
  }
}

std::shared_ptr<const UsersByName> DirectoryUsers::List(
    const UserRules& rules, const std::optional<Password>& search_password) {
  return list_.Read(AccessOf(rules, search_password));
}

std::optional<DirectoryUser> DirectoryUsers::FindForSure(
    const UserRules& rules, const std::optional<Password>& search_password, const String& name) {
  if (!IsValidUserName(name) || !rules.Directory.CanSearch()) return std::nullopt;
  if (!list_.IsFresh(rules.Directory) && list_.Known()->contains(name))
    list_.AwaitWhole(AccessOf(rules, search_password), name);
  if (list_.IsFresh(rules.Directory)) {
    const std::shared_ptr<const UsersByName> list = list_.Known();
    if (const auto found = list->find(name); found != list->end()) return found->second;
  }
  return service_.Ask<std::optional<DirectoryUser>>(
      AccessOf(rules, search_password), [name](DirectoryTalk& talk) { return talk.Find(name); });
}

std::optional<DirectoryUser> DirectoryUsers::Find(const UserRules& rules,
                                                  const std::optional<Password>& search_password,
                                                  const String& name) {
  try {
    // Who shows many users is not to wait for each of them.
    if (!service_.AreAllSilent(rules.Directory)) return FindForSure(rules, search_password, name);
  } catch (const DirectorySilence&) {
  }
  const std::shared_ptr<const UsersByName> list = list_.Known();
  if (const auto found = list->find(name); found != list->end()) return found->second;
  return rules.Directory.OfflineDays > 0 ? offline_.Find(rules, name) : std::nullopt;
}

}  // namespace krx::runtime
