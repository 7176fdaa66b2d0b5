#include "runtime/users/UserManagement.h"

#include <exception>

namespace krx::runtime {
namespace {

constexpr std::chrono::milliseconds kPatienceForFailures{50};

}  // namespace

RefusedPasswords UserManagement::Refused() {
  const std::filesystem::path file = Store.Folder() / "refused-passwords.txt";
  const std::optional<std::string> bytes = System.FileSystem.Read(file);
  return bytes ? RefusedPasswords(file.u16string(), *bytes) : RefusedPasswords();
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
  return user && !user->Deactivated ? user : std::nullopt;
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
