#include "runtime/users/administration/Recovery.h"
#include "runtime/users/logon/PasswordAge.h"
#include "support/UserManagementTest.h"

namespace krx::test {
namespace {

using runtime::kSecondsPerDay;
using LogOnServiceTest = UserManagementTest;

TEST_F(LogOnServiceTest, TheRightPasswordLogsOn) {
  Provision();
  EXPECT_EQ(LogOn(u"boss", kBossSecret), host::LogOnSucceeded);
  const host::CurrentUser current = directory.GetCurrentUser();
  EXPECT_TRUE(current.LoggedOn);
  EXPECT_EQ(current.Name, u"boss");
  EXPECT_EQ(current.ClassName, u"Administrator");
}

TEST_F(LogOnServiceTest, WithoutStoreEverybodyIsUnknown) {
  EXPECT_EQ(LogOn(u"boss", kBossSecret), host::LogOnUnknownUser);
  EXPECT_EQ(LogOn(u"", u""), host::LogOnUnknownUser);
  EXPECT_FALSE(HasStore());
}

TEST_F(LogOnServiceTest, NamesAndPasswordsAreComparedExactly) {
  Provision();
  EXPECT_EQ(LogOn(u"Boss", kBossSecret), host::LogOnUnknownUser);
  EXPECT_EQ(LogOn(u"boss", u"Boss's own secret"), host::LogOnInvalidPassword);
  EXPECT_EQ(LogOn(u"boss", u""), host::LogOnInvalidPassword);
}

TEST_F(LogOnServiceTest, ARefusalLeavesWhoIsLoggedOn) {
  ProvisionAndLogOn();
  EXPECT_EQ(LogOn(u"boss", u"wrong"), host::LogOnInvalidPassword);
  EXPECT_EQ(directory.GetCurrentUser().Name, u"boss");
}

TEST_F(LogOnServiceTest, ASuccessTakesThePlaceOfWhoWasLoggedOn) {
  ProvisionAndLogOn();
  AddUser(u"anna", u"anna's secret");
  EXPECT_EQ(LogOn(u"anna", u"anna's secret"), host::LogOnSucceeded);
  EXPECT_EQ(directory.GetCurrentUser().Name, u"anna");
}

TEST_F(LogOnServiceTest, ADeactivatedUserIsRefusedWhateverThePassword) {
  ProvisionAndLogOn();
  AddUser(u"anna", u"anna's secret");
  ASSERT_EQ(directory.SetUserActive(u"anna", 0), host::ModifyUserSucceeded);
  EXPECT_EQ(LogOn(u"anna", u"anna's secret"), host::LogOnUserDeactivated);
  EXPECT_EQ(LogOn(u"anna", u"wrong"), host::LogOnUserDeactivated);
}

TEST_F(LogOnServiceTest, AFirstPasswordHasToBeRenewed) {
  ProvisionAndLogOn();
  ASSERT_EQ(directory.CreateUser(Record(u"anna")), host::CreateUserSucceeded);
  EXPECT_EQ(directory.GetUserInfo(u"anna").State, host::UserActiveChangePassword);
  EXPECT_EQ(LogOn(u"anna", u"first secret"), host::LogOnRenewPassword);
  ASSERT_EQ(
      directory.ChangeUserPassword(u"anna", Secret(u"second secret"), Secret(u"first secret")),
      host::ChangePasswordSucceeded);
  EXPECT_EQ(directory.GetUserInfo(u"anna").State, host::UserActive);
  EXPECT_EQ(LogOn(u"anna", u"second secret"), host::LogOnSucceeded);
}

TEST_F(LogOnServiceTest, APasswordExpiresAfterItsDays) {
  Configure("password-expiry-days = 30\n");
  Provision();
  EXPECT_EQ(directory.GetUserInfo(u"boss").RenewPassword, 30);
  clock.Seconds += 30 * kSecondsPerDay - 1;
  EXPECT_EQ(directory.GetUserInfo(u"boss").RenewPassword, 1);
  EXPECT_EQ(LogOn(u"boss", kBossSecret), host::LogOnSucceeded);
  clock.Seconds += 1;
  EXPECT_EQ(directory.GetUserInfo(u"boss").RenewPassword, 0);
  EXPECT_EQ(LogOn(u"boss", u"wrong"), host::LogOnInvalidPassword);
  EXPECT_EQ(LogOn(u"boss", kBossSecret), host::LogOnPasswordExpired);
}

TEST_F(LogOnServiceTest, WithoutExpiryAPasswordLasts) {
  Provision();
  clock.Seconds += 40'000 * kSecondsPerDay;
  EXPECT_EQ(directory.GetUserInfo(u"boss").RenewPassword, -1);
  EXPECT_EQ(LogOn(u"boss", kBossSecret), host::LogOnSucceeded);
}

TEST_F(LogOnServiceTest, APasswordExpiresAfterItsLogOns) {
  Configure("log-ons-per-password = 2\n");
  Provision();
  EXPECT_EQ(directory.GetUserInfo(u"boss").RemainingLogOns, 2);
  EXPECT_EQ(LogOn(u"boss", kBossSecret), host::LogOnSucceeded);
  EXPECT_EQ(directory.GetUserInfo(u"boss").RemainingLogOns, 1);
  EXPECT_EQ(LogOn(u"boss", u"wrong"), host::LogOnInvalidPassword);
  EXPECT_EQ(directory.GetUserInfo(u"boss").RemainingLogOns, 1);
  EXPECT_EQ(LogOn(u"boss", kBossSecret), host::LogOnSucceeded);
  EXPECT_EQ(directory.GetUserInfo(u"boss").RemainingLogOns, 0);
  EXPECT_EQ(LogOn(u"boss", kBossSecret), host::LogOnPasswordExpired);
  ASSERT_EQ(directory.ChangeUserPassword(u"boss", Secret(u"another secret"), Secret(kBossSecret)),
            host::ChangePasswordSucceeded);
  EXPECT_EQ(directory.GetUserInfo(u"boss").RemainingLogOns, 2);
}

TEST_F(LogOnServiceTest, WithoutLimitLogOnsAreNotCounted) {
  ProvisionAndLogOn();
  EXPECT_EQ(directory.GetUserInfo(u"boss").RemainingLogOns, -1);
}

TEST_F(LogOnServiceTest, AnOldHashIsStrengthenedAtTheNextLogOn) {
  Provision();
  files.Content(folder / "users.conf") = "hash-iterations = 3000\n";
  EXPECT_EQ(LogOn(u"boss", u"wrong"), host::LogOnInvalidPassword);
  EXPECT_EQ(StoredRecord(u"boss").CurrentPassword().Iterations, 1000u);
  EXPECT_EQ(LogOn(u"boss", kBossSecret), host::LogOnSucceeded);
  EXPECT_EQ(StoredRecord(u"boss").CurrentPassword().Iterations, 3000u);
  EXPECT_EQ(StoredRecord(u"boss").Passwords.size(), 2u);  // no password is added to the history
  EXPECT_EQ(LogOn(u"boss", kBossSecret), host::LogOnSucceeded);
}

TEST_F(LogOnServiceTest, AStrongerHashThanConfiguredIsKept) {
  files.Content(folder / "users.conf") = "hash-iterations = 3000\n";
  Provision();
  Configure("");
  EXPECT_EQ(LogOn(u"boss", kBossSecret), host::LogOnSucceeded);
  EXPECT_EQ(StoredRecord(u"boss").CurrentPassword().Iterations, 3000u);
}

TEST_F(LogOnServiceTest, UnknownUsersCostWhatWrongPasswordsCost) {
  Configure("lock-out-failures = 90\n");
  Provision();
  const auto once = [this](const String& name) {
    crypto.Derivations = 0;
    crypto.Iterations = 0;
    disk.Writes = disk.Flushes = 0;
    clock.Seconds += 15 * 60;  // no attempt is delayed by more
    LogOn(name, u"wrong");
    return std::make_tuple(crypto.Derivations.load(), crypto.Iterations.load(), disk.Writes,
                           disk.Flushes);
  };
  // Now and then the records need a further page.
  const auto cost = [&](const String& name) {
    auto least = once(name);
    for (int i = 0; i < 10; ++i)
      least = std::min(least, once(name));
    return least;
  };
  const auto known = cost(u"boss");
  EXPECT_EQ(std::get<0>(known), 1);
  EXPECT_EQ(std::get<1>(known), 1000u);
  EXPECT_GT(std::get<3>(known), 0);
  EXPECT_EQ(cost(u"nobody"), known);
}

TEST_F(LogOnServiceTest, NobodyHasThePasswordOfAnUnknownUser) {
  Provision();
  for (const StringView password : {StringView(), StringView(u"\0", 1), StringView(u"password")})
    EXPECT_EQ(LogOn(u"nobody", password), host::LogOnUnknownUser);
}

TEST_F(LogOnServiceTest, LoggingOffEndsTheSession) {
  ProvisionAndLogOn();
  EXPECT_EQ(session.LogOffUser(), 0);
  EXPECT_FALSE(directory.GetCurrentUser().LoggedOn);
  EXPECT_EQ(session.LogOffUser(), 1);
}

TEST_F(LogOnServiceTest, ARemovedOrDeactivatedUserIsNoLongerLoggedOn) {
  ProvisionAndLogOn();
  AddUser(u"anna", u"anna's secret", u"Administrator");
  runtime::Session other_session;
  runtime::UserManagement other{System(), folder, other_session};
  ASSERT_EQ(runtime::LogOnService(other).LogOnUser(u"anna", Secret(u"anna's secret")),
            host::LogOnSucceeded);
  runtime::UserDirectory others_directory(other);
  EXPECT_TRUE(others_directory.GetCurrentUser().LoggedOn);
  ASSERT_EQ(directory.SetUserActive(u"anna", 0), host::ModifyUserSucceeded);
  EXPECT_FALSE(others_directory.GetCurrentUser().LoggedOn);
  EXPECT_EQ(others_directory.RemoveUser(u"boss"), host::ModifyUserCallFailed);
}

class SessionsElsewhere : public UserManagementTest {
 protected:
  // Logs anna on to another process.
  void LogAnnaOn() {
    ProvisionAndLogOn();
    AddUser(u"anna", u"anna's secret", u"Administrator");
    ASSERT_EQ(runtime::LogOnService(other).LogOnUser(u"anna", Secret(u"anna's secret")),
              host::LogOnSucceeded);
    EXPECT_TRUE(others_directory.GetCurrentUser().LoggedOn);
  }
  // Her session has ended, and that is recorded once.
  void ExpectLoggedOff(const std::string& reason) {
    EXPECT_FALSE(others_directory.GetCurrentUser().LoggedOn);
    EXPECT_FALSE(other_session.Current().has_value());
    const std::size_t records = Records().size();
    EXPECT_THAT(LastAuditLine(), testing::HasSubstr("anna\tlog-off\t-\tlogged off: " + reason));
    EXPECT_FALSE(others_directory.GetCurrentUser().LoggedOn);
    EXPECT_EQ(Records().size(), records);
  }

