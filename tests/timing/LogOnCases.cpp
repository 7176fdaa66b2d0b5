#include "timing/LogOnCases.h"

#include <ctime>
#include <fstream>
#include <stdexcept>

#include "runtime/users/administration/Provisioning.h"
#include "runtime/users/administration/UserDirectory.h"
#include "runtime/users/logon/LogOnService.h"
#include "runtime/users/logon/PasswordAge.h"
#include "support/PosixFiles.h"
#include "support/TestCryptography.h"

namespace krx::timing {
namespace {

using runtime::StoredUser;
using runtime::UserStore;

constexpr std::int32_t kLockOutFailures = 90;  // so that a wrong password does not lock out
constexpr StringView kRight = u"the right one";
constexpr StringView kLong = u"a right one that is a good deal longer than the others are";
constexpr int kOthers = 200;
constexpr int kHistory = 5;

double ProcessorTime() {
  timespec time{};
  clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
  return static_cast<double>(time.tv_sec) * 1e9 + static_cast<double>(time.tv_nsec);
}

void WriteRules(const std::filesystem::path& folder) {
  std::filesystem::create_directories(folder);
  std::ofstream(folder / "users.conf") << "lock-out-failures = " << kLockOutFailures
                                       << "\npassword-expiry-days = 30\nhash-iterations = 1000\n";
}

}  // namespace

struct LogOnBench::State {
  explicit State(const std::filesystem::path& folder)
      : Management({Files, Crypto, Clock, {u"panel 1", u"test", u"operator"}}, folder, Session) {
    Crypto.IsQuick = true;
  }

  StoredUser Template(StringView password) {
    StoredUser user;
    user.ClassName = u"Operator";
    user.MustRenew = false;
    user.PasswordChangedOn = Clock.Now();
    user.Passwords = {runtime::HashPassword(Crypto, Password(password), 1000)};
    return user;
  }
  void Add(String name, StoredUser user) {
    user.Name = std::move(name);
    user.FullName = u"Full " + user.Name;
    user.Comment = u"Comment on " + user.Name;
    UserStore::Writing writing(Management.Store);
    user.Id = writing.Users().Add(user);
    writing.Commit();
    Stored.push_back(std::move(user));
  }
  void AddUsers();

  test::PosixFiles Files;
  test::TestCryptography Crypto;
  test::TestClock Clock;
  runtime::Session Session;
  runtime::UserManagement Management;
  runtime::LogOnService LogOn{Management};
  std::vector<StoredUser> Stored;
  std::vector<StoredUser> Attempted;
  // As in a process that has loaded the component.
  std::unique_ptr<UserStore::Use> Use = std::make_unique<UserStore::Use>(Management.Store);
};

void LogOnBench::State::AddUsers() {
  runtime::ProvisionFirstAdministrator(Management, u"boss", Password(u"provisioned secret"));
  const StoredUser plain = Template(kRight);
  for (const char16_t* const name : {u"plain1", u"plain2", u"plain3", u"plain4", u"plain5"})
    Add(name, plain);
  Add(u"length", Template(kLong));
  StoredUser user = plain;
  for (int i = 0; i < kHistory; ++i)
    user.Passwords.push_back(Template(u"a late one").CurrentPassword());
  for (const char16_t* const name : {u"histor", u"histo2"})
    Add(name, user);
  user = plain;
  user.PasswordChangedOn -= 40 * runtime::kSecondsPerDay;
  Add(u"expire", user);
  user = plain;
  user.MustRenew = true;
  Add(u"renewi", user);
  user = plain;
  user.Deactivated = true;
  for (const char16_t* const name : {u"deacti", u"deact2"})
    Add(name, user);
  user = plain;
  user.Failures = user.FailuresInARow = kLockOutFailures;
  user.LastFailure = Clock.Now();
  for (const char16_t* const name : {u"locked", u"locke2"})
    Add(name, user);
  user.ClassName = u"Administrator";
  Add(u"locadm", user);
  user = plain;
  user.ClassName = u"Administrator";
  Add(u"admini", user);
  Attempted = Stored;
  // Behind the first one and those above, whose pages are then alike in the processor's caches.
  for (int i = 0; i < kOthers; ++i)
    Add(u"other" + ToString(i), plain);
}

LogOnBench::LogOnBench(const std::filesystem::path& folder) {
  WriteRules(folder);
  state_ = std::make_unique<State>(folder);
  state_->AddUsers();
  cases_ = {
      {"unknown user", u"nobody", u"the wrong one", host::LogOnUnknownUser},
      {"unknown but for case", u"PLAIN5", u"the right one", host::LogOnUnknownUser},
      {"wrong password", u"plain1", u"the wrong one", host::LogOnInvalidPassword},
      {"wrong password of another", u"plain2", u"the wrong one", host::LogOnInvalidPassword},
      {"first letters right", u"plain3", u"the right eno", host::LogOnInvalidPassword},
      {"wrong length", u"plain4", u"the right one1", host::LogOnInvalidPassword},
      {"of a longer password", u"length", u"the wrong one", host::LogOnInvalidPassword},
      {"with history", u"histor", u"the wrong one", host::LogOnInvalidPassword},
      {"of an earlier password", u"histo2", u"a late one   ", host::LogOnInvalidPassword},
      {"expired", u"expire", u"the wrong one", host::LogOnInvalidPassword},
      {"to be renewed", u"renewi", u"the wrong one", host::LogOnInvalidPassword},
      {"administrator", u"admini", u"the wrong one", host::LogOnInvalidPassword},
      {"deactivated", u"deacti", u"the wrong one", host::LogOnUserDeactivated},
      {"deactivated, right", u"deact2", u"the right one", host::LogOnUserDeactivated},
      {"locked out", u"locked", u"the wrong one", host::LogOnTooManyFailedLogons},
      {"locked out, right", u"locke2", u"the right one", host::LogOnTooManyFailedLogons},
      {"locked administrator", u"locadm", u"the wrong one", host::LogOnTooManyFailedLogons},
  };
}

LogOnBench::~LogOnBench() = default;

void LogOnBench::Restart() {
  UserStore::Writing writing(state_->Management.Store);
  for (const StoredUser& user : state_->Attempted)
    writing.Users().UpdateAttempts(user);
  writing.Commit();
}

double LogOnBench::Measure(const LogOnCase& attempt) {
  const Password password(attempt.Password);
  const double begin = ProcessorTime();
  const std::int32_t code = state_->LogOn.LogOnUser(attempt.User, password);
  const double end = ProcessorTime();
  if (code != attempt.Code)
    throw std::runtime_error(attempt.Name + ": answered " + std::to_string(code));
  return end - begin;
}

}  // namespace krx::timing
