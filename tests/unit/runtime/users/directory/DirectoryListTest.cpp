#include "runtime/users/directory/DirectoryList.h"

#include <algorithm>

#include "directory/DirectoryTest.h"
#include "directory/Recorded.h"

namespace krx::test {
namespace {

using runtime::DirectoryEntry;
using testing::ElementsAre;
using testing::HasSubstr;

constexpr const char* kAllUsers = "search dc=plant (&(objectClass=inetOrgPerson)(uid=*))";

// A directory of one server with operators alone.
class DirectoryListTest : public testing::Test {
 protected:
  DirectoryListTest() {
    bench.rules = RulesFor({{u"h1", 389, false}});
    bench.rules.Directory.Groups = {{u"Operator", u"cn=operators,dc=plant"}};
  }

  static DirectoryEntry Person(const std::string& name) {
    DirectoryEntry entry{u"uid=" + String(name.begin(), name.end()) + u",dc=plant", {}};
    entry.Attributes["uid"] = {name};
    entry.Attributes["cn"] = {"Full " + name};
    return entry;
  }

  void GroupOf(std::initializer_list<const char*> names) {
    DirectoryEntry group{u"cn=operators,dc=plant", {}};
    for (const char* const name : names)
      group.Attributes["member"].push_back("uid=" + std::string(name) + ",dc=plant");
    client.Answers({}, {std::move(group)});
  }

  void FoundAlone(const std::string& name) {
    client.Answers({}, {Person(name)});
    client.Answers({}, {{u"cn=operators,dc=plant", {}}});
  }

  std::vector<String> Names() {
    std::vector<String> names;
    for (const auto& [name, user] : *bench.users.List(bench.rules, {}))
      names.push_back(name);
    return names;
  }
  String FullNameOf(const String& user) {
    const auto found = bench.users.Find(bench.rules, {}, user);
    return found ? found->FullName : String();
  }
  std::ptrdiff_t TimesAllWereRead() const {
    return std::count(client.asked.begin(), client.asked.end(), kAllUsers);
  }

  RecordedClient client;
  DirectoryBench bench{client};
};

TEST_F(DirectoryListTest, AListOfNamesReadsTheGroupsAlone) {
  GroupOf({"zoe", "Eva"});
  EXPECT_THAT(Names(), ElementsAre(u"Eva", u"zoe"));
  EXPECT_THAT(client.asked,
              ElementsAre("connect h1", "search cn=operators,dc=plant (objectClass=*) member"));
}

TEST_F(DirectoryListTest, WhoAsksForOneUserAsksForHimAloneAndForASecondOneForAll) {
  GroupOf({"eva", "zoe"});
  EXPECT_EQ(Names().size(), 2u);
  for (int i = 0; i < 2; ++i) {
    FoundAlone("eva");
    EXPECT_EQ(FullNameOf(u"eva"), u"Full eva");
  }
  EXPECT_EQ(TimesAllWereRead(), 0);
  GroupOf({"eva", "zoe"});
  client.Answers({}, {Person("eva"), Person("zoe")});
  EXPECT_EQ(FullNameOf(u"zoe"), u"Full zoe");
  EXPECT_EQ(FullNameOf(u"eva"), u"Full eva");
  EXPECT_EQ(TimesAllWereRead(), 1);
}

TEST_F(DirectoryListTest, AStaleListTakesNewNamesAndGoesOnTellingWhatItKnows) {
  GroupOf({"eva", "old"});
  FoundAlone("eva");
  GroupOf({"eva", "old"});
  client.Answers({}, {Person("eva"), Person("old")});
  EXPECT_EQ(bench.WholeList()->size(), 2u);
  bench.rules.Directory.ListMinutes = 0;  // stale at once
  GroupOf({"eva", "zoe"});
  EXPECT_THAT(Names(), ElementsAre(u"eva", u"zoe"));
  EXPECT_EQ(TimesAllWereRead(), 1);
  client.silent = {u"h1"};
  EXPECT_THAT(Names(), ElementsAre(u"eva", u"zoe"));
  EXPECT_EQ(FullNameOf(u"eva"), u"Full eva");
}

}  // namespace
}  // namespace krx::test
