#include "contract/KeyProtectionContract.h"
#include "runtime/users/administration/KeyCare.h"
#include "runtime/users/administration/Recovery.h"
#include "support/UserManagementTest.h"

namespace krx::test {
namespace {

using runtime::KeyId;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

class PasswordKeysTest : public UserManagementTest {
 protected:
  // With the first key, which passwords need from now on.
  void Prepare() {
    ProvisionAndLogOn();
    AddUser(u"anna", kAnnas);
    first = runtime::CreateKey(management);
    Configure("keyed-passwords = on\n");
  }

  KeyId IdOf(StringView name) { return StoredRecord(name).CurrentPassword().KeyId; }
  std::string Failure(const std::function<void()>& work) {
    try {
      work();
    } catch (const Error& failure) {
      EXPECT_EQ(failure.Status(), runtime::kPasswordKeyMissing);
      return ToUtf8(failure.Description());
    }
    return "";
  }
  std::string FailureOfLogOn() {
    return Failure([this] { LogOn(u"anna", kAnnas); });
  }

  static constexpr StringView kAnnas = u"anna's secret";
  const std::filesystem::path file = std::filesystem::path("Keys") / "users.key";
  KeyId first;
};

TEST(KeyProtectionTest, ThatOfTheTestsKeepsTheContract) {
  TestProtection protection;
  KeepsItsContract(protection);
}

TEST(CryptographyTest, AuthenticationGivesThePublishedResult) {
  TestCryptography crypto;  // RFC 4231, test case 2
  const std::uint8_t key[] = {'J', 'e', 'f', 'e'};
  const StringView text = u"what do ya want for nothing?";
  const std::vector<std::uint8_t> bytes(text.begin(), text.end());
  const runtime::Digest digest = crypto.Authenticate(key, bytes);
  EXPECT_EQ(std::vector<std::uint8_t>(digest.begin(), digest.begin() + 8),
            (std::vector<std::uint8_t>{0x5B, 0xDC, 0xC1, 0x46, 0xBF, 0x60, 0x75, 0x4E}));
}

TEST_F(PasswordKeysTest, PasswordsOfBeforeGoOnAndGetTheKeyAtTheNextLogOn) {
  Prepare();
  EXPECT_THAT(IdOf(u"anna"), IsEmpty());
  const auto before = StoredRecord(u"anna").CurrentPassword();
  EXPECT_EQ(LogOn(u"anna", kAnnas), host::LogOnSucceeded);
  EXPECT_EQ(IdOf(u"anna"), first);
  EXPECT_NE(StoredRecord(u"anna").CurrentPassword().Key, before.Key);
  EXPECT_EQ(LogOn(u"anna", u"anna's other"), host::LogOnInvalidPassword);
  EXPECT_EQ(LogOn(u"anna", kAnnas), host::LogOnSucceeded);
  EXPECT_EQ(IdOf(u"boss"), KeyId());
}

TEST_F(PasswordKeysTest, NewPasswordsAndThoseOfBeforeThemGetTheKey) {
  Prepare();
  ASSERT_EQ(directory.ChangeUserPassword(u"anna", Secret(u"anna's second"), Secret(kAnnas)),
            host::ChangePasswordSucceeded);
  ASSERT_EQ(directory.CreateUser(Record(u"berta")), host::CreateUserSucceeded);
  ASSERT_EQ(directory.ModifyUser(Record(u"berta", u"berta's second")), host::ModifyUserSucceeded);
  for (const StringView name : {u"anna", u"berta"}) {
    ASSERT_EQ(StoredRecord(name).Passwords.size(), 2u);
    for (const runtime::PasswordHash& hash : StoredRecord(name).Passwords)
      EXPECT_EQ(hash.KeyId, first);
  }
  EXPECT_EQ(LogOn(u"anna", u"anna's second"), host::LogOnSucceeded);
  EXPECT_EQ(directory.ChangeUserPassword(u"anna", Secret(kAnnas), Secret(u"anna's second")),
            host::ChangePasswordNotAccepted)
      << "the history knows the password under its key";
}

TEST_F(PasswordKeysTest, WhatIsStoredDoesNotTellThePasswordWithoutTheKey) {
  Prepare();
  ASSERT_EQ(LogOn(u"anna", kAnnas), host::LogOnSucceeded);
  runtime::PasswordHash stored = StoredRecord(u"anna").CurrentPassword();
  EXPECT_TRUE(Matches(crypto, Secret(kAnnas), stored, &management.Keys));
  EXPECT_THROW(Matches(crypto, Secret(kAnnas), stored), Error);
  stored.KeyId.clear();
  EXPECT_FALSE(Matches(crypto, Secret(kAnnas), stored));
}

TEST_F(PasswordKeysTest, AMissingKeyIsAnErrorThatNamesTheFileAndCountsNoAttempt) {
  Prepare();
  ASSERT_EQ(LogOn(u"anna", kAnnas), host::LogOnSucceeded);
  files.Replace(file, "elsewhere");
  for (int i = 0; i < 6; ++i)
    EXPECT_THAT(FailureOfLogOn(), HasSubstr(ToUtf8(file.u16string()) + ": "));
  EXPECT_THAT(LastAuditLine(), HasSubstr("failed: " + ToUtf8(file.u16string())));
  EXPECT_EQ(StoredRecord(u"anna").Failures, 0);
  EXPECT_EQ(directory.ChangeUserPassword(u"anna", Secret(u"anna's second"), Secret(kAnnas)),
            host::ChangePasswordCallFailed);
  EXPECT_EQ(directory.CreateUser(Record(u"berta")), host::CreateUserCallFailed);
  Configure("");  // the rule alone does not make it unkeyed
  EXPECT_THAT(FailureOfLogOn(), HasSubstr("is not there"));
  EXPECT_THAT(StoredRecord(u"anna").CurrentPassword().KeyId, first);
  files.Replace("elsewhere", file);
  EXPECT_EQ(LogOn(u"anna", kAnnas), host::LogOnSucceeded);
}

TEST_F(PasswordKeysTest, AForeignOrDamagedKeyIsAnErrorThatNamesTheFile) {
  Prepare();
  ASSERT_EQ(LogOn(u"anna", kAnnas), host::LogOnSucceeded);
  protection.Machine = 2;
  EXPECT_THAT(FailureOfLogOn(), HasSubstr("another machine's"));
  EXPECT_THROW(runtime::RenewKey(management), Error);
  protection.Machine = 1;
  std::string& content = files.Content(file);
  for (std::size_t i = 2; i < content.size(); ++i) {
    content[i] = static_cast<char>(content[i] ^ 1);
    ASSERT_THAT(FailureOfLogOn(), HasSubstr("damaged")) << i;
    content[i] = static_cast<char>(content[i] ^ 1);
  }
  EXPECT_EQ(LogOn(u"anna", kAnnas), host::LogOnSucceeded);
}

TEST_F(PasswordKeysTest, AnotherKeyInPlaceOfTheFirstIsNamed) {
  Prepare();
  ASSERT_EQ(LogOn(u"anna", kAnnas), host::LogOnSucceeded);
  EXPECT_THROW(runtime::CreateKey(management), Error);  // never over another
  files.Replace(file, "elsewhere");
  runtime::CreateKey(management);
  EXPECT_THAT(FailureOfLogOn(),
              HasSubstr("the key " + ToUtf8(runtime::TextOf(first)) + " that a password"));
  EXPECT_THAT(runtime::CheckKeys(management),
              ElementsAre(file.u16string() + u": the key " + runtime::TextOf(first) +
                          u" is not in it; passwords that were hashed with it: 1"));
}

TEST_F(PasswordKeysTest, AKeyIsRenewedAndTheOldOneStaysAsLongAsItIsNeeded) {
  Prepare();
  ASSERT_EQ(LogOn(u"anna", kAnnas), host::LogOnSucceeded);
  ASSERT_EQ(LogOn(u"boss", kBossSecret), host::LogOnSucceeded);
  const KeyId second = runtime::RenewKey(management);
  EXPECT_THAT(LastAuditLine(), HasSubstr("renew key of passwords"));
  EXPECT_THAT(management.Keys.Ids(), ElementsAre(second, first));
  EXPECT_EQ(LogOn(u"anna", kAnnas), host::LogOnSucceeded);
  EXPECT_EQ(IdOf(u"anna"), second);
  EXPECT_EQ(IdOf(u"boss"), first);
  const KeyId third = runtime::RenewKey(management);
  EXPECT_THAT(management.Keys.Ids(), ElementsAre(third, second, first));
  EXPECT_EQ(LogOn(u"anna", kAnnas), host::LogOnSucceeded);
  const KeyId fourth = runtime::RenewKey(management);
  EXPECT_THAT(management.Keys.Ids(), ElementsAre(fourth, third, first))
      << "nobody needs the second";
  EXPECT_EQ(LogOn(u"boss", kBossSecret), host::LogOnSucceeded);
}

TEST_F(PasswordKeysTest, AKeyThatCannotBeRecordedIsNotMade) {
  ProvisionAndLogOn();
  disk.ReadOnly = true;
  EXPECT_THROW(runtime::CreateKey(management), Error);
  EXPECT_FALSE(files.Exists(file));
}

TEST_F(PasswordKeysTest, RulesThatAskForAKeyBeforeThereIsOneAreAnError) {
  ProvisionAndLogOn();
  Configure("keyed-passwords = on\n");
  EXPECT_THAT(Failure([this] { LogOn(u"boss", kBossSecret); }), HasSubstr("is not there"));
  EXPECT_THAT(runtime::CheckKeys(management),
              ElementsAre(testing::ResultOf(ToUtf8, HasSubstr("is not there"))));
  runtime::CreateKey(management);
  EXPECT_EQ(LogOn(u"boss", kBossSecret), host::LogOnSucceeded);
  EXPECT_THAT(runtime::CheckKeys(management), IsEmpty());
}

TEST_F(PasswordKeysTest, AFirstAdministratorGetsAKeyThatIsThereBeforeHim) {
  runtime::CreateKey(management);
  Configure("keyed-passwords = on\n");
  ProvisionAndLogOn();
  EXPECT_EQ(IdOf(u"boss"), management.Keys.Ids().front());
}

TEST_F(PasswordKeysTest, WithoutItsKeyABackupComesBackByNewPasswords) {
  Prepare();
  ASSERT_EQ(LogOn(u"anna", kAnnas), host::LogOnSucceeded);
  ASSERT_EQ(LogOn(u"boss", kBossSecret), host::LogOnSucceeded);
  runtime::BackUpStore(management, folder / "backup.db");
  protection.Machine = 2;  // the next machine
  files.Replace(file, "of the first machine");
  runtime::RestoreStore(management, folder / "backup.db");
  EXPECT_NE(FailureOfLogOn(), "");
  const KeyId here = runtime::CreateKey(management);
  const Password generated = runtime::ResetPassword(management, u"anna");
  EXPECT_EQ(session.LogOnUser(u"anna", generated), host::LogOnRenewPassword);
  ASSERT_EQ(directory.ChangeUserPassword(u"anna", Secret(u"anna's second"), generated),
            host::ChangePasswordSucceeded);
  EXPECT_EQ(LogOn(u"anna", u"anna's second"), host::LogOnSucceeded);
  EXPECT_EQ(IdOf(u"anna"), here);
}

TEST_F(PasswordKeysTest, ADatabaseOfBeforeTheKeysIsBroughtUpToDate) {
  ProvisionAndLogOn();
  AddUser(u"anna", kAnnas);
  CloseStore();
  runtime::Database(folder / "users.db", {disk.Name()}, false)
      .Run(
          "ALTER TABLE passwords DROP COLUMN key_id; ALTER TABLE offline_users DROP COLUMN key_id;"
          "ALTER TABLE offline_users DROP COLUMN failures_in_a_row;"
          "ALTER TABLE users DROP COLUMN attempts;"
          "CREATE TABLE unknown_attempts (id INTEGER PRIMARY KEY, count INTEGER NOT NULL) STRICT;"
          "PRAGMA user_version = 3");
  EXPECT_EQ(LogOn(u"anna", kAnnas), host::LogOnSucceeded);
  EXPECT_THAT(IdOf(u"anna"), IsEmpty());
  EXPECT_THAT(runtime::CheckStore(management), IsEmpty());
}

TEST_F(PasswordKeysTest, OnAFullDiskTheKeyCountsToo) {
  Prepare();
  ASSERT_EQ(LogOn(u"anna", kAnnas), host::LogOnSucceeded);
  disk.Full = true;
  EXPECT_EQ(LogOn(u"anna", kAnnas), host::LogOnSucceeded);
  EXPECT_EQ(LogOn(u"anna", u"anna's other"), host::LogOnInvalidPassword);
  files.Replace(file, "elsewhere");
  EXPECT_THAT(FailureOfLogOn(), HasSubstr("is not there"));
}

}  // namespace
}  // namespace krx::test
