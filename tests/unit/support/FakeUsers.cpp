#include "support/FakeUsers.h"

#include <algorithm>
#include <iterator>

namespace krx::test {

namespace {

std::int32_t Next(std::deque<std::int32_t>& codes, std::int32_t success) {
  if (codes.empty()) return success;
  const std::int32_t code = codes.front();
  codes.pop_front();
  return code;
}

std::string Plain(const String& text) {
  return ToUtf8(text);
}
std::string Plain(const Password& secret) {
  return ToUtf8(secret.View());
}
std::string Plain(std::int32_t number) {
  return std::to_string(number);
}
std::string Plain(double number) {
  return std::to_string(static_cast<std::int32_t>(number));
}

}  // namespace

// Number and life of one object; the calls of its class go through it.
class UserObject {
 public:
  UserObject(FakeUsers& users, const std::string& kind)
      : users_(users), name_(kind + std::to_string(++users.created_[kind])) {
    ++users_.Live;
  }
  UserObject(const UserObject&) = delete;
  UserObject& operator=(const UserObject&) = delete;
  ~UserObject() {
    --users_.Live;
    users_.log_.Note("~" + name_);
  }

  template <class... Args>
  void Call(const char* operation, const Args&... args) {
    std::string list;
    ((list += (list.empty() ? "" : ", ") + Plain(args)), ...);
    users_.log_.Add(name_ + "." + operation + "(" + list + ")");
  }

 private:
  FakeUsers& users_;
  const std::string name_;
};

namespace {

class FakeSession : public host::UserSession {
 public:
  explicit FakeSession(FakeUsers& users) : users_(users), object_(users, "UserSession") {}
  std::int32_t LogOnUser(const String& user, const Password& password) override {
    object_.Call("LogOnUser", user, password);
    return Next(users_.LogOnCodes, host::LogOnSucceeded);
  }
  std::int32_t LogOffUser() override {
    object_.Call("LogOffUser");
    return users_.LogOffCode;
  }

 private:
  FakeUsers& users_;
  UserObject object_;
};

class FakeAdministration : public host::UserAdministration {
 public:
  explicit FakeAdministration(FakeUsers& users)
      : users_(users), object_(users, "UserAdministration") {}
  std::int32_t ChangeUserPassword(const String& user, const Password& new_password,
                                  const Password& current_password) override {
    object_.Call("ChangeUserPassword", user, new_password, current_password);
    return Next(users_.ChangeCodes, host::ChangePasswordSucceeded);
  }
  std::int32_t CreateUser(const host::UserRecord& record) override {
    Write("CreateUser", record);
    const std::int32_t code = Next(users_.CreateCodes, host::CreateUserSucceeded);
    if (code == 0 && users_.OnCreate) users_.OnCreate(record);
    return code;
  }
  std::int32_t RemoveUser(const String& user) override {
    object_.Call("RemoveUser", user);
    if (users_.OnRemove) users_.OnRemove(user);
    return 0;
  }
  std::int32_t SetUserActive(const String& user, std::int32_t active) override {
    object_.Call("SetUserActive", user, active);
    if (users_.OnSetActive) users_.OnSetActive(user, active);
    return 0;
  }
  host::UserClassOfUser GetUserClass(const String& user) override {
    object_.Call("GetUserClass", user);
    const auto found = users_.ClassOf.find(user);
    const String name = found == users_.ClassOf.end() ? u"class of " + user : found->second;
    return {name, users_.Records.contains(user)};
  }
  host::UserInfo GetUserInfo(const String& user) override {
    object_.Call("GetUserInfo", user);
    return users_.Records[user];
  }
  std::int32_t ModifyUser(const host::UserRecord& record) override {
    Write("ModifyUser", record);
    const std::int32_t code = Next(users_.ModifyCodes, host::ModifyUserSucceeded);
    if (code == 0 && users_.OnModify) users_.OnModify(record);
    return code;
  }
  std::vector<String> GetUserNames(const String& selection) override {
    object_.Call("GetUserNames", selection);
    return users_.Names;
  }
  host::CurrentUser GetCurrentUser() override {
    object_.Call("GetCurrentUser");
    return users_.Current;
  }
  std::int32_t GetAdministrationMode() override {
    object_.Call("GetAdministrationMode");
    return users_.AdministrationMode;
  }

 private:
  void Write(const char* operation, const host::UserRecord& record) {
    object_.Call(operation, record.Name, record.FullName, record.Comment, record.Secret,
                 record.ClassName, record.Date, record.State);
  }

  FakeUsers& users_;
  UserObject object_;
};

class FakeClassAdministration : public host::UserClassAdministration {
 public:
  explicit FakeClassAdministration(FakeUsers& users)
      : users_(users), object_(users, "UserClassAdministration") {}
  host::UserClassInfo GetUserClassInfo(const String& class_name) override {
    object_.Call("GetUserClassInfo", class_name);
    const auto found =
        std::find_if(users_.Classes.begin(), users_.Classes.end(),
                     [&](const auto& user_class) { return user_class.first == class_name; });
    return {u"text of " + class_name, found == users_.Classes.end() ? 0 : found->second};
  }
  host::UserClasses GetUserClasses() override {
    object_.Call("GetUserClasses");
    host::UserClasses classes;
    for (const auto& [name, level] : users_.Classes) {
      classes.Names.push_back(name);
      classes.Levels.push_back(level);
    }
    return classes;
  }

 private:
  FakeUsers& users_;
  UserObject object_;
};

}  // namespace

std::unique_ptr<host::UserSession> FakeUsers::CreateSession() {
  log_.Add("CreateUserSession");
  return std::make_unique<FakeSession>(*this);
}

std::unique_ptr<host::UserAdministration> FakeUsers::CreateAdministration() {
  log_.Add("CreateUserAdministration");
  return std::make_unique<FakeAdministration>(*this);
}

std::unique_ptr<host::UserClassAdministration> FakeUsers::CreateClassAdministration() {
  log_.Add("CreateUserClassAdministration");
  return std::make_unique<FakeClassAdministration>(*this);
}

void FakeUsers::Restart() {
  created_.clear();
  log_.FailNothing();
}

std::vector<std::string> FakeUsers::Calls() const {
  std::vector<std::string> calls;
  const auto& all = log_.Entries();
  std::copy_if(all.begin(), all.end(), std::back_inserter(calls), [](const std::string& entry) {
    return entry.starts_with("User") || entry.starts_with("~User") ||
           entry.starts_with("CreateUser") || entry.starts_with("Box ");
  });
  return calls;
}

}  // namespace krx::test
