#include "runtime/users/administration/AdministrationRights.h"

#include "support/UserManagementTest.h"

namespace krx::test {
namespace {

const StringView kClasses[] = {u"Operator", u"Engineer", u"Administrator", u"Vendor", u"Gone"};

// One letter for each of kClasses: whether an actor of the class may administer it.
std::string RightsOf(std::int32_t mode, const String& class_name) {
  runtime::UserRules rules;
  rules.AdministrationMode = mode;
  rules.Classes.push_back({u"Vendor", u"Vendor", 200});
  StoredUser actor;
  actor.ClassName = class_name;
  const runtime::AdministrationRights rights(rules, &actor);
  std::string letters;
  for (const StringView other : kClasses)
    letters += rights.MayAdminister(other) ? 'y' : '-';
  EXPECT_EQ(rights.MayAdministerAny(), letters.find('y') < 4);
  return letters;
}

TEST(AdministrationRightsTest, InMode0EverybodyAdministersClassesStrictlyBelow) {
  EXPECT_EQ(RightsOf(0, u"Operator"), "-----");
  EXPECT_EQ(RightsOf(0, u"Engineer"), "y----");
  EXPECT_EQ(RightsOf(0, u"Administrator"), "yy---");
  EXPECT_EQ(RightsOf(0, u"Vendor"), "yyy--");
  EXPECT_EQ(RightsOf(0, u"Gone"), "-----");
}

TEST(AdministrationRightsTest, InMode1AdministratorsAdministerEverybody) {
  EXPECT_EQ(RightsOf(1, u"Operator"), "-----");
  EXPECT_EQ(RightsOf(1, u"Engineer"), "-----");
  EXPECT_EQ(RightsOf(1, u"Administrator"), "yyyyy");
  EXPECT_EQ(RightsOf(1, u"Vendor"), "yyyyy");
  EXPECT_EQ(RightsOf(1, u"Gone"), "-----");
}

TEST(AdministrationRightsTest, InMode2AdministratorsAdministerUpToTheirOwnLevel) {
  EXPECT_EQ(RightsOf(2, u"Engineer"), "-----");
  EXPECT_EQ(RightsOf(2, u"Administrator"), "yyy--");
  EXPECT_EQ(RightsOf(2, u"Vendor"), "yyyy-");
}

TEST(AdministrationRightsTest, InAnyOtherModeNobodyAdministers) {
  for (const std::int32_t mode : {-1, 3, INT32_MAX, INT32_MIN})
    EXPECT_EQ(RightsOf(mode, u"Vendor"), "-----") << mode;
}

class RightsInUseTest : public UserManagementTest {
 protected:
  void LogOnEngineer() {
    Configure("administration-mode = 0\n");
    ProvisionAndLogOn();
    AddUser(u"erik", u"erik's secret", u"Engineer");
    AddUser(u"anna", u"anna's secret");
    ASSERT_EQ(LogOn(u"erik", u"erik's secret"), host::LogOnSucceeded);
  }
};

TEST_F(RightsInUseTest, AnEngineerInMode0AdministersOperatorsOnly) {
  LogOnEngineer();
  EXPECT_EQ(directory.CreateUser(Record(u"berta")), host::CreateUserSucceeded);
  EXPECT_EQ(directory.CreateUser(Record(u"carla", u"first secret", u"Engineer")),
            host::CreateUserCallFailed);
  EXPECT_EQ(directory.ModifyUser(Record(u"anna", u"new secret")), host::ModifyUserSucceeded);
  EXPECT_EQ(directory.ModifyUser(Record(u"anna", u"newer secret", u"Administrator")),
            host::ModifyUserCallFailed);
  EXPECT_EQ(directory.ModifyUser(Record(u"boss", u"new secret")), host::ModifyUserCallFailed);
  EXPECT_EQ(directory.SetUserActive(u"boss", 0), host::ModifyUserCallFailed);
  EXPECT_EQ(directory.RemoveUser(u"boss"), host::ModifyUserCallFailed);
  EXPECT_EQ(directory.SetUserActive(u"anna", 0), host::ModifyUserSucceeded);
  EXPECT_EQ(directory.RemoveUser(u"anna"), host::ModifyUserSucceeded);
}

TEST_F(RightsInUseTest, HisOwnRecordIsHisToChangeButForTheClass) {
  LogOnEngineer();
  EXPECT_EQ(directory.ModifyUser(Record(u"erik", u"new secret", u"Engineer")),
            host::ModifyUserSucceeded);
  EXPECT_EQ(directory.ModifyUser(Record(u"erik", u"newer secret", u"Operator")),
            host::ModifyUserCallFailed);
}

TEST_F(RightsInUseTest, AnOperatorChangesNothingNotEvenHimself) {
  ProvisionAndLogOn();
  AddUser(u"anna", u"anna's secret");
  ASSERT_EQ(LogOn(u"anna", u"anna's secret"), host::LogOnSucceeded);
  EXPECT_EQ(directory.CreateUser(Record(u"berta")), host::CreateUserCallFailed);
  EXPECT_EQ(directory.ModifyUser(Record(u"anna", u"new secret")), host::ModifyUserCallFailed);
  EXPECT_EQ(directory.SetUserActive(u"boss", 0), host::ModifyUserCallFailed);
  EXPECT_EQ(directory.RemoveUser(u"boss"), host::ModifyUserCallFailed);
}

}  // namespace
}  // namespace krx::test
