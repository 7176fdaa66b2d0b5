#include "directory/DirectoryTest.h"
#include "directory/Recorded.h"

namespace krx::test {
namespace {

using namespace host;
using runtime::DirectoryEntry;
using runtime::DirectoryKind;
using runtime::SearchIdentity;

// Answers as Active Directory gives them, to a panel that searches by what its machine is.
class ActiveDirectoryTest : public testing::Test {
 protected:
  ActiveDirectoryTest() {
    bench.rules = RulesFor({{u"dc1", 636, true}, {u"dc2", 636, true}});
    runtime::DirectoryRules& rules = bench.rules.Directory;
    rules.Kind = DirectoryKind::ActiveDirectory;
    rules.Base = u"DC=plant";
    rules.UserFilter = u"(sAMAccountName={user})";
    rules.GroupFilter = u"(member:1.2.840.113556.1.4.1941:={dn})";
    rules.Groups = {{u"Administrator", u"CN=Chefs,DC=plant"}, {u"Operator", u"CN=Panels,DC=plant"}};
    rules.NameAttribute = "sAMAccountName";
    rules.FullNameAttribute = "displayName";
    rules.SearchAs = SearchIdentity::Negotiate;
  }

  static DirectoryEntry Eva(const std::string& control = "512", const std::string& set = "") {
    DirectoryEntry entry{u"CN=Eva Meier,DC=plant", {}};
    entry.Attributes["samaccountname"] = {"eva"};
    entry.Attributes["displayname"] = {"Eva Meier"};
    entry.Attributes["useraccountcontrol"] = {control};
    entry.Attributes["lockouttime"] = {"0"};
    entry.Attributes["pwdlastset"] = {set.empty() ? "133500096000000000" : set};
    return entry;
  }

  static DirectoryEntry Panels() { return {u"cn=panels, dc=plant", {}}; }

  // Up to the bind of the user.
  void Found(DirectoryEntry eva = Eva()) {
    client.Answers({});
    client.Answers({}, {std::move(eva)});
    client.Answers({}, {Panels()});
  }

  static runtime::DirectoryAnswer Data(const std::string& number) {
    return {49,
            "80090308: LdapErr: DSID-0C09044E, comment: AcceptSecurityContext error, data " +
                number + ", v2580",
            {}};
  }

