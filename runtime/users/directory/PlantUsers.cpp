#include "runtime/users/directory/PlantUsers.h"

#include <algorithm>
#include <iterator>

#include "runtime/core/LineReader.h"
#include "runtime/users/Refusal.h"
#include "runtime/users/rules/Names.h"

namespace krx::runtime {
namespace {

constexpr FailureCodes kChangeCodes{host::ChangePasswordUnableToSave,
                                    host::ChangePasswordCallFailed};
constexpr FailureCodes kCreationCodes{host::CreateUserUnableToSave, host::CreateUserCallFailed};
constexpr FailureCodes kModificationCodes{host::ModifyUserUnableToSave, host::ModifyUserCallFailed};

// The password of who searches: the first line of a file of its own, whose rights can be its own.
std::optional<Password> SearchPasswordOf(UserManagement& management, const UserRules& rules) {
  if (rules.Directory.SearchAs != SearchIdentity::Entry) return std::nullopt;
  const std::filesystem::path file = management.Store.Folder() / "directory-password.txt";
  std::optional<std::string> content = management.System.FileSystem.Read(file);
  if (!content) return std::nullopt;
  std::string& bytes = *content;
  LineReader lines(file.u16string(), bytes, kMalformedRules);
  std::optional<Password> password;
  if (lines.Next()) {
    String text = lines.Text(lines.Line());
    password.emplace(text);
    Wipe(text.data(), text.size() * sizeof text[0]);
  }
  Wipe(bytes.data(), bytes.size());
  return password;
}

// The rules where they name a directory. Malformed ones name none: whoever works without a
// directory says what is wrong with them.
std::optional<UserRules> RulesInUse(UserManagement& management) {
  try {
    UserRules rules = management.Rules();
    if (rules.Directory.InUse()) return rules;
  } catch (const Error&) {
  }
  return std::nullopt;
}

String ActorOf(const UserManagement& management) {
  const std::optional<LoggedOnUser> actor = management.Session.Current();
  return actor ? actor->Name : String();
}

}  // namespace

std::optional<DirectoryUser> PlantUsers::OfDirectory(const String& user) {
  if (local_.GetUserClass(user).Found) return std::nullopt;
  const std::optional<UserRules> rules = RulesInUse(management_);
  if (!rules) return std::nullopt;
  return directory_.Find(*rules, SearchPasswordOf(management_, *rules), user);
}

std::int32_t PlantUsers::ChangeUserPassword(const String& user, const Password& new_password,
                                            const Password& current_password) {
  const std::optional<UserRules> rules = RulesInUse(management_);
  if (!rules || local_.GetUserClass(user).Found)
    return local_.ChangeUserPassword(user, new_password, current_password);
  AuditEntry entry{u"", u"change password", u"", u""};
  return Recorded(management_, kChangeCodes, entry, [&] {
    const DirectoryOutcome outcome = directory_.Change(
        *rules, SearchPasswordOf(management_, *rules), user, new_password, current_password);
    management_.Record({outcome.Name, entry.Action, u"", outcome.Outcome});
    return outcome.Code;
  });
}

template <class Change>
std::int32_t PlantUsers::Unless(const String& user, const String& action, Change&& change) {
  CheckCurrentUser();
  const std::optional<DirectoryUser> found = OfDirectory(user);
  if (!found) return change();
  AuditEntry entry{ActorOf(management_), action, found->Name, u""};
  return Recorded(management_, kModificationCodes, entry, []() -> std::int32_t {
    throw Refusal{kModificationCodes.CallFailed, u"the directory service administers this user"};
  });
}

std::int32_t PlantUsers::CreateUser(const host::UserRecord& record) {
  CheckCurrentUser();
  const bool is_local = local_.GetUserClass(record.Name).Found;
  const std::optional<UserRules> rules = is_local ? std::nullopt : RulesInUse(management_);
  if (!rules) return local_.CreateUser(record);
  AuditEntry entry{ActorOf(management_), u"create user",
                   IsValidUserName(record.Name) ? record.Name : String(), u""};
  return Recorded(management_, kCreationCodes, entry, [&] {
    if (directory_.FindForSure(*rules, SearchPasswordOf(management_, *rules), record.Name))
      throw Refusal{host::CreateUserExists, u"the directory service has a user of this name"};
    return local_.CreateUser(record);
  });
}

std::int32_t PlantUsers::ModifyUser(const host::UserRecord& record) {
  return Unless(record.Name, u"modify user", [&] { return local_.ModifyUser(record); });
}

std::int32_t PlantUsers::RemoveUser(const String& user) {
  return Unless(user, u"remove user", [&] { return local_.RemoveUser(user); });
}

std::int32_t PlantUsers::SetUserActive(const String& user, std::int32_t active) {
  return Unless(user, active == 1 ? u"activate user" : u"deactivate user",
                [&] { return local_.SetUserActive(user, active); });
}

host::UserClassOfUser PlantUsers::GetUserClass(const String& user) {
  host::UserClassOfUser found = local_.GetUserClass(user);
  if (found.Found) return found;
  const std::optional<DirectoryUser> of_directory = OfDirectory(user);
  if (!of_directory) return {};
  return {of_directory->ClassName, true};
}

host::UserInfo PlantUsers::GetUserInfo(const String& user) {
  const std::optional<DirectoryUser> found = OfDirectory(user);
  if (!found) return local_.GetUserInfo(user);
  host::UserInfo info;
  info.FullName = found->FullName;
  info.Comment = found->Comment;
  info.State = found->State;
  info.RemainingLogOns = -1;
  info.PasswordChangedOn = found->PasswordChangedOn;
  info.RenewPassword = found->State == host::UserActiveChangePassword ? 0 : -1;
  return info;
}

std::vector<String> PlantUsers::GetUserNames(const String& selection) {
  std::vector<String> local = local_.GetUserNames(selection);
  const std::optional<UserRules> rules = RulesInUse(management_);
  if (!rules) return local;
  const auto list = directory_.List(*rules, SearchPasswordOf(management_, *rules));
  std::vector<String> others;
  for (const auto& [name, user] : *list) {
    if (selection.empty() || user.ClassName == selection) others.push_back(name);
  }
  std::vector<String> names;
  names.reserve(local.size() + others.size());
  std::set_union(local.begin(), local.end(), others.begin(), others.end(),
                 std::back_inserter(names), PrecedesInList);
  return names;
}

void PlantUsers::CheckCurrentUser() {
  const std::optional<LoggedOnUser> current = management_.Session.Current();
  if (!current || !current->IsOfDirectory()) return;
  const UserRules rules = management_.Rules();
  std::optional<DirectoryUser> user;
  if (rules.Directory.InUse())
    user = directory_.Current(rules, SearchPasswordOf(management_, rules), current->Name);
  if (user && user->ClassName == current->ClassName) return;
  if (user) return management_.Session.Update({0, current->Name, user->ClassName});
  management_.Session.End();
  management_.RecordFailure(
      {current->Name, u"log-off", u"", u"the directory service lets this user in no more"});
}

host::CurrentUser PlantUsers::GetCurrentUser() {
  CheckCurrentUser();
  const std::optional<LoggedOnUser> current = management_.Session.Current();
  if (!current || !current->IsOfDirectory()) return local_.GetCurrentUser();
  return {current->Name, current->ClassName, true};
}

std::int32_t PlantSession::LogOnUser(const String& user, const Password& password) {
  // Where there is no directory, nobody is looked up beforehand: the time would tell who is known.
  const std::optional<UserRules> rules = RulesInUse(management_);
  if (!rules || local_users_.GetUserClass(user).Found) return local_.LogOnUser(user, password);
  DirectoryOutcome outcome;
  try {
    outcome = directory_.LogOn(*rules, SearchPasswordOf(management_, *rules), user, password);
  } catch (const Error& failure) {
    management_.RecordFailure({u"", u"log-on", u"", u"failed: " + failure.Description()});
    throw;
  }
  if (const std::optional<LoggedOnUser> before = management_.Session.Current();
      before && outcome.User) {
    management_.Record(
        {before->Name, u"log-off", u"", u"replaced by the log-on of " + outcome.User->Name});
  }
  management_.Record({outcome.Name, u"log-on", u"", outcome.Outcome});
  if (outcome.User) management_.Session.Begin({0, outcome.User->Name, outcome.User->ClassName});
  return outcome.Code;
}

}  // namespace krx::runtime
