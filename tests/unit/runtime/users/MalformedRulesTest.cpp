#include <functional>
#include <memory>
#include <optional>

#include "support/Errors.h"
#include "support/UserManagementTest.h"

// Each operation of the three interfaces while users.conf is malformed, in a process that has begun
// since then.
namespace krx::test {
namespace {

constexpr StringView kAnnasSecret = u"anna's own secret";

struct Operation {
  std::string Name;
  std::function<std::int32_t(runtime::UserManagement&)> Run;  // its code; of what has none, 0
  std::int32_t Succeeds = 0;
  std::optional<std::int32_t> CallFailed = std::nullopt;  // the code of failures that it has
  bool NeedsRules = true;
};

void PrintTo(const Operation& operation, std::ostream* out) {
  *out << operation.Name;
}

using runtime::UserDirectory;
using runtime::UserManagement;

std::int32_t ZeroIf(bool holds) {
  return holds ? 0 : -1;
}

const Operation kOperations[] = {
    {"LogOnUser",
     [](UserManagement& users) {
       return runtime::LogOnService(users).LogOnUser(u"anna", Secret(kAnnasSecret));
     },
     host::LogOnSucceeded},
    {"LogOffUser",
     [](UserManagement& users) { return runtime::LogOnService(users).LogOffUser(); },
     0,
     {},
     false},
    {"ChangeUserPassword",
     [](UserManagement& users) {
       return UserDirectory(users).ChangeUserPassword(u"anna", Secret(u"quite another one"),
                                                      Secret(kAnnasSecret));
     },
     host::ChangePasswordSucceeded, host::ChangePasswordCallFailed},
    {"CreateUser",
     [](UserManagement& users) { return UserDirectory(users).CreateUser(Record(u"berta")); },
     host::CreateUserSucceeded, host::CreateUserCallFailed},
    {"RemoveUser", [](UserManagement& users) { return UserDirectory(users).RemoveUser(u"anna"); },
     host::ModifyUserSucceeded, host::ModifyUserCallFailed},
    {"SetUserActive",
     [](UserManagement& users) { return UserDirectory(users).SetUserActive(u"anna", 0); },
     host::ModifyUserSucceeded, host::ModifyUserCallFailed},
    {"GetUserClass",
     [](UserManagement& users) {
       return ZeroIf(UserDirectory(users).GetUserClass(u"anna").ClassName == u"Operator");
     },
     0,
     {},
     false},
    {"GetUserInfo",
     [](UserManagement& users) {
       return ZeroIf(UserDirectory(users).GetUserInfo(u"anna").FullName == u"Full anna");
     }},
    {"ModifyUser",
     [](UserManagement& users) {
       return UserDirectory(users).ModifyUser(Record(u"anna", u"quite another one"));
     },
     host::ModifyUserSucceeded, host::ModifyUserCallFailed},
    {"GetUserNames",
     [](UserManagement& users) {
       return ZeroIf(UserDirectory(users).GetUserNames(u"").size() == 2);
     },
     0,
     {},
     false},
    {"GetCurrentUser",
     [](UserManagement& users) {
       return ZeroIf(UserDirectory(users).GetCurrentUser().Name == u"boss");
     },
     0,
     {},
     false},
    {"GetAdministrationMode",
     [](UserManagement& users) { return UserDirectory(users).GetAdministrationMode(); }, 1},
    {"GetUserClassInfo",
     [](UserManagement& users) {
       return ZeroIf(
           !runtime::ClassDirectory(users).GetUserClassInfo(u"Operator").DisplayText.empty());
     }},
    {"GetUserClasses",
     [](UserManagement& users) {
       return ZeroIf(runtime::ClassDirectory(users).GetUserClasses().Names.size() == 3);
     }},
};

class MalformedRulesTest : public UserManagementTest,
                           public testing::WithParamInterface<Operation> {
 protected:
  void SetUp() override {
    ProvisionAndLogOn();
    AddUser(u"anna", kAnnasSecret);
    Configure("minimum-length = 9\nminimum-length = ten\n");
  }
  // The administrator in a process that has begun with the malformed file.
  UserManagement& Later() {
    later_ = std::make_unique<UserManagement>(System(), folder, later_session_);
    later_->BeginSession(StoredRecord(u"boss"));
    CloseStore();
    return *later_;
  }
  // As users of a store are in which rules have never been kept.
  void ForgetGoodRules() {
    CloseStore();
    runtime::Database(folder / "users.db", {disk.Name()}, false).Run("DELETE FROM rules_in_force");
  }
  // What the test's configuration makes malformed: its second line stands below the quick hashes.
  std::string Fault() const {
    return (folder / "users.conf").string() + ", line 3: the setting stands already in line 2";
  }

 private:
  runtime::Session later_session_;
  std::unique_ptr<UserManagement> later_;
};

TEST_P(MalformedRulesTest, TheLastGoodOnesServe) {
  EXPECT_EQ(GetParam().Run(Later()), GetParam().Succeeds);
}

TEST_P(MalformedRulesTest, WithoutGoodOnesFileLineAndReasonAreTold) {
  ForgetGoodRules();
  UserManagement& users = Later();
  std::int32_t code = -1;
  const std::optional<Error> error = ErrorOf([&] { code = GetParam().Run(users); });
  if (!GetParam().NeedsRules) {
    EXPECT_FALSE(error);
    EXPECT_EQ(code, GetParam().Succeeds);
  } else if (GetParam().CallFailed) {
    EXPECT_FALSE(error);
    EXPECT_EQ(code, *GetParam().CallFailed);
    EXPECT_THAT(LastAuditLine(), testing::HasSubstr("failed: " + Fault()));
  } else {
    ASSERT_TRUE(error);
    EXPECT_EQ(error->Status(), runtime::kMalformedRules);
    EXPECT_THAT(ToUtf8(error->Description()), testing::StartsWith(Fault()));
  }
}

INSTANTIATE_TEST_SUITE_P(Of, MalformedRulesTest, testing::ValuesIn(kOperations),
                         [](const auto& test) { return test.param.Name; });

}  // namespace
}  // namespace krx::test
