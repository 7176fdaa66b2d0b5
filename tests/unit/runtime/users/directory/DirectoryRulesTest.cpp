#include <gtest/gtest.h>

#include "runtime/core/KorvelError.h"
#include "runtime/users/rules/RulesFile.h"

namespace krx::test {
namespace {

using runtime::DirectoryKind;
using runtime::DirectoryRules;
using runtime::ParseRules;
using runtime::SearchIdentity;

const std::string kLeast =
    "directory = ldaps://h1\ndirectory-base = dc=plant\n"
    "directory-class = Operator | cn=operators,dc=plant\n";

String RefusalOf(const std::string& bytes) {
  try {
    ParseRules(u"users.conf", bytes);
    return u"accepted";
  } catch (const Error& failure) {
    EXPECT_EQ(failure.Status(), runtime::kMalformedRules);
    return failure.Description();
  }
}

TEST(DirectoryRulesTest, WithoutAServerThereIsNoDirectory) {
  EXPECT_FALSE(ParseRules(u"", "").Directory.InUse());
}

TEST(DirectoryRulesTest, WhatIsLeftOutHasItsDefault) {
  const DirectoryRules rules = ParseRules(u"", kLeast).Directory;
  ASSERT_EQ(rules.Servers.size(), 1u);
  EXPECT_EQ(rules.Servers[0].Port, 636);
  EXPECT_TRUE(rules.Servers[0].Encrypted);
  EXPECT_EQ(rules.Kind, DirectoryKind::OpenLdap);
  EXPECT_EQ(rules.UserFilter, u"(&(objectClass=inetOrgPerson)(uid={user}))");
  EXPECT_EQ(rules.GroupFilter, u"(&(objectClass=groupOfNames)(member={dn}))");
  EXPECT_EQ(rules.BindAs, u"{dn}");
  EXPECT_EQ(rules.SearchAs, SearchIdentity::Anonymous);
  EXPECT_FALSE(rules.AllowsUnencrypted);
  EXPECT_EQ(rules.AnswerSeconds, 5);
  EXPECT_EQ(rules.ListMinutes, 5);
  EXPECT_EQ(rules.OfflineDays, 0);
}

TEST(DirectoryRulesTest, EverySettingIsRead) {
  const DirectoryRules rules =
      ParseRules(u"",
                 "directory = ldaps://h1  ldaps://h2.plant.example:1636 ldap://[::1]:3389\n"
                 "directory-kind = active-directory\n"
                 "directory-base = DC=plant,DC=example\n"
                 "directory-user-filter = (sAMAccountName={user})\n"
                 "directory-group-filter = (member:1.2.840.113556.1.4.1941:={dn})\n"
                 "directory-class = Administrator | CN=Chefs | of,DC=plant\n"
                 "directory-class = Operator | CN=Operators,DC=plant\n"
                 "directory-name = sAMAccountName\n"
                 "directory-full-name = displayName\n"
                 "directory-comment = title\n"
                 "directory-member = uniqueMember\n"
                 "directory-bind-as = {user}@plant.example\n"
                 "directory-search-as = negotiate\n"
                 "directory-unencrypted = allowed\n"
                 "directory-answer-seconds = 3\n"
                 "directory-list-minutes = 10\n"
                 "directory-offline-days = 7\n")
          .Directory;
  ASSERT_EQ(rules.Servers.size(), 3u);
  EXPECT_EQ(rules.Servers[0].Address(), u"ldaps://h1");
  EXPECT_EQ(rules.Servers[1].Address(), u"ldaps://h2.plant.example:1636");
  EXPECT_EQ(rules.Servers[2].Address(), u"ldap://[::1]:3389");
  EXPECT_EQ(rules.Servers[2].Host, u"::1");
  EXPECT_EQ(rules.Kind, DirectoryKind::ActiveDirectory);
  EXPECT_EQ(rules.Base, u"DC=plant,DC=example");
  EXPECT_EQ(rules.UserFilter, u"(sAMAccountName={user})");
  EXPECT_EQ(rules.GroupFilter, u"(member:1.2.840.113556.1.4.1941:={dn})");
  ASSERT_EQ(rules.Groups.size(), 2u);
  EXPECT_EQ(rules.Groups[0],
            (runtime::DirectoryGroup{u"Administrator", u"CN=Chefs | of,DC=plant"}));
  EXPECT_EQ(rules.NameAttribute, "sAMAccountName");
  EXPECT_EQ(rules.FullNameAttribute, "displayName");
  EXPECT_EQ(rules.CommentAttribute, "title");
  EXPECT_EQ(rules.MemberAttribute, "uniqueMember");
  EXPECT_EQ(rules.BindAs, u"{user}@plant.example");
  EXPECT_EQ(rules.SearchAs, SearchIdentity::Negotiate);
  EXPECT_TRUE(rules.AllowsUnencrypted);
  EXPECT_EQ(rules.AnswerSeconds, 3);
  EXPECT_EQ(rules.ListMinutes, 10);
  EXPECT_EQ(rules.OfflineDays, 7);
}

TEST(DirectoryRulesTest, NamesOfServersAndAttributesHaveLettersDigitsAndHyphens) {
  const DirectoryRules rules =
      ParseRules(u"",
                 "directory = ldaps://Panel-7.plant.example:65535 ldaps://10.0.0.1:1\n"
                 "directory-base = dc=plant\n"
                 "directory-class = Operator | cn=operators,dc=plant\n"
                 "directory-name = x-Attribute9\n"
                 "directory-search-as = anonymous\n"
                 "directory-bind-as = cn=both,{dn}{user}\n"
                 "directory-kind = openldap\n"
                 "directory-unencrypted = refused\n")
          .Directory;
  EXPECT_EQ(rules.Servers[0].Address(), u"ldaps://Panel-7.plant.example:65535");
  EXPECT_EQ(rules.Servers[1].Port, 1);
  EXPECT_EQ(rules.NameAttribute, "x-Attribute9");
  EXPECT_EQ(rules.SearchAs, SearchIdentity::Anonymous);
  EXPECT_EQ(rules.BindAs, u"cn=both,{dn}{user}");
  EXPECT_EQ(rules.Kind, DirectoryKind::OpenLdap);
  EXPECT_FALSE(rules.AllowsUnencrypted);
}

TEST(DirectoryRulesTest, OnlyThisMachineIsSpokenToWithoutEncryption) {
  for (const char* host : {"localhost", "LOCALHOST", "127.0.0.1", "127.1.2.3", "[::1]"}) {
    const std::string rest = kLeast.substr(kLeast.find('\n'));
    EXPECT_EQ(RefusalOf("directory = ldap://" + std::string(host) + rest), u"accepted") << host;
  }
  for (const char* host :
       {"127.plant.example", "127.0.0.x", "127.0.0.-1", "127.0.0.1.plant.example",
        "localhost.example", "10.0.0.1", "128.0.0.1", "[::2]", "h1"}) {
    const std::string rest = kLeast.substr(kLeast.find('\n'));
    const std::string bytes = "directory = ldap://" + std::string(host) + rest;
    EXPECT_NE(RefusalOf(bytes).find(u"would show passwords on the network"), String::npos) << host;
    EXPECT_EQ(RefusalOf(bytes + "directory-unencrypted = allowed"), u"accepted") << host;
  }
}

TEST(DirectoryRulesTest, RefusalsNameFileLineAndReason) {
  const std::pair<std::string, StringView> cases[] = {
      {"directory = http://h1", u"users.conf, line 1: a server begins with ldaps:// or ldap://"},
      {"directory = ldaps://", u"users.conf, line 1: this is no name of a server"},
      {"directory = ldaps://h1/dc=plant", u"users.conf, line 1: this is no name of a server"},
      {"directory = ldaps://h1:0",
       u"users.conf, line 1: a server ends with its name or with a port between 1 and 65535"},
      {"directory = ldaps://h1:x",
       u"users.conf, line 1: a server ends with its name or with a port between 1 and 65535"},
      {"directory = ldaps://h1:65536",
       u"users.conf, line 1: a server ends with its name or with a port between 1 and 65535"},
      {"directory = ldaps://[::1]x",
       u"users.conf, line 1: a server ends with its name or with a port between 1 and 65535"},
      {"directory = ldaps://h_1", u"users.conf, line 1: this is no name of a server"},
      {"directory = ldaps://h{1}", u"users.conf, line 1: this is no name of a server"},
      {"directory = ldaps://[::1", u"users.conf, line 1: \"]\" is missing"},
      {"directory = ldaps://a ldaps://b ldaps://c ldaps://d ldaps://e",
       u"users.conf, line 1: these are more than four servers"},
      {"directory =", u"users.conf, line 1: the value is missing"},
      {"directory-bass = x", u"users.conf, line 1: there is no setting \"directory-bass\""},
      {"directory-base = x\ndirectory-base = y",
       u"users.conf, line 2: the setting stands already in line 1"},
      {"directory-base = dc=plant", u"users.conf, line 1: the setting directory is missing"},
      {"directory = ldaps://h1", u"users.conf, line 1: the setting directory-base is missing"},
      {"directory = ldaps://h1\ndirectory-base = dc=plant",
       u"users.conf, line 2: no directory-class maps a group"},
      {"directory-class = Operator",
       u"users.conf, line 1: a group needs class | distinguished name"},
      {"directory-class = Operator | operators",
       u"users.conf, line 1: this is no distinguished name"},
      {kLeast + "directory-class = Nobody | cn=x",
       u"users.conf, line 4: directory-class names the class \"Nobody\", which there is not"},
      {"directory-user-filter = uid={user}",
       u"users.conf, line 1: a filter stands in parentheses that are in pairs"},
      {"directory-user-filter = (uid={user}))",
       u"users.conf, line 1: a filter stands in parentheses that are in pairs"},
      {"directory-user-filter = (uid={user})(a=b)",
       u"users.conf, line 1: a filter stands in parentheses that are in pairs"},
      {"directory-group-filter = (uid=eva)",
       u"users.conf, line 1: neither {dn} nor {user} is in it"},
      {kLeast + "directory-user-filter = (member={dn})",
       u"users.conf, line 4: {user} is missing in directory-user-filter"},
      {"directory-bind-as = cn=panel", u"users.conf, line 1: neither {dn} nor {user} is in it"},
      {"directory-user-filter = (uid={user}",
       u"users.conf, line 1: a filter stands in parentheses that are in pairs"},
      {"directory-name = {uid}", u"users.conf, line 1: this is no name of an attribute"},
      {"directory-name = u_id", u"users.conf, line 1: this is no name of an attribute"},
      {"directory-name = u:id", u"users.conf, line 1: this is no name of an attribute"},
      {"directory-name = u id", u"users.conf, line 1: this is no name of an attribute"},
      {"directory-name = uid)(x", u"users.conf, line 1: this is no name of an attribute"},
      {"directory-kind = novell", u"users.conf, line 1: openldap or active-directory is expected"},
      {"directory-unencrypted = yes", u"users.conf, line 1: refused or allowed is expected"},
      {"directory-answer-seconds = 0", u"users.conf, line 1: the number is not between 1 and 60"},
      {"directory-offline-days = 91", u"users.conf, line 1: the number is not between 0 and 90"},
      {"directory-list-minutes = x", u"users.conf, line 1: a whole number is expected"},
  };
  for (const auto& [bytes, refusal] : cases)
    EXPECT_EQ(RefusalOf(bytes), refusal) << bytes;
}

}  // namespace
}  // namespace krx::test
