#include "runtime/users/directory/PlantUsers.h"

#include "directory/DirectoryTest.h"
#include "directory/Recorded.h"
#include "runtime/users/directory/OfflineTable.h"
#include "support/UserManagementTest.h"

namespace krx::test {
namespace {

using runtime::DirectoryEntry;
using testing::ElementsAre;
using testing::HasSubstr;

// A panel with users of its own, and a directory of one server with one operator and one
// administrator.
class PlantUsersTest : public UserManagementTest {
 protected:
  static constexpr const char* kDirectory =
      "directory = ldaps://h1\ndirectory-base = dc=plant\n"
      "directory-class = Administrator | cn=administrators,dc=plant\n"
      "directory-class = Operator | cn=operators,dc=plant\n";

  PlantUsersTest() {
    ProvisionAndLogOn();
    Configure(kDirectory);
  }
  ~PlantUsersTest() override { threads.reset(); }

  static DirectoryEntry Person(const std::string& name) {
    DirectoryEntry entry{u"uid=" + String(name.begin(), name.end()) + u",dc=plant", {}};
    entry.Attributes["uid"] = {name};
    entry.Attributes["cn"] = {"Full " + name};
    entry.Attributes["pwdchangedtime"] = {"20260101120000Z"};
    return entry;
  }
  static DirectoryEntry Group(const String& name) { return {u"cn=" + name + u",dc=plant", {}}; }

  void Found(const std::string& name = "eva", const String& group = u"operators") {
    client.Answers({}, {Person(name)});
    client.Answers({}, {Group(group)});
  }
  void NotFound() { client.Answers({}); }

  std::int32_t LogOnPlant(const String& name, StringView password) {
    return plant_session.LogOnUser(name, Password(password));
  }
  void LogOnEva() {
    Found();
    client.Answers({});
    ASSERT_EQ(LogOnPlant(u"eva", u"secret"), host::LogOnSucceeded);
  }
  // Who is logged on, by somebody who knows no answer of the servers yet.
  host::CurrentUser CurrentAskedAnew() {
    runtime::DirectoryUsers anew(service, offline);
    return runtime::PlantUsers(management, directory, anew).GetCurrentUser();
  }