  runtime::Session other_session;
  runtime::UserManagement other{System(), folder, other_session};
  runtime::UserDirectory others_directory{other};
};

TEST_F(SessionsElsewhere, EndWithARemovedUser) {
  LogAnnaOn();
  ASSERT_EQ(directory.RemoveUser(u"anna"), host::ModifyUserSucceeded);
  ExpectLoggedOff("user was removed");
}

TEST_F(SessionsElsewhere, EndWithADeactivatedUserAndDoNotComeBack) {
  LogAnnaOn();
  ASSERT_EQ(directory.SetUserActive(u"anna", 0), host::ModifyUserSucceeded);
  ExpectLoggedOff("user was deactivated");
  ASSERT_EQ(directory.SetUserActive(u"anna", 1), host::ModifyUserSucceeded);
  EXPECT_FALSE(others_directory.GetCurrentUser().LoggedOn);
}

TEST_F(SessionsElsewhere, EndWithAPasswordThatIsReset) {
  LogAnnaOn();
  runtime::ResetPassword(management, u"anna");
  EXPECT_EQ(others_directory.RemoveUser(u"boss"), host::ModifyUserCallFailed);
  ExpectLoggedOff("password was changed or reset elsewhere");
}

TEST_F(SessionsElsewhere, EndWithAPasswordThatAnAdministratorSets) {
  LogAnnaOn();
  clock.Seconds += 1;
  host::UserRecord record = Record(u"anna", u"another secret", u"Administrator");
  record.State = host::UserActive;
  ASSERT_EQ(directory.ModifyUser(record), host::ModifyUserSucceeded);
  ExpectLoggedOff("password was changed or reset elsewhere");
}

TEST_F(SessionsElsewhere, GoOnWhereTheUserChangesHimself) {
  LogAnnaOn();
  clock.Seconds += 1;
  ASSERT_EQ(others_directory.ChangeUserPassword(u"anna", Secret(u"another secret"),
                                                Secret(u"anna's secret")),
            host::ChangePasswordSucceeded);
  EXPECT_TRUE(others_directory.GetCurrentUser().LoggedOn);
  ASSERT_EQ(others_directory.ModifyUser(Record(u"anna", u"a third secret", u"Administrator")),
            host::ModifyUserSucceeded);
  EXPECT_TRUE(others_directory.GetCurrentUser().LoggedOn);
}

TEST_F(LogOnServiceTest, ANamesakeDoesNotInheritTheSession) {
  ProvisionAndLogOn();
  AddUser(u"anna", u"anna's secret");
  runtime::Session other_session;
  runtime::UserManagement other{System(), folder, other_session};
  ASSERT_EQ(runtime::LogOnService(other).LogOnUser(u"anna", Secret(u"anna's secret")),
            host::LogOnSucceeded);
  ASSERT_EQ(directory.RemoveUser(u"anna"), host::ModifyUserSucceeded);
  AddUser(u"anna", u"another anna's", u"Administrator");
  EXPECT_FALSE(runtime::UserDirectory(other).GetCurrentUser().LoggedOn);
}

TEST_F(LogOnServiceTest, AnAttemptThatCannotBeCountedIsAnError) {
  Provision();
  disk.ReadOnly = true;
  crypto.Derivations = 0;
  EXPECT_THROW(LogOn(u"boss", kBossSecret), runtime::UnableToSave);
  EXPECT_EQ(crypto.Derivations, 0);
  EXPECT_FALSE(directory.GetCurrentUser().LoggedOn);
}

TEST_F(LogOnServiceTest, EveryFailingFileOperationRaisesAndLogsNobodyOn) {
  Provision();
  Configure("");  // so that the rules are read anew
  files.FailAt(1, false);
  EXPECT_THROW(LogOn(u"boss", kBossSecret), Error);
  files.FailAt(0, false);
  int failures = 0;
  for (int n = 1;; ++n) {
    CloseStore();
    disk.FailAt(n, true);
    bool failed = false;
    try {
      LogOn(u"boss", kBossSecret);
    } catch (const Error&) {
      failed = true;
    }
    disk.FailAt(0, false);
    if (!failed) break;
    ++failures;
    EXPECT_FALSE(directory.GetCurrentUser().LoggedOn) << n;
    // The attempts that could not be completed count as wrong; an administrator would activate.
    StoredUser forgiven = StoredRecord(u"boss");
    forgiven.Failures = forgiven.FailuresInARow = 0;
    Store(forgiven);
  }
  // Two transactions: at least a lock, three pages, three flushes and a removal each.
  EXPECT_GT(failures, 16);
}

TEST_F(LogOnServiceTest, FailingCryptographyIsAnError) {
  Provision();
  crypto.Fails = true;
  EXPECT_THROW(LogOn(u"boss", kBossSecret), Error);
  EXPECT_FALSE(directory.GetCurrentUser().LoggedOn);
}

}  // namespace
}  // namespace krx::test
