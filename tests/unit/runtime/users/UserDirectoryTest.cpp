#include "support/UserManagementTest.h"

namespace krx::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using UserDirectoryTest = UserManagementTest;

TEST_F(UserDirectoryTest, WithoutStoreThereIsNobody) {
  EXPECT_THAT(directory.GetUserNames(u""), IsEmpty());
  EXPECT_FALSE(directory.GetUserClass(u"boss").Found);
  EXPECT_FALSE(directory.GetCurrentUser().LoggedOn);
  EXPECT_EQ(directory.GetUserInfo(u"boss").FullName, u"");
}

TEST_F(UserDirectoryTest, NamesAreListedByNameWhateverTheirCase) {
  ProvisionAndLogOn();
  for (const StringView name : {u"Zoe", u"anna", u"Berta", u"\u00C4nne", u"anna2", u"10"})
    ASSERT_EQ(directory.CreateUser(Record(String(name))), host::CreateUserSucceeded);
  EXPECT_THAT(directory.GetUserNames(u""),
              ElementsAre(u"10", u"anna", u"anna2", u"Berta", u"boss", u"Zoe", u"\u00C4nne"));
}

TEST_F(UserDirectoryTest, ASelectionListsTheUsersOfAClass) {
  ProvisionAndLogOn();
  AddUser(u"anna", u"anna's secret", u"Engineer");
  EXPECT_THAT(directory.GetUserNames(u"Engineer"), ElementsAre(u"anna"));
  EXPECT_THAT(directory.GetUserNames(u"Visitor"), IsEmpty());
}

TEST_F(UserDirectoryTest, TheRecordOfAUserIsRead) {
  ProvisionAndLogOn();
  ASSERT_EQ(directory.CreateUser(Record(u"anna")), host::CreateUserSucceeded);
  const host::UserInfo info = directory.GetUserInfo(u"anna");
  EXPECT_EQ(info.FullName, u"Full anna");
  EXPECT_EQ(info.Comment, u"Comment on anna");
  EXPECT_EQ(info.State, host::UserActiveChangePassword);
  EXPECT_EQ(info.RemainingLogOns, -1);
  EXPECT_EQ(info.RenewPassword, 0);
  EXPECT_EQ(info.PasswordChangedOn, 46'023);  // 2026-01-01
  EXPECT_EQ(directory.GetUserClass(u"anna").ClassName, u"Operator");
  EXPECT_TRUE(directory.GetUserClass(u"anna").Found);
  EXPECT_FALSE(directory.GetUserClass(u"Anna").Found);
}

TEST_F(UserDirectoryTest, ClassesAreReadInTheOrderOfTheRules) {
  const host::UserClasses all = classes.GetUserClasses();
  EXPECT_THAT(all.Names, ElementsAre(u"Operator", u"Engineer", u"Administrator"));
  EXPECT_THAT(all.Levels, ElementsAre(10, 50, 100));
  EXPECT_EQ(classes.GetUserClassInfo(u"Engineer").DisplayText, u"Engineer");
  EXPECT_EQ(classes.GetUserClassInfo(u"Engineer").Level, 50);
  EXPECT_FALSE(classes.Find(u"engineer").has_value());
  EXPECT_EQ(classes.GetUserClassInfo(u"engineer").DisplayText, u"");
}

TEST_F(UserDirectoryTest, ChangedRulesHoldFromTheNextOperationOn) {
  EXPECT_EQ(directory.GetAdministrationMode(), 1);
  Configure("administration-mode = 0\n");
  EXPECT_EQ(directory.GetAdministrationMode(), 0);
}

TEST_F(UserDirectoryTest, AMalformedListOfRefusedPasswordsAcceptsNone) {
  ProvisionAndLogOn();
  files.Content(folder / "refused-passwords.txt") = "\xFF";
  EXPECT_EQ(directory.CreateUser(Record(u"anna")), host::CreateUserCallFailed);
  EXPECT_EQ(directory.ChangeUserPassword(u"boss", Secret(u"new secret"), Secret(kBossSecret)),
            host::ChangePasswordCallFailed);
}

TEST_F(UserDirectoryTest, AUserOfAClassThatIsGoneIsStillThere) {
  ProvisionAndLogOn();
  AddUser(u"anna", u"anna's secret", u"Engineer");
  Configure("class = Administrator | 100 | Administrator\n");
  EXPECT_EQ(directory.GetUserClass(u"anna").ClassName, u"Engineer");
  EXPECT_EQ(directory.RemoveUser(u"anna"), host::ModifyUserSucceeded);
}

}  // namespace
}  // namespace krx::test
