#pragma once

#include <filesystem>
#include <string>

namespace krx::drive {

// A folder with users of the reference runtime, which the programs started meanwhile use; gone with
// the object. The rules ask for little work, so that the tests measure the dialogs.
class UserStoreFolder {
 public:
  // Without users yet; `rules` are further lines of the rules' file.
  explicit UserStoreFolder(const std::string& rules = {});
  // With a copy of another folder's users.
  explicit UserStoreFolder(const UserStoreFolder& other);
  ~UserStoreFolder();
  UserStoreFolder& operator=(const UserStoreFolder&) = delete;

  const std::filesystem::path& Folder() const { return folder_; }
  // Adds a line to the rules.
  void AddRule(const std::string& line) const;
  // Makes it the one that programs started from now on use.
  void Use() const;
  // Creates the users with the provisioning command and returns the administrator's password.
  std::string Provision(const std::string& administrator) const;
  // The same with a password that is renewed to this one; then the administrator runs the script.
  void Provision(const std::wstring& administrator, const std::wstring& password,
                 const std::string& script = {}) const;
  // Runs a script with `Users`, `Session` and `Check` at hand against these users; throws with its
  // output when it does not come to its end. `Check result, wanted` stops it.
  void Administer(const std::string& script) const;
  // Lays a file beside the users.
  void Write(const std::string& name, const std::string& bytes) const;
  // The audit records as comma-separated values.
  std::string AuditLog() const;
  // From now on nothing can be stored.
  void RefuseWriting() const;

 private:
  std::filesystem::path folder_;
};

}  // namespace krx::drive
