#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "base/Password.h"
#include "base/String.h"

namespace krx::host {

// Result codes of the user management. Codes outside these lists are silent refusals.
enum LogOnResult : std::int32_t {
  LogOnUnknownUser = 0,
  LogOnInvalidPassword = 1,
  LogOnSucceeded = 2,
  LogOnUserDeactivated = 3,
  LogOnPasswordExpired = 4,
  LogOnTooManyFailedLogons = 5,
  LogOnRenewPassword = 6,
};

enum ChangePasswordResult : std::int32_t {
  ChangePasswordSucceeded = 0,
  ChangePasswordUnknownUser = 1,
  ChangePasswordInvalidPassword = 2,
  ChangePasswordUnableToSave = 3,
  ChangePasswordInvalidLength = 4,
  ChangePasswordNotAccepted = 5,
  ChangePasswordCallFailed = 6,
};

// Creating and changing a user are numbered differently; both numberings are meant.
enum CreateUserResult : std::int32_t {
  CreateUserSucceeded = 0,
  CreateUserInvalidLength = 1,
  CreateUserNotAccepted = 2,
  CreateUserExists = 3,
  CreateUserUnableToSave = 4,
  CreateUserCallFailed = 5,
};

enum ModifyUserResult : std::int32_t {
  ModifyUserSucceeded = 0,
  ModifyUserUnknownUser = 1,
  ModifyUserUnknownClass = 2,
  ModifyUserUnableToSave = 3,
  ModifyUserInvalidLength = 4,
  ModifyUserNotAccepted = 5,
  ModifyUserCallFailed = 6,
};

enum UserState : std::int32_t {
  UserActive = 0,
  UserDeactivated = 1,
  UserLocked = 2,
  UserActiveChangePassword = 3,
};

// Logs users on and off. Every operation of the three interfaces raises Error when the call fails;
// a refusal is a result code.
class UserSession {
 public:
  virtual ~UserSession() = default;
  virtual std::int32_t LogOnUser(const String& user, const Password& password) = 0;
  virtual std::int32_t LogOffUser() = 0;
};

struct CurrentUser {
  String Name;
  String ClassName;
  bool LoggedOn = false;
};

struct UserClassOfUser {
  String ClassName;
  bool Found = false;  // false when no user of this name exists
};

struct UserInfo {
  String FullName;
  String Comment;
  std::int32_t State = 0;
  std::int32_t RemainingLogOns = 0;
  std::int32_t PasswordChangedOn = 0;
  std::int32_t RenewPassword = 0;
};

// What CreateUser and ModifyUser store.
struct UserRecord {
  String Name;
  String FullName;
  String Comment;
  Password Secret;
  String ClassName;
  double Date = 0;  // day 0 of the date scale
  std::int32_t State = UserActiveChangePassword;
};

// Reads and changes users.
class UserAdministration {
 public:
  virtual ~UserAdministration() = default;
  virtual std::int32_t ChangeUserPassword(const String& user, const Password& new_password,
                                          const Password& current_password) = 0;
  virtual std::int32_t CreateUser(const UserRecord& record) = 0;
  virtual std::int32_t RemoveUser(const String& user) = 0;
  // Active: exactly 1 activates, 0 deactivates.
  virtual std::int32_t SetUserActive(const String& user, std::int32_t active) = 0;
  virtual UserClassOfUser GetUserClass(const String& user) = 0;
  virtual UserInfo GetUserInfo(const String& user) = 0;
  virtual std::int32_t ModifyUser(const UserRecord& record) = 0;
  // Names in the user management's order; the selection is empty for all users.
  virtual std::vector<String> GetUserNames(const String& selection) = 0;
  virtual CurrentUser GetCurrentUser() = 0;
  // 0 restricted to classes below one's own, 1 and 2 unrestricted, others nothing.
  virtual std::int32_t GetAdministrationMode() = 0;
};

struct UserClassInfo {
  String DisplayText;
  std::int32_t Level = 0;
};

struct UserClasses {
  std::vector<String> Names;
  std::vector<std::int32_t> Levels;  // in the order of the names
};

// Reads the user classes. A class is below another when its level is strictly less.
class UserClassAdministration {
 public:
  virtual ~UserClassAdministration() = default;
  virtual UserClassInfo GetUserClassInfo(const String& class_name) = 0;
  virtual UserClasses GetUserClasses() = 0;
};

}  // namespace krx::host
