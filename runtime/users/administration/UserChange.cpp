#include "runtime/users/administration/UserChange.h"

#include <optional>
#include <utility>

#include "runtime/users/Refusal.h"
#include "runtime/users/administration/AdministrationRights.h"
#include "runtime/users/logon/LogOnGuard.h"
#include "runtime/users/logon/PasswordAge.h"
#include "runtime/users/passwords/PasswordRules.h"
#include "runtime/users/rules/GuessingDelay.h"
#include "runtime/users/rules/Names.h"

namespace krx::runtime {
namespace {

constexpr std::uint32_t kNobody = 0;  // no user has this id
constexpr FailureCodes kCreateCodes{host::CreateUserUnableToSave, host::CreateUserCallFailed};
constexpr FailureCodes kModifyCodes{host::ModifyUserUnableToSave, host::ModifyUserCallFailed};

// The store during one change, and the user who makes it. Without Commit nothing has happened.
class Editing {
 public:
  Editing(UserManagement& management, const UserRules& rules, std::int32_t code_of_refusal)
      : management_(management),
        rules_(rules),
        refused_(code_of_refusal),
        writing_(management.Store) {
    std::optional<StoredUser> actor;
    if (writing_.HasStore()) actor = management.Actor(Users());
    if (!actor) throw Refusal{refused_, u"nobody is logged on"};
    actor_ = std::move(*actor);
    had_administrator_ = Users().HasOtherAdministrator(rules_, kNobody, kForever);
  }

  const StoredUser& Actor() const { return actor_; }
  bool IsActor(const StoredUser& user) const { return user.Id == actor_.Id; }
  UserTable& Users() { return writing_.Users(); }

  StoredUser Target(const String& name) {
    std::optional<StoredUser> found = Users().Find(name);
    if (!found) throw Refusal{host::ModifyUserUnknownUser, u"unknown user"};
    return std::move(*found);
  }

  void Require(bool allowed, const String& reason) const {
    if (!allowed) throw Refusal{refused_, reason};
  }

  void RequireRight(StringView class_name) const {
    Require(AdministrationRights(rules_, &actor_).MayAdminister(class_name), u"no right to do so");
  }

  // Who finds a panel that somebody has left must not take the account over with a password of his
  // own choice, and the call brings no current one.
  void RequireRightOverSelf() const {
    Require(AdministrationRights(rules_, &actor_).MayAdministerAny(), u"no right to do so");
    const std::optional<LoggedOnUser> current = management_.Session.Current();
    const std::int64_t proved_on = current ? current->PasswordProvedOn : 0;
    const std::int64_t age = management_.System.Time.Now() - proved_on;
    Require(age >= 0 && age < std::int64_t{60} * rules_.OwnRecordMinutes,
            u"his password was not asked for lately; he has to log on again");
  }

  void Commit(const String& action, const String& subject, const String& outcome) {
    Require(!had_administrator_ || Users().HasOtherAdministrator(rules_, kNobody, kForever),
            u"no active administrator would be left");
    writing_.Record({actor_.Name, action, subject, outcome});
    writing_.Commit();
  }

