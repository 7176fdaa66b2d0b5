// A user who is logged off because somebody else has changed him keeps the component loaded no
// longer.
#include <gtest/gtest.h>
#include <windows.h>

#include <functional>

#include "ModuleCopy.h"
#include "PlantFolder.h"
#include "runtime/users/logon/LogOnService.h"

namespace krx::test {
namespace {

struct Change {
  const char* Name;
  std::function<std::int32_t(runtime::UserDirectory&)> Make;
};

void PrintTo(const Change& change, std::ostream* out) {
  *out << change.Name;
}

constexpr StringView kAnna = u"anna's own secret";

host::UserRecord Anna(StringView password, std::int32_t state) {
  return {u"anna", u"Anna", u"", Password(password), u"Operator", 0, state};
}

// A plant with an administrator, in this program, and Anna, in the component.
class LostSessionTest : public testing::TestWithParam<Change> {
 protected:
  LostSessionTest() {
    SetEnvironmentVariableW(L"KORVEL_USERS_FOLDER", Plant.Folder.c_str());
    EXPECT_EQ(
        runtime::LogOnService(Plant.Management).LogOnUser(u"boss", Password(PlantFolder::kBoss)),
        host::LogOnSucceeded);
    EXPECT_EQ(Plant.Directory.CreateUser(Anna(kAnna, host::UserActive)), host::CreateUserSucceeded);
  }
  ~LostSessionTest() override { SetEnvironmentVariableW(L"KORVEL_USERS_FOLDER", nullptr); }

  LONG LogAnnaOn() const {
    LONG result = -1;
    const auto session = Module.Create<::UserSession, IUserSession>();
    EXPECT_EQ(session->LogOnUser(com::Bstr(u"anna").Get(), com::Bstr(kAnna).Get(), &result), S_OK);
    return result;
  }
  bool SomebodyIsLoggedOn() const {
    com::Bstr name, class_name;
    VARIANT_BOOL logged_on = VARIANT_FALSE;
    const auto users = Module.Create<::UserAdministration, IUserAdministration>();
    EXPECT_EQ(users->GetCurrentUser(name.Put(), class_name.Put(), &logged_on), S_OK);
    return logged_on != VARIANT_FALSE;
  }

  PlantFolder Plant{"lost"};
  runtime::ModuleCopy Module;
};

TEST_P(LostSessionTest, TheComponentMayBeUnloadedOnceThatIsNoticed) {
  ASSERT_EQ(LogAnnaOn(), 2);
  EXPECT_TRUE(SomebodyIsLoggedOn());
  EXPECT_EQ(Module.Call("DllCanUnloadNow"), S_FALSE);
  ASSERT_EQ(GetParam().Make(Plant.Directory), 0);
  EXPECT_FALSE(SomebodyIsLoggedOn());
  EXPECT_EQ(Module.Call("DllCanUnloadNow"), S_OK);
}

INSTANTIATE_TEST_SUITE_P(
    Of, LostSessionTest,
    testing::Values(
        Change{"OneWhoIsRemoved", [](auto& users) { return users.RemoveUser(u"anna"); }},
        Change{"OneWhoIsDeactivated", [](auto& users) { return users.SetUserActive(u"anna", 0); }},
        Change{"OneWhosePasswordIsReset",
               [](auto& users) {
                 return users.ModifyUser(
                     Anna(u"quite another one", host::UserActiveChangePassword));
               }}),
    [](const auto& test) { return test.param.Name; });

}  // namespace
}  // namespace krx::test
