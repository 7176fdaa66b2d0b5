#include "runtime/users/UserManagement.h"

#include <exception>

namespace krx::runtime {
namespace {

constexpr std::chrono::milliseconds kPatienceForFailures{50};

// Why the user is not logged on any more; empty when he is.
StringView ReasonToEnd(const LoggedOnUser& logged_on, const StoredUser& user) {
  if (user.Deactivated) return u"user was deactivated";
  const bool is_reset = user.PasswordChangedOn != logged_on.PasswordChangedOn ||
                        (user.MustRenew && !logged_on.RenewsHimself);
  return is_reset ? u"password was changed or reset elsewhere" : u"";
}

}  // namespace

std::filesystem::path KeyFile(const std::filesystem::path& folder) {
  std::filesystem::path name = folder.filename();
  name += ".key";
  return folder.parent_path() / "Keys" / name;
}

RefusedPasswords UserManagement::Refused() {
  const std::filesystem::path file = Store.Folder() / "refused-passwords.txt";
  const std::optional<std::string> bytes = System.FileSystem.Read(file);
  return bytes ? RefusedPasswords(file.u16string(), *bytes, &System.Crypto) : RefusedPasswords();
}

std::optional<StoredUser> UserManagement::Actor(UserSource& users) const {
  const std::optional<LoggedOnUser> current = Session.Current();
  if (!current) return std::nullopt;
  if (current->IsOfDirectory()) {
    StoredUser user;
    user.Name = current->Name;
    user.ClassName = current->ClassName;
    return user;
  }
  std::optional<StoredUser> user = users.FindId(current->Id);
  return user && ReasonToEnd(*current, *user).empty() ? user : std::nullopt;
}

void UserManagement::EndLostSession() {
  const std::optional<LoggedOnUser> current = Session.Current();
  if (!current || current->IsOfDirectory()) return;
  StringView reason = u"user was removed";
  if (const auto user = UserStore::Reading(Store).FindId(current->Id))
    reason = ReasonToEnd(*current, *user);
  // Somebody may have logged on or off meanwhile.
  if (reason.empty() || !Session.EndOf(current->Id)) return;
  RecordFailure({current->Name, u"log-off", u"", u"logged off: " + String(reason)});
}

void UserManagement::Record(const AuditEntry& entry) {
  UserStore::Writing writing(Store);
  if (!writing.HasStore())
    throw UnableToSave(u"there is no store yet; krxusers provision makes it");
  writing.Record(entry);
  writing.Commit();
}

void UserManagement::RecordFailure(const AuditEntry& entry) noexcept {
  try {
    UserStore::Writing writing(Store, kPatienceForFailures);
    if (!writing.HasStore()) return;
    writing.Record(entry);
    writing.Commit();
  } catch (const std::exception&) {
  }
}

}  // namespace krx::runtime
