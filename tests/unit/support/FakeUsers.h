#pragma once

#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "host/UserManager.h"
#include "support/CallLog.h"

namespace krx::test {

// A user management that a test scripts. Every call, with its arguments, and the beginning and end
// of every object are written down: "CreateUserSession", "UserSession1.LogOnUser(anna, secret)",
// "~UserSession1".
class FakeUsers {
 public:
  explicit FakeUsers(CallLog& log) : log_(log) {}

  // Codes of the next calls, in order; with none left the call succeeds.
  std::deque<std::int32_t> LogOnCodes;
  std::deque<std::int32_t> ChangeCodes;
  std::deque<std::int32_t> CreateCodes;
  std::deque<std::int32_t> ModifyCodes;
  std::int32_t LogOffCode = 0;
  std::vector<String> Names;
  host::CurrentUser Current;
  // Users that are found, with their records; the class of each is "class of <name>" where the test
  // sets no other.
  std::map<String, host::UserInfo> Records;
  std::map<String, String> ClassOf;
  // The classes in their order; the text of each is "text of <name>". Any other class has level 0.
  std::vector<std::pair<String, std::int32_t>> Classes;
  std::int32_t AdministrationMode = 0;
  // Hears of calls that change users, after they were written down.
  std::function<void(const host::UserRecord&)> OnCreate;
  std::function<void(const host::UserRecord&)> OnModify;
  std::function<void(const String&)> OnRemove;
  std::function<void(const String&, std::int32_t)> OnSetActive;

  // Objects that exist now, of all three classes.
  int Live = 0;

  std::unique_ptr<host::UserSession> CreateSession();
  std::unique_ptr<host::UserAdministration> CreateAdministration();
  std::unique_ptr<host::UserClassAdministration> CreateClassAdministration();

  // Begins anew: objects are numbered from 1 and the log is empty.
  void Restart();

  // What reached the user management and every message box shown, in order.
  std::vector<std::string> Calls() const;

 private:
  friend class UserObject;

  CallLog& log_;
  std::map<std::string, int> created_;
};

}  // namespace krx::test
