#include "runtime/users/UserManagement.h"

#include <exception>

#include "runtime/users/rules/RulesFile.h"

namespace krx::runtime {

UserRules UserManagement::Rules() {
  const std::filesystem::path file = Store.Folder() / "users.conf";
  const std::optional<std::string> bytes = System.FileSystem.Read(file);
  return bytes ? ParseRules(file.u16string(), *bytes) : UserRules();
}

RefusedPasswords UserManagement::Refused() {
  const std::filesystem::path file = Store.Folder() / "refused-passwords.txt";
  const std::optional<std::string> bytes = System.FileSystem.Read(file);
  return bytes ? RefusedPasswords(file.u16string(), *bytes) : RefusedPasswords();
}

const StoredUser* UserManagement::Actor(const UserStore* users) const {
  const std::optional<LoggedOnUser> current = Session.Current();
  if (!current || users == nullptr) return nullptr;
  const StoredUser* const user = users->FindId(current->Id);
  return user != nullptr && !user->Deactivated ? user : nullptr;
}

void UserManagement::RecordFailure(const AuditEntry& entry) noexcept {
  try {
    StoreFile::Hold hold(Store);
    Audit.Add(entry);
  } catch (const std::exception&) {
  }
}

}  // namespace krx::runtime