  RecordedClient client;
  std::unique_ptr<Threads> threads = std::make_unique<Threads>();
  runtime::DirectoryService service{client, *threads};
  runtime::OfflineTable kept{management.Store};
  runtime::OfflineUsers offline{kept, crypto, clock};
  runtime::DirectoryUsers of_directory{service, offline};
  runtime::PlantUsers plant{management, directory, of_directory};
  runtime::PlantSession plant_session{management, session, directory, of_directory};
};

TEST_F(PlantUsersTest, AUserOfTheDirectoryLogsOnAndIsRecorded) {
  LogOnEva();
  EXPECT_THAT(LastAuditLine(), HasSubstr("\teva\tlog-on\t-\tlogged on by the directory service, "
                                         "class Operator\n"));
  const host::CurrentUser current = plant.GetCurrentUser();
  EXPECT_TRUE(current.LoggedOn);
  EXPECT_EQ(current.Name, u"eva");
  EXPECT_EQ(current.ClassName, u"Operator");
  EXPECT_EQ(plant_session.LogOffUser(), 0);
  EXPECT_THAT(LastAuditLine(), HasSubstr("\teva\tlog-off\t"));
  EXPECT_FALSE(plant.GetCurrentUser().LoggedOn);
}

TEST_F(PlantUsersTest, TheUsersOfThisMachineAskNoServer) {
  EXPECT_EQ(LogOnPlant(u"boss", kBossSecret), host::LogOnSucceeded);
  EXPECT_EQ(LogOnPlant(u"boss", u"wrong"), host::LogOnInvalidPassword);
  EXPECT_TRUE(plant.GetUserClass(u"boss").Found);
  EXPECT_EQ(plant.GetUserInfo(u"boss").State, host::UserActive);
  EXPECT_EQ(plant.ChangeUserPassword(u"boss", Secret(u"another secret"), Secret(kBossSecret)),
            host::ChangePasswordSucceeded);
  EXPECT_TRUE(client.asked.empty());
}

TEST_F(PlantUsersTest, ARefusalIsRecordedAndAnUnknownNameIsNot) {
  Found();
  client.Answers({49, {}, {}});
  EXPECT_EQ(LogOnPlant(u"eva", u"wrong"), host::LogOnInvalidPassword);
  EXPECT_THAT(LastAuditLine(), HasSubstr("\teva\tlog-on\t-\trefused by the directory service: "
                                         "wrong password\n"));
  NotFound();
  EXPECT_EQ(LogOnPlant(u"a password", u"x"), host::LogOnUnknownUser);
  EXPECT_THAT(LastAuditLine(), HasSubstr("\t-\tlog-on\t-\trefused by the directory service: "
                                         "unknown user\n"));
}

TEST_F(PlantUsersTest, WithoutAServerALogOnIsAnErrorThatIsRecorded) {
  client.silent = {u"h1"};
  EXPECT_THROW(LogOnPlant(u"eva", u"secret"), runtime::DirectorySilence);
  EXPECT_THAT(LastAuditLine(), HasSubstr("failed: no directory server answers: ldaps://h1: "
                                         "connection refused"));
  EXPECT_EQ(LogOnPlant(u"boss", kBossSecret), host::LogOnSucceeded);
}

TEST_F(PlantUsersTest, ALogOnThatCannotBeRecordedLogsNobodyOn) {
  session.LogOffUser();
  crypto.HashFails = true;
  Found();
  client.Answers({});
  EXPECT_THROW(LogOnPlant(u"eva", u"secret"), Error);
  EXPECT_FALSE(plant.GetCurrentUser().LoggedOn);
}

TEST_F(PlantUsersTest, WhatTheDirectoryAdministersIsShownAndNotChanged) {
  for (int i = 0; i < 5; ++i)
    Found();
  EXPECT_EQ(plant.GetUserInfo(u"eva").FullName, u"Full eva");
  EXPECT_EQ(plant.GetUserInfo(u"eva").PasswordChangedOn, 46023);  // 2026-01-01
  EXPECT_EQ(plant.ModifyUser(Record(u"eva")), host::ModifyUserCallFailed);
  EXPECT_THAT(LastAuditLine(), HasSubstr("\tboss\tmodify user\teva\trefused: the directory service "
                                         "administers this user\n"));
  EXPECT_EQ(plant.RemoveUser(u"eva"), host::ModifyUserCallFailed);
  EXPECT_THAT(LastAuditLine(), HasSubstr("\tremove user\teva\trefused: "));
  EXPECT_EQ(plant.SetUserActive(u"eva", 0), host::ModifyUserCallFailed);
  EXPECT_THAT(LastAuditLine(), HasSubstr("\tdeactivate user\teva\trefused: "));
  Found();
  EXPECT_EQ(plant.CreateUser(Record(u"eva")), host::CreateUserExists);
  EXPECT_THAT(LastAuditLine(), HasSubstr("refused: the directory service has a user of this name"));
}

TEST_F(PlantUsersTest, UsersOfThisMachineAreChangedBesideTheDirectory) {
  NotFound();
  EXPECT_EQ(plant.CreateUser(Record(u"anna")), host::CreateUserSucceeded);
  EXPECT_EQ(plant.ModifyUser(Record(u"anna", u"second secret")), host::ModifyUserSucceeded);
  EXPECT_EQ(plant.RemoveUser(u"anna"), host::ModifyUserSucceeded);
  client.silent = {u"h1"};
  EXPECT_EQ(plant.CreateUser(Record(u"anna")), host::CreateUserCallFailed);
  EXPECT_THAT(LastAuditLine(), HasSubstr("no directory server answers"));
}

TEST_F(PlantUsersTest, AnAdministratorOfTheDirectoryAdministersUsersOfThisMachine) {
  Found("chef", u"administrators");
  client.Answers({});
  ASSERT_EQ(LogOnPlant(u"chef", u"secret"), host::LogOnSucceeded);
  NotFound();
  EXPECT_EQ(plant.CreateUser(Record(u"anna")), host::CreateUserSucceeded);
  EXPECT_THAT(LastAuditLine(), HasSubstr("\tchef\tcreate user\tanna\tcreated"));
  LogOnEva();
  NotFound();
  EXPECT_EQ(plant.CreateUser(Record(u"berta")), host::CreateUserCallFailed);
  EXPECT_THAT(LastAuditLine(), HasSubstr("no right to do so"));
}

TEST_F(PlantUsersTest, TheListHasBothAndANameThatBothHaveIsThisMachines) {
  AddUser(u"eva", u"eva's own secret");
  DirectoryEntry administrators = Group(u"administrators");
  administrators.Attributes["member"] = {"uid=chef,dc=plant"};
  DirectoryEntry operators = Group(u"operators");
  operators.Attributes["member"] = {"UID=Eva, DC=plant", "uid=zoe,dc=plant"};
  for (int i = 0; i < 2; ++i) {  // for the names, and for all
    client.Answers({}, {administrators});
    client.Answers({}, {operators});
  }
  client.Answers({}, {Person("zoe"), Person("Eva"), Person("chef"), Person("nobody")});
  EXPECT_THAT(plant.GetUserNames(u""), ElementsAre(u"boss", u"chef", u"eva", u"zoe"));
  EXPECT_THAT(plant.GetUserNames(u"Administrator"), ElementsAre(u"boss", u"chef"));
  EXPECT_EQ(plant.GetUserClass(u"zoe").ClassName, u"Operator");
  EXPECT_EQ(plant.GetUserInfo(u"eva").FullName, u"Full eva");
}

TEST_F(PlantUsersTest, AListIsShownWithoutAServerToo) {
  client.silent = {u"h1"};
  EXPECT_THAT(plant.GetUserNames(u""), ElementsAre(u"boss"));
  EXPECT_FALSE(plant.GetUserClass(u"eva").Found);
}

TEST_F(PlantUsersTest, APasswordIsChangedByTheServerAndRecorded) {
  client.Answers({}, {Person("eva")});
  client.Answers({});
  client.Answers({});
  EXPECT_EQ(plant.ChangeUserPassword(u"eva", Secret(u"new"), Secret(u"old")),
            host::ChangePasswordSucceeded);
  EXPECT_THAT(LastAuditLine(), HasSubstr("\teva\tchange password\t-\tchanged at the directory"));
  client.silent = {u"h1"};
  EXPECT_EQ(plant.ChangeUserPassword(u"eva", Secret(u"new"), Secret(u"old")),
            host::ChangePasswordCallFailed);
}

TEST_F(PlantUsersTest, OfflineLogOnsOutliveTheProcess) {
  Configure(std::string(kDirectory) + "directory-offline-days = 7\n");
  LogOnEva();
  client.silent = {u"h1"};
  runtime::OfflineTable again{management.Store};
  runtime::OfflineUsers after{again, crypto, clock};
  runtime::DirectoryUsers users{service, after};
  runtime::PlantSession next{management, session, directory, users};
  EXPECT_EQ(next.LogOnUser(u"eva", Secret(u"wrong")), host::LogOnInvalidPassword);
  EXPECT_EQ(next.LogOnUser(u"eva", Secret(u"secret")), host::LogOnSucceeded);
  EXPECT_THAT(LastAuditLine(), HasSubstr("\teva\tlog-on\t-\tlogged on offline, class Operator ("));
}

TEST_F(PlantUsersTest, WhomTheDirectoryLetsInNoMoreIsLoggedOff) {
  LogOnEva();
  Found();
  EXPECT_EQ(CurrentAskedAnew().Name, u"eva");
  NotFound();
  EXPECT_FALSE(CurrentAskedAnew().LoggedOn);
  EXPECT_THAT(LastAuditLine(),
              HasSubstr("\teva\tlog-off\t-\tthe directory service lets this user in no more\n"));
  EXPECT_FALSE(plant.GetCurrentUser().LoggedOn);
}

TEST_F(PlantUsersTest, WhoChangesHisGroupHasTheNewClassAtOnce) {
  LogOnEva();
  Found("eva", u"administrators");
  EXPECT_EQ(CurrentAskedAnew().ClassName, u"Administrator");
  EXPECT_EQ(management.Session.Current()->ClassName, u"Administrator");
}

TEST_F(PlantUsersTest, RulesThatNameNoDirectoryAnyMoreEndASessionByIt) {
  LogOnEva();
  Configure("");
  EXPECT_FALSE(plant.GetCurrentUser().LoggedOn);
  EXPECT_THAT(LastAuditLine(), HasSubstr("lets this user in no more"));
}

TEST_F(PlantUsersTest, AnotherLogOnReplacesAUserOfTheDirectory) {
  LogOnEva();
  Found("zoe");
  client.Answers({});
  EXPECT_EQ(LogOnPlant(u"zoe", u"secret"), host::LogOnSucceeded);
  const std::vector<runtime::AuditRecord> records = Records();
  ASSERT_GE(records.size(), 2u);
  EXPECT_EQ(records[records.size() - 2].Entry.Outcome, u"replaced by the log-on of zoe");
}

TEST_F(PlantUsersTest, WhomTheDirectoryKnowsNoMoreLogsOnOfflineNoMore) {
  Configure(std::string(kDirectory) + "directory-offline-days = 7\n");
  const std::pair<std::vector<DirectoryEntry>, int> refusals[] = {
      {{}, 1},               // gone
      {{Person("eva")}, 2},  // in no group of a class
  };
  for (const auto& [entries, answers] : refusals) {
    client.silent.clear();
    LogOnEva();
    client.Answers({}, entries);
    if (answers == 2) client.Answers({});
    EXPECT_EQ(LogOnPlant(u"EVA", u"secret"), host::LogOnUnknownUser);
    client.silent = {u"h1"};
    EXPECT_THROW(LogOnPlant(u"eva", u"secret"), runtime::DirectorySilence) << answers;
  }
}

TEST_F(PlantUsersTest, AnOldPasswordIsForgottenOfflineOnceItIsChanged) {
  Configure(std::string(kDirectory) + "directory-offline-days = 7\n");
  LogOnEva();
  client.Answers({}, {Person("eva")});
  client.Answers({});
  client.Answers({});
  ASSERT_EQ(plant.ChangeUserPassword(u"eva", Secret(u"new"), Secret(u"secret")),
            host::ChangePasswordSucceeded);
  client.silent = {u"h1"};
  EXPECT_THROW(LogOnPlant(u"eva", u"secret"), runtime::DirectorySilence);
}

TEST_F(PlantUsersTest, ThePasswordOfWhoSearchesHasAFileOfItsOwn) {
  Configure(std::string(kDirectory) + "directory-search-as = cn=panels,dc=plant\n");
  files.Put(folder / "directory-password.txt", "searcher's secret\r\n");
  client.Answers({});
  LogOnEva();
  EXPECT_EQ(client.asked[1], "bind cn=panels,dc=plant searcher's secret");
}

}  // namespace
}  // namespace krx::test