 private:
  UserManagement& management_;
  const UserRules& rules_;
  std::int32_t refused_;
  UserStore::Writing writing_;
  StoredUser actor_;
  bool had_administrator_ = false;
};

// The name for the audit record: never more than a user name can be.
String Loggable(const String& name) {
  return IsValidUserName(name) ? name : String();
}

AuditEntry EntryOf(UserManagement& management, const String& action, const String& subject) {
  const std::optional<LoggedOnUser> actor = management.Session.Current();
  return {actor ? actor->Name : String(), action, Loggable(subject), u""};
}

bool IsStorable(const host::UserRecord& record) {
  return IsValidFullName(record.FullName) && IsValidDescription(record.Comment) &&
         IsValidDate(record.Date) &&
         (record.State == host::UserActive || record.State == host::UserDeactivated ||
          record.State == host::UserActiveChangePassword);
}

// Puts everything but name and password into the user.
void Fill(StoredUser& user, const host::UserRecord& record, std::int64_t now) {
  user.FullName = record.FullName;
  user.Comment = record.Comment;
  user.ClassName = record.ClassName;
  user.Deactivated = record.State == host::UserDeactivated;
  user.MustRenew = record.State != host::UserActive;
  user.PasswordChangedOn = record.Date == 0 ? now : FromDate(record.Date);
  user.RemainingLogOns = kUnlimitedLogOns;
  LogOnGuard::Forgive(user);
}

void JudgeCreation(Editing& editing, const UserRules& rules, const host::UserRecord& record) {
  editing.Require(rules.FindClass(record.ClassName) != nullptr, u"unknown class");
  editing.RequireRight(record.ClassName);
  editing.Require(IsValidUserName(record.Name), ReasonAgainstUserName(record.Name));
  editing.Require(IsStorable(record), u"an argument is out of range");
  if (editing.Users().IsTaken(record.Name))
    throw Refusal{host::CreateUserExists, u"a user of this name exists"};
}

StoredUser JudgeModification(Editing& editing, const UserRules& rules,
                             const host::UserRecord& record) {
  StoredUser user = editing.Target(record.Name);
  if (rules.FindClass(record.ClassName) == nullptr)
    throw Refusal{host::ModifyUserUnknownClass, u"unknown class"};
  if (editing.IsActor(user)) {
    editing.RequireRightOverSelf();
    editing.Require(record.ClassName == user.ClassName, u"nobody changes his own class");
    editing.Require(record.State != host::UserDeactivated, u"nobody deactivates himself");
  } else {
    editing.RequireRight(user.ClassName);
    editing.RequireRight(record.ClassName);
  }
  editing.Require(IsStorable(record), u"an argument is out of range");
  return user;
}

// The hash of a password that the rules accept. `before`: the user's stored passwords.
PasswordHash JudgeAndHash(UserManagement& management, const UserRules& rules,
                          const host::UserRecord& record, const std::vector<PasswordHash>& before,
                          std::int32_t invalid_length, std::int32_t not_accepted) {
  const Password password = management.System.Crypto.Normalized(record.Secret);
  const PasswordVerdict verdict = JudgePassword(rules, management.Refused(), record.Name, password);
  if (verdict == PasswordVerdict::InvalidLength)
    throw Refusal{invalid_length, u"length of the password"};
  if (verdict == PasswordVerdict::NotAccepted)
    throw Refusal{not_accepted, u"password is too easily guessed"};
  PasswordHasher hasher = management.Hasher(rules);
  if (IsReused(hasher, rules, before, password))
    throw Refusal{not_accepted, u"password was used lately"};
  return hasher.Hash(password);
}

}  // namespace

std::int32_t CreateUser(UserManagement& management, const host::UserRecord& record) {
  AuditEntry entry = EntryOf(management, u"create user", record.Name);
  return Recorded(management, kCreateCodes, entry, [&]() -> std::int32_t {
    const UserRules rules = management.Rules();
    {
      Editing editing(management, rules, kCreateCodes.CallFailed);
      JudgeCreation(editing, rules, record);
    }
    PasswordHash hash = JudgeAndHash(management, rules, record, {}, host::CreateUserInvalidLength,
                                     host::CreateUserNotAccepted);
    Editing editing(management, rules, kCreateCodes.CallFailed);
    JudgeCreation(editing, rules, record);
    StoredUser user;
    user.Name = record.Name;
    Fill(user, record, management.System.Time.Now());
    user.Passwords.push_back(std::move(hash));
    editing.Users().Add(user);
    editing.Commit(entry.Action, record.Name, u"created in class " + record.ClassName);
    return host::CreateUserSucceeded;
  });
}

std::int32_t ModifyUser(UserManagement& management, const host::UserRecord& record) {
  AuditEntry entry = EntryOf(management, u"modify user", record.Name);
  return Recorded(management, kModifyCodes, entry, [&]() -> std::int32_t {
    const UserRules rules = management.Rules();
    std::vector<PasswordHash> before;
    {
      Editing editing(management, rules, kModifyCodes.CallFailed);
      before = JudgeModification(editing, rules, record).Passwords;
    }
    PasswordHash hash = JudgeAndHash(management, rules, record, before,
                                     host::ModifyUserInvalidLength, host::ModifyUserNotAccepted);
    Editing editing(management, rules, kModifyCodes.CallFailed);
    StoredUser user = JudgeModification(editing, rules, record);
    Fill(user, record, management.System.Time.Now());
    user.Passwords = WithNewPassword(rules, user.Passwords, std::move(hash));
    management.Hasher(rules).ApplyKey(user.Passwords);
    editing.Users().Update(user, true);
    editing.Commit(entry.Action, record.Name, u"modified, class " + record.ClassName);
    if (editing.IsActor(user))
      management.Session.Renew(user.Id, user.PasswordChangedOn, user.MustRenew);
    return host::ModifyUserSucceeded;
  });
}

std::int32_t RemoveUser(UserManagement& management, const String& user) {
  AuditEntry entry = EntryOf(management, u"remove user", user);
  return Recorded(management, kModifyCodes, entry, [&]() -> std::int32_t {
    const UserRules rules = management.Rules();
    Editing editing(management, rules, kModifyCodes.CallFailed);
    const StoredUser target = editing.Target(user);
    editing.Require(!editing.IsActor(target), u"nobody removes himself");
    editing.RequireRight(target.ClassName);
    editing.Users().Remove(target.Id);
    editing.Commit(entry.Action, user, u"removed");
    return host::ModifyUserSucceeded;
  });
}

std::int32_t SetUserActive(UserManagement& management, const String& user, std::int32_t active) {
  const bool activates = active == 1;
  AuditEntry entry = EntryOf(management, activates ? u"activate user" : u"deactivate user", user);
  return Recorded(management, kModifyCodes, entry, [&]() -> std::int32_t {
    const UserRules rules = management.Rules();
    Editing editing(management, rules, kModifyCodes.CallFailed);
    StoredUser target = editing.Target(user);
    editing.Require(activates || active == 0, u"an argument is out of range");
    editing.Require(activates || !editing.IsActor(target), u"nobody deactivates himself");
    editing.RequireRight(target.ClassName);
    target.Deactivated = !activates;
    if (activates) LogOnGuard::Forgive(target);
    editing.Users().Update(target, false);
    editing.Commit(entry.Action, user, activates ? u"activated" : u"deactivated");
    return host::ModifyUserSucceeded;
  });
}

}  // namespace krx::runtime
