#include "runtime/users/administration/Provisioning.h"

#include <set>

#include "runtime/users/rules/RulesFile.h"
#include "support/UserManagementTest.h"

namespace krx::test {
namespace {

class ProvisioningTest : public UserManagementTest {
 protected:
  String RefusalOf(const String& name, StringView password) {
    try {
      runtime::ProvisionFirstAdministrator(management, name, Secret(password));
      return u"done";
    } catch (const Error& failure) {
      return failure.Description();
    }
  }
};

TEST_F(ProvisioningTest, TheFirstAdministratorHasToRenewHisPassword) {
  ASSERT_EQ(RefusalOf(u"boss", u"provisioned secret"), u"done");
  EXPECT_EQ(directory.GetUserClass(u"boss").ClassName, u"Administrator");
  EXPECT_EQ(directory.GetUserInfo(u"boss").State, host::UserActiveChangePassword);
  EXPECT_EQ(LogOn(u"boss", u"provisioned secret"), host::LogOnRenewPassword);
  EXPECT_FALSE(directory.GetCurrentUser().LoggedOn);
  EXPECT_EQ(directory.ChangeUserPassword(u"boss", Secret(u"provisioned secret"),
                                         Secret(u"provisioned secret")),
            host::ChangePasswordNotAccepted);
  EXPECT_EQ(
      directory.ChangeUserPassword(u"boss", Secret(kBossSecret), Secret(u"provisioned secret")),
      host::ChangePasswordSucceeded);
  EXPECT_EQ(LogOn(u"boss", kBossSecret), host::LogOnSucceeded);
}

TEST_F(ProvisioningTest, AStoreIsNeverProvisionedTwice) {
  ASSERT_EQ(RefusalOf(u"boss", u"provisioned secret"), u"done");
  const std::string before = StoreContent();
  EXPECT_EQ(RefusalOf(u"other", u"provisioned secret"), u"there are users already");
  EXPECT_EQ(StoreContent(), before);
}

TEST_F(ProvisioningTest, NameAndPasswordHaveToSatisfyTheRules) {
  EXPECT_EQ(RefusalOf(u"", u"provisioned secret"), u"this is no user name");
  EXPECT_EQ(RefusalOf(u"boss", u"short"), u"the password needs 8 to 128 characters");
  EXPECT_EQ(RefusalOf(u"boss", u"password"), u"the password is too easily guessed");
  EXPECT_EQ(RefusalOf(u"bossy boss", u"Bossy Boss"), u"the password is too easily guessed");
  EXPECT_FALSE(HasStore());
}

TEST_F(ProvisioningTest, ACharacterThatIsNotSeenInANameIsNamed) {
  const std::string reason = "this is no user name: it has a character that is not seen, ";
  EXPECT_EQ(ToUtf8(RefusalOf(u"bo\u202Ess", u"provisioned secret")), reason + "U+202E");
  EXPECT_EQ(ToUtf8(RefusalOf(u"boss\u00AD", u"provisioned secret")), reason + "U+00AD");
  EXPECT_EQ(ToUtf8(RefusalOf(u"bo\U0001D173ss", u"provisioned secret")), reason + "U+1D173");
  EXPECT_EQ(ToUtf8(RefusalOf(u"bo\U0010FFFFss", u"provisioned secret")), reason + "U+10FFFF");
  EXPECT_EQ(RefusalOf(u"bo\nss", u"provisioned secret"), u"this is no user name");
  EXPECT_FALSE(HasStore());
}

TEST_F(ProvisioningTest, TheLowestClassThatAdministersIsTaken) {
  Configure("class = Vendor | 300 | V\nclass = Chief | 150 | C\nclass = Operator | 1 | O\n");
  ASSERT_EQ(RefusalOf(u"boss", u"provisioned secret"), u"done");
  EXPECT_EQ(directory.GetUserClass(u"boss").ClassName, u"Chief");
}

TEST_F(ProvisioningTest, ConfigurationFilesAreLeftToFillInButNeverReplaced) {
  const std::string before = files.Content(folder / "users.conf");
  ASSERT_EQ(RefusalOf(u"boss", u"provisioned secret"), u"done");
  EXPECT_EQ(files.Content(folder / "users.conf"), before);
  EXPECT_TRUE(files.Exists(folder / "refused-passwords.txt"));
  files = SimulatedFiles();
  CloseStore();
  disk.Put({});
  ASSERT_EQ(RefusalOf(u"boss", u"provisioned secret"), u"done");
  EXPECT_EQ(files.Content(folder / "users.conf"), runtime::RulesFileTemplate());
  EXPECT_EQ(StoredRecord(u"boss").CurrentPassword().Iterations, 600'000u);
}

TEST_F(ProvisioningTest, GeneratedPasswordsSatisfyTheRulesAndDiffer) {
  std::set<String> seen;
  for (int i = 0; i < 1000; ++i) {
    const Password generated = runtime::GeneratePassword(crypto, runtime::UserRules());
    EXPECT_EQ(generated.Length(), 19u);
    EXPECT_EQ(generated.View().find_first_of(u"ilo01"), StringView::npos);
    EXPECT_TRUE(seen.insert(String(generated.View())).second);
  }
  runtime::UserRules narrow;
  narrow.MaximumLength = 10;
  EXPECT_EQ(runtime::GeneratePassword(crypto, narrow).Length(), 10u);
  narrow.MinimumLength = 40;
  narrow.MaximumLength = 50;
  EXPECT_EQ(runtime::GeneratePassword(crypto, narrow).Length(), 40u);
}

TEST_F(ProvisioningTest, EveryLetterOfGeneratedPasswordsIsAsLikely) {
  std::map<char16_t, int> counts;
  for (int i = 0; i < 2000; ++i) {
    const Password generated = runtime::GeneratePassword(crypto, runtime::UserRules());
    for (const char16_t unit : generated.View())
      ++counts[unit];
  }
  counts.erase(u'-');
  ASSERT_EQ(counts.size(), 31u);
  // 32,000 letters: 1,032 of each expected, with a standard deviation of 32.
  for (const auto& [letter, count] : counts)
    EXPECT_NEAR(count, 1032, 6 * 32) << static_cast<char>(letter);
}

}  // namespace
}  // namespace krx::test
