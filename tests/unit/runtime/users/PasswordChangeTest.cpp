#include "support/UserManagementTest.h"

namespace krx::test {
namespace {

class PasswordChangeTest : public UserManagementTest {
 protected:
  std::int32_t Change(const String& user, StringView new_password, StringView current) {
    return directory.ChangeUserPassword(user, Secret(new_password), Secret(current));
  }
};

TEST_F(PasswordChangeTest, ANewPasswordReplacesTheOld) {
  Provision();
  clock.Seconds += 86'400;
  EXPECT_EQ(Change(u"boss", u"a new secret", kBossSecret), host::ChangePasswordSucceeded);
  EXPECT_EQ(LogOn(u"boss", kBossSecret), host::LogOnInvalidPassword);
  EXPECT_EQ(LogOn(u"boss", u"a new secret"), host::LogOnSucceeded);
  // 2026-01-02 is 46,024 days after 1899-12-30.
  EXPECT_EQ(directory.GetUserInfo(u"boss").PasswordChangedOn, 46'024);
}

TEST_F(PasswordChangeTest, EveryCodeIsReachable) {
  EXPECT_EQ(Change(u"boss", u"a new secret", u"old"), host::ChangePasswordUnknownUser);
  Provision();
  EXPECT_EQ(Change(u"nobody", u"a new secret", u"old"), host::ChangePasswordUnknownUser);
  EXPECT_EQ(Change(u"boss", u"a new secret", u"wrong"), host::ChangePasswordInvalidPassword);
  EXPECT_EQ(Change(u"boss", u"short", kBossSecret), host::ChangePasswordInvalidLength);
  EXPECT_EQ(Change(u"boss", u"PASSWORD", kBossSecret), host::ChangePasswordNotAccepted);
  disk.ReadOnly = true;
  EXPECT_EQ(Change(u"boss", u"a new secret", kBossSecret), host::ChangePasswordUnableToSave);
  disk.ReadOnly = false;
  crypto.Fails = true;
  EXPECT_EQ(Change(u"boss", u"a new secret", kBossSecret), host::ChangePasswordCallFailed);
  crypto.Fails = false;
  EXPECT_EQ(Change(u"boss", u"a new secret", kBossSecret), host::ChangePasswordSucceeded);
}

TEST_F(PasswordChangeTest, TheLastFourPasswordsCannotBeUsedAgain) {
  Provision();  // "provisioned secret", then the boss's own
  EXPECT_EQ(Change(u"boss", kBossSecret, kBossSecret), host::ChangePasswordNotAccepted);
  ASSERT_EQ(Change(u"boss", u"third secret", kBossSecret), host::ChangePasswordSucceeded);
  ASSERT_EQ(Change(u"boss", u"fourth secret", u"third secret"), host::ChangePasswordSucceeded);
  EXPECT_EQ(Change(u"boss", u"provisioned secret", u"fourth secret"),
            host::ChangePasswordNotAccepted);
  ASSERT_EQ(Change(u"boss", u"fifth secret", u"fourth secret"), host::ChangePasswordSucceeded);
  EXPECT_EQ(Change(u"boss", kBossSecret, u"fifth secret"), host::ChangePasswordNotAccepted);
  EXPECT_EQ(Change(u"boss", u"provisioned secret", u"fifth secret"), host::ChangePasswordSucceeded);
  EXPECT_EQ(StoredRecord(u"boss").Passwords.size(), 4u);
}

TEST_F(PasswordChangeTest, WithoutHistoryThePasswordMayStay) {
  Configure("password-history = 0\n");
  Provision();
  EXPECT_EQ(Change(u"boss", kBossSecret, kBossSecret), host::ChangePasswordSucceeded);
  EXPECT_EQ(StoredRecord(u"boss").Passwords.size(), 1u);
}

TEST_F(PasswordChangeTest, APasswordHasToBeKeptForItsMinimumAge) {
  Configure("password-minimum-days = 2\n");
  Provision();  // what has to be renewed may be renewed at once
  clock.Seconds += 2 * 86'400 - 1;
  EXPECT_EQ(Change(u"boss", u"third secret", kBossSecret), host::ChangePasswordNotAccepted);
  EXPECT_THAT(LastAuditLine(), testing::HasSubstr("refused: password was changed too lately"));
  clock.Seconds += 1;
  EXPECT_EQ(Change(u"boss", u"third secret", kBossSecret), host::ChangePasswordSucceeded);
  clock.Seconds -= 365 * 86'400;
  EXPECT_EQ(Change(u"boss", u"fourth secret", u"third secret"), host::ChangePasswordNotAccepted);
}

TEST_F(PasswordChangeTest, TheMinimumAgeKeepsNobodyFromRenewingWhatHasExpired) {
  Configure("password-minimum-days = 2\nlog-ons-per-password = 1\n");
  ProvisionAndLogOn();
  EXPECT_EQ(LogOn(u"boss", kBossSecret), host::LogOnPasswordExpired);
  EXPECT_EQ(Change(u"boss", u"third secret", kBossSecret), host::ChangePasswordSucceeded);
}

TEST_F(PasswordChangeTest, ARefusedPasswordIsRefusedInEverySpelling) {
  Provision();
  files.Put(folder / "refused-passwords.txt", "O\xCC\x88lpumpe 7\nK\xC3\xA4sehaus 3\n");
  for (const StringView spelling :
       {u"\u00D6lpumpe 7", u"o\u0308lpumpe 7", u"K\u00E4sehaus 3", u"Ka\u0308sehaus 3"})
    EXPECT_EQ(Change(u"boss", spelling, kBossSecret), host::ChangePasswordNotAccepted)
        << ToUtf8(spelling);
}

TEST_F(PasswordChangeTest, ASpellingOfTheSameTextIsTheSamePassword) {
  const StringView composed = u"K\u00E4sebrot \u212B 1";
  const StringView decomposed = u"Ka\u0308sebrot A\u030A 1";
  Provision();
  ASSERT_EQ(Change(u"boss", decomposed, kBossSecret), host::ChangePasswordSucceeded);
  EXPECT_EQ(LogOn(u"boss", composed), host::LogOnSucceeded);
  EXPECT_EQ(LogOn(u"boss", decomposed), host::LogOnSucceeded);
  EXPECT_EQ(Change(u"boss", composed, decomposed), host::ChangePasswordNotAccepted);
  AddUser(u"anna", decomposed);
  EXPECT_EQ(LogOn(u"anna", composed), host::LogOnSucceeded);
}

TEST_F(PasswordChangeTest, LengthIsThatOfTheNormalForm) {
  Provision();
  EXPECT_EQ(Change(u"boss", u"a\u0308a\u0308a\u0308a\u0308a\u0308a\u0308a\u0308", kBossSecret),
            host::ChangePasswordInvalidLength);
}

TEST_F(PasswordChangeTest, APasswordHashedAsTypedIsStillRecognised) {
  const StringView decomposed = u"Ka\u0308sebrot 1";
  Provision();
  StoredUser boss = StoredRecord(u"boss");
  boss.Passwords.front() = HashPassword(crypto, Secret(decomposed), 1000);
  Store(boss);
  EXPECT_EQ(LogOn(u"boss", u"K\u00E4sebrot 1"), host::LogOnInvalidPassword);
  EXPECT_EQ(LogOn(u"boss", decomposed), host::LogOnSucceeded);
}

TEST_F(PasswordChangeTest, WhatIsNoTextIsAPasswordAsItIs) {
  Provision();
  const StringView broken = u"a\u0308 lone \xD800 unit";
  ASSERT_EQ(Change(u"boss", broken, kBossSecret), host::ChangePasswordSucceeded);
  EXPECT_EQ(LogOn(u"boss", broken), host::LogOnSucceeded);
}

TEST_F(PasswordChangeTest, ARefusedNewPasswordIsNoFailedAttempt) {
  Provision();
  for (int i = 0; i < 10; ++i)
    EXPECT_EQ(Change(u"boss", u"short", kBossSecret), host::ChangePasswordInvalidLength);
  EXPECT_EQ(LogOn(u"boss", kBossSecret), host::LogOnSucceeded);
}

TEST_F(PasswordChangeTest, WrongCurrentPasswordsLockOutLikeWrongLogOns) {
  Provision();
  for (int i = 0; i < 5; ++i)
    EXPECT_EQ(Change(u"boss", u"a new secret", u"wrong"), host::ChangePasswordInvalidPassword);
  EXPECT_EQ(Change(u"boss", u"a new secret", kBossSecret), host::ChangePasswordNotAccepted);
  EXPECT_EQ(LogOn(u"boss", kBossSecret), host::LogOnTooManyFailedLogons);
}

TEST_F(PasswordChangeTest, ADeactivatedUserCannotChangeHisPassword) {
  ProvisionAndLogOn();
  AddUser(u"anna", u"anna's secret");
  ASSERT_EQ(directory.SetUserActive(u"anna", 0), host::ModifyUserSucceeded);
  EXPECT_EQ(Change(u"anna", u"a new secret", u"anna's secret"), host::ChangePasswordNotAccepted);
}

TEST_F(PasswordChangeTest, AnUnreadableStoreIsACallThatFailed) {
  Provision();
  CloseStore();
  StoreContent()[0] = 'x';
  const std::string damaged = StoreContent();
  EXPECT_EQ(Change(u"boss", u"a new secret", kBossSecret), host::ChangePasswordCallFailed);
  EXPECT_EQ(StoreContent(), damaged);
}

}  // namespace
}  // namespace krx::test
