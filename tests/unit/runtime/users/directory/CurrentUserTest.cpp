#include "directory/DirectoryTest.h"
#include "directory/Recorded.h"

namespace krx::test {
namespace {

using runtime::DirectoryEntry;

// Eva is logged on by the directory, and what is known of her is stale at once.
class CurrentUserTest : public testing::Test {
 protected:
  CurrentUserTest() {
    bench.rules = RulesFor({{u"h1", 389, false}});
    bench.rules.Directory.ListMinutes = 0;
    Found();
    client.Answers({});
    EXPECT_EQ(bench.LogOn(u"eva", u"secret"), host::LogOnSucceeded);
    client.asked.clear();
  }

  void Found(const String& group = u"operators", const char* locked = nullptr) {
    DirectoryEntry eva{u"uid=eva,dc=plant", {}};
    eva.Attributes["uid"] = {"eva"};
    if (locked) eva.Attributes["pwdaccountlockedtime"] = {locked};
    client.Answers({}, {eva});
    client.Answers({}, {{u"cn=" + group + u",ou=groups,dc=plant", {}}});
  }

  std::optional<runtime::DirectoryUser> Current(const String& name = u"eva") {
    return bench.users.Current(bench.rules, {}, name);
  }

  RecordedClient client;
  DirectoryBench bench{client};
};

TEST_F(CurrentUserTest, WhatTheServerSaysNowIsTrueOfWhoIsLoggedOn) {
  Found(u"engineers");
  ASSERT_TRUE(Current());
  Found(u"administrators");
  EXPECT_EQ(Current()->ClassName, u"Administrator");
}

TEST_F(CurrentUserTest, NobodyAsksAgainBeforeTheListIsStale) {
  bench.rules.Directory.ListMinutes = 5;
  Found();
  EXPECT_EQ(Current()->ClassName, u"Operator");
  const std::size_t asked = client.asked.size();
  EXPECT_EQ(Current()->ClassName, u"Operator");
  EXPECT_EQ(client.asked.size(), asked);
}

TEST_F(CurrentUserTest, WhoIsDeactivatedOrGoneIsNoUserAnyMore) {
  Found(u"operators", "000001010000Z");
  EXPECT_FALSE(Current());
  client.Answers({});
  EXPECT_FALSE(Current());
}

TEST_F(CurrentUserTest, AServerThatKeepsSilentEndsNoSessionAndIsLeftInPeace) {
  client.silent = {u"h1"};
  EXPECT_EQ(Current()->ClassName, u"Operator");
  EXPECT_EQ(client.asked.size(), 1u);
  client.silent.clear();
  EXPECT_EQ(Current()->ClassName, u"Operator");
  EXPECT_EQ(client.asked.size(), 1u) << "asked again only after half a minute";
}

TEST_F(CurrentUserTest, SomebodyElseIsAskedForAndNotKnownWithoutAServer) {
  client.silent = {u"h1"};
  EXPECT_FALSE(Current(u"olga"));
  EXPECT_EQ(client.asked.size(), 1u);
}

TEST_F(CurrentUserTest, WhereNobodyCanSearchTheLogOnsAnswerHolds) {
  bench.rules.Directory.BindAs = u"uid={user},dc=plant";
  EXPECT_EQ(Current()->ClassName, u"Operator");
  EXPECT_TRUE(client.asked.empty());
  EXPECT_FALSE(Current(u"olga"));
}

}  // namespace
}  // namespace krx::test
