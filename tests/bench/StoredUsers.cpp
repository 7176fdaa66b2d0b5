#include "StoredUsers.h"

#include <stdexcept>

#include "Times.h"
#include "runtime/users/administration/Provisioning.h"

namespace krx::bench {
namespace {

host::UserRecord Operator(int number) {
  host::UserRecord record;
  record.Name = u"operator" + ToString(number);
  record.FullName = u"Operator Number " + ToString(number);
  record.Comment = u"Shift of line 7";
  record.ClassName = u"Operator";
  record.Secret = Password(u"Line-seven-" + ToString(number));
  return record;
}

}  // namespace

void StoredUsers::Fill(int first, int end) {
  runtime::UserStore::Writing writing(Management.Store);
  for (int number = first; number < end; ++number) {
    const host::UserRecord record = Operator(number);
    runtime::StoredUser user;
    user.Name = record.Name;
    user.FullName = record.FullName;
    user.Comment = record.Comment;
    user.ClassName = record.ClassName;
    user.MustRenew = false;
    user.PasswordChangedOn = Management.System.Time.Now();
    user.Passwords = {runtime::DecoyHash(1000)};
    writing.Users().Add(user);
  }
  writing.Commit();
}

void StoredUsers::FillAudit(int count) {
  runtime::UserStore::Writing writing(Management.Store);
  for (int i = 0; i < count; ++i)
    writing.Record({u"operator1", u"log-on", u"", u"logged on"});
  writing.Commit();
}

void StoredUsers::ProvisionAndLogOn() {
  const Password first(u"provisioned secret");
  const Password own(u"the chief's own");
  runtime::ProvisionFirstAdministrator(Management, u"chief", first);
  runtime::UserDirectory(Management).ChangeUserPassword(u"chief", own, first);
  if (runtime::LogOnService(Management).LogOnUser(u"chief", own) != host::LogOnSucceeded)
    throw std::runtime_error("the administrator is not logged on");
}

double StoredUsers::Create(int number) {
  const host::UserRecord record = Operator(number);
  const Time begin = Clock::now();
  if (runtime::UserDirectory(Management).CreateUser(record) != host::CreateUserSucceeded)
    throw std::runtime_error("a user is refused");
  return Since(begin);
}

}  // namespace krx::bench