  RecordedClient client;
  DirectoryBench bench{client};
};

TEST_F(ActiveDirectoryTest, TheMachineSearchesAndTheUserBinds) {
  Found();
  client.Answers({});
  EXPECT_EQ(bench.LogOn(u"EVA", u"secret"), LogOnSucceeded);
  EXPECT_EQ(bench.last.User->Name, u"eva");
  EXPECT_EQ(bench.last.User->FullName, u"Eva Meier");
  EXPECT_EQ(bench.last.User->ClassName, u"Operator");
  EXPECT_EQ(bench.last.User->PasswordChangedOn, 45309);  // 2024-01-18
  EXPECT_THAT(client.asked,
              testing::ElementsAre(
                  "connect dc1", "negotiate", "search DC=plant (sAMAccountName=EVA)",
                  "search DC=plant (member:1.2.840.113556.1.4.1941:=CN=Eva Meier,DC=plant)",
                  "bind CN=Eva Meier,DC=plant secret"));
}

TEST_F(ActiveDirectoryTest, ItsReasonsBecomeTheCodesOfALogOn) {
  const std::pair<const char*, std::int32_t> recorded[] = {
      {"525", LogOnUnknownUser},         {"52e", LogOnInvalidPassword},
      {"530", LogOnUserDeactivated},     {"531", LogOnUserDeactivated},
      {"532", LogOnPasswordExpired},     {"533", LogOnUserDeactivated},
      {"701", LogOnUserDeactivated},     {"773", LogOnRenewPassword},
      {"775", LogOnTooManyFailedLogons},
  };
  for (const auto& [number, code] : recorded) {
    Found();
    client.Answers(Data(number));
    EXPECT_EQ(bench.LogOn(u"eva", u"secret"), code) << number;
  }
}

TEST_F(ActiveDirectoryTest, ADisabledUserIsNotEvenAskedFor) {
  Found(Eva("514"));
  EXPECT_EQ(bench.LogOn(u"eva", u"secret"), LogOnUserDeactivated);
}

TEST_F(ActiveDirectoryTest, APasswordThatWasNeverSetMustBeRenewed) {
  Found(Eva("512", "0"));
  client.Answers({});
  EXPECT_EQ(bench.LogOn(u"eva", u"secret"), LogOnRenewPassword);
}

TEST_F(ActiveDirectoryTest, AUserOfNoMappedGroupIsUnknownHere) {
  client.Answers({});
  client.Answers({}, {Eva()});
  client.Answers({}, {{u"CN=Others,DC=plant", {}}});
  EXPECT_EQ(bench.LogOn(u"eva", u"secret"), LogOnUnknownUser);
  EXPECT_EQ(bench.last.Name, u"");
}

TEST_F(ActiveDirectoryTest, UsersBindByTheirOwnNameWhereTheRulesSayHow) {
  bench.rules.Directory.SearchAs = SearchIdentity::Anonymous;
  bench.rules.Directory.BindAs = u"{user}@plant.example";
  client.Answers({});
  client.Answers({}, {Eva()});
  client.Answers({}, {Panels()});
  EXPECT_EQ(bench.LogOn(u"eva", u"secret"), LogOnSucceeded);
  EXPECT_EQ(client.asked[1], "bind eva@plant.example secret");
  EXPECT_TRUE(bench.users.List(bench.rules, {})->empty());
}

TEST_F(ActiveDirectoryTest, APasswordIsExchangedInQuotationMarks) {
  client.Answers({});
  client.Answers({}, {Eva()});
  client.Answers({});
  client.Answers({});
  EXPECT_EQ(bench.Change(u"eva", u"new", u"old"), ChangePasswordSucceeded);
  EXPECT_EQ(client.asked.back(), "exchange CN=Eva Meier,DC=plant unicodePwd \"old\" by \"new\"");
}

TEST_F(ActiveDirectoryTest, WhoMustRenewIsNotLetInSoThePanelSendsTheChange) {
  for (const char* number : {"773", "532"}) {
    client.asked.clear();
    client.Answers({});
    client.Answers({}, {Eva()});
    client.Answers(Data(number));
    client.Answers({});
    client.Answers({});
    EXPECT_EQ(bench.Change(u"eva", u"new", u"old"), ChangePasswordSucceeded);
    EXPECT_THAT(client.asked, testing::ElementsAre("connect dc1", "negotiate",
                                                   "search DC=plant (sAMAccountName=eva)",
                                                   "bind CN=Eva Meier,DC=plant old", "negotiate",
                                                   testing::StartsWith("exchange ")));
  }
}

TEST_F(ActiveDirectoryTest, ARefusedChangeSaysWhy) {
  client.Answers({});
  client.Answers({}, {Eva()});
  client.Answers({});
  client.Answers({19, "0000052D: AtrErr: DSID-03191083, #1:", {}});
  EXPECT_EQ(bench.Change(u"eva", u"new", u"old"), ChangePasswordNotAccepted);
  EXPECT_THAT(ToUtf8(bench.last.Outcome), testing::HasSubstr("0000052D"));
  for (const char* number : {"533", "775"}) {
    client.Answers({});
    client.Answers({}, {Eva()});
    client.Answers(Data(number));
    EXPECT_EQ(bench.Change(u"eva", u"new", u"old"), ChangePasswordNotAccepted);
  }
}

TEST_F(ActiveDirectoryTest, MembersOfLargeGroupsComeInParts) {
  DirectoryEntry chefs{u"CN=Chefs,DC=plant", {}};
  DirectoryEntry first_part = Panels();
  first_part.Attributes["member;range=0-1"] = {"CN=A,DC=plant", "CN=B,DC=plant"};
  DirectoryEntry last_part = Panels();
  last_part.Attributes["member;range=2-*"] = {"CN=Eva Meier,DC=plant"};
  for (int i = 0; i < 2; ++i) {  // for the names, which these groups do not tell, and for all
    client.Answers({});
    client.Answers({}, {chefs});
    client.Answers({}, {first_part});
    client.Answers({}, {last_part});
  }
  client.Answers({}, {Eva()});
  const auto list = bench.users.List(bench.rules, {});
  ASSERT_EQ(list->size(), 1u);
  EXPECT_EQ(list->at(u"eva").ClassName, u"Operator");
  client.asked.erase(client.asked.begin(), client.asked.begin() + 5);
  EXPECT_THAT(client.asked,
              testing::ElementsAre("connect dc1", "negotiate",
                                   "search CN=Chefs,DC=plant (objectClass=*) member",
                                   "search CN=Panels,DC=plant (objectClass=*) member",
                                   "search CN=Panels,DC=plant (objectClass=*) member;range=2-*",
                                   "search DC=plant (sAMAccountName=*)"));
}

TEST_F(ActiveDirectoryTest, ASilentServerIsAskedLast) {
  client.silent = {u"dc1"};
  for (int i = 0; i < 2; ++i) {
    Found();
    client.Answers({});
    EXPECT_EQ(bench.LogOn(u"eva", u"secret"), LogOnSucceeded);
  }
  EXPECT_EQ(std::count(client.asked.begin(), client.asked.end(), "connect dc1"), 1);
  client.silent = {u"dc2"};
  Found();
  client.Answers({});
  EXPECT_EQ(bench.LogOn(u"eva", u"secret"), LogOnSucceeded);
}

TEST_F(ActiveDirectoryTest, ABusyServerIsPassedOver) {
  client.Answers({51, "busy", {}});
  Found();
  client.Answers({});
  EXPECT_EQ(bench.LogOn(u"eva", u"secret"), LogOnSucceeded);
  EXPECT_EQ(client.asked[2], "connect dc2");
}

TEST_F(ActiveDirectoryTest, AnAnswerAboutNoUserIsAnErrorAndNoOtherServerIsAsked) {
  client.Answers({8, "00002028: LdapErr: DSID-0C090273, stronger auth required", {}});
  EXPECT_THROW(bench.LogOn(u"eva", u"secret"), Error);
  EXPECT_EQ(client.asked.size(), 2u);
}

TEST_F(ActiveDirectoryTest, SeveralEntriesOfOneNameLetNobodyIn) {
  client.Answers({});
  client.Answers({}, {Eva(), Eva()});
  EXPECT_THROW(bench.LogOn(u"eva", u"secret"), Error);
}

}  // namespace
}  // namespace krx::test
