#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <atomic>
#include <stdexcept>

#include "directory/DirectoryTest.h"
#include "directory/OpenLdapClient.h"
#include "directory/Slapd.h"

namespace krx::test {
namespace {

using namespace host;
using runtime::DirectorySilence;
using testing::HasSubstr;

// One server of the plant.
class SlapdTest : public testing::Test {
 protected:
  SlapdTest() { bench.rules = RulesFor({server.Server()}); }

  ServerFolder folder;
  Slapd server{folder};
  OpenLdapClient client;
  DirectoryBench bench{client};
};

TEST_F(SlapdTest, ARightPasswordLogsOnWithTheClassOfTheFirstGroup) {
  EXPECT_EQ(bench.LogOn(u"eva", kPlantPassword), LogOnSucceeded);
  EXPECT_EQ(bench.last.User->ClassName, u"Operator");
  EXPECT_EQ(bench.last.User->FullName, u"Eva Meier");
  EXPECT_EQ(bench.last.User->Comment, u"Comment on eva");
  EXPECT_EQ(bench.LogOn(u"olga", kPlantPassword), LogOnSucceeded);
  EXPECT_EQ(bench.last.User->ClassName, u"Engineer");
  EXPECT_EQ(bench.LogOn(u"EVA", kPlantPassword), LogOnSucceeded);
  EXPECT_EQ(bench.last.User->Name, u"eva");
}

TEST_F(SlapdTest, EveryStateOfAUserBecomesItsOwnCode) {
  EXPECT_EQ(bench.LogOn(u"eva", u"wrong"), LogOnInvalidPassword);
  EXPECT_EQ(bench.last.Name, u"eva");
  EXPECT_EQ(bench.LogOn(u"nobody", kPlantPassword), LogOnUnknownUser);
  EXPECT_EQ(bench.last.Name, u"");
  EXPECT_EQ(bench.LogOn(u"gast", kPlantPassword), LogOnUnknownUser);
  EXPECT_THAT(ToUtf8(bench.last.Outcome), HasSubstr("in no group that has a class"));
  EXPECT_EQ(bench.LogOn(u"neu", kPlantPassword), LogOnRenewPassword);
  EXPECT_EQ(bench.LogOn(u"alt", kPlantPassword), LogOnPasswordExpired);
  EXPECT_EQ(bench.LogOn(u"milde", kPlantPassword), LogOnPasswordExpired);
  EXPECT_EQ(bench.LogOn(u"ruhend", kPlantPassword), LogOnUserDeactivated);
  EXPECT_EQ(bench.LogOn(u"gesperrt", kPlantPassword), LogOnTooManyFailedLogons);
}

TEST_F(SlapdTest, TheServersOwnCountLocksAUserOut) {
  for (int i = 0; i < 3; ++i)
    EXPECT_EQ(bench.LogOn(u"eva", u"wrong"), LogOnInvalidPassword);
  EXPECT_EQ(bench.LogOn(u"eva", kPlantPassword), LogOnTooManyFailedLogons);
  EXPECT_EQ(bench.users.Find(bench.rules, {}, u"eva")->State, UserLocked);
}

TEST_F(SlapdTest, AnEmptyPasswordIsWrongAndNeverAskedFor) {
  EXPECT_EQ(bench.LogOn(u"eva", u""), LogOnInvalidPassword);
  EXPECT_EQ(bench.LogOn(u"eva", StringView(u"Sieben Ventile\0", 15)), LogOnInvalidPassword);
}

TEST_F(SlapdTest, HostileNamesFindNobody) {
  for (const char16_t* name : {u"*", u"e*", u"eva)(uid=*", u"*)(objectClass=*", u"\\2a", u"eva\\",
                               u"eva,ou=people", u"(", u"eva)(|(uid=*"})
    EXPECT_EQ(bench.LogOn(name, kPlantPassword), LogOnUnknownUser) << ToUtf8(name);
}

TEST_F(SlapdTest, APasswordIsChangedByTheServer) {
  EXPECT_EQ(bench.Change(u"eva", u"Acht Pumpen", u"wrong"), ChangePasswordInvalidPassword);
  EXPECT_EQ(bench.Change(u"eva", u"short", kPlantPassword), ChangePasswordInvalidLength);
  EXPECT_EQ(bench.Change(u"eva", u"", kPlantPassword), ChangePasswordInvalidLength);
  EXPECT_EQ(bench.Change(u"eva", kPlantPassword, kPlantPassword), ChangePasswordNotAccepted);
  EXPECT_EQ(bench.Change(u"nobody", u"Acht Pumpen", kPlantPassword), ChangePasswordUnknownUser);
  EXPECT_EQ(bench.Change(u"eva", u"Acht P\u00FCmpen", kPlantPassword), ChangePasswordSucceeded);
  EXPECT_EQ(bench.LogOn(u"eva", kPlantPassword), LogOnInvalidPassword);
  EXPECT_EQ(bench.LogOn(u"eva", u"Acht P\u00FCmpen"), LogOnSucceeded);
}

TEST_F(SlapdTest, WhoHasToRenewThePasswordRenewsIt) {
  EXPECT_EQ(bench.Change(u"neu", u"Acht Pumpen", kPlantPassword), ChangePasswordSucceeded);
  EXPECT_EQ(bench.LogOn(u"neu", u"Acht Pumpen"), LogOnSucceeded);
  EXPECT_EQ(bench.Change(u"milde", u"Acht Pumpen", kPlantPassword), ChangePasswordSucceeded);
  EXPECT_EQ(bench.LogOn(u"milde", u"Acht Pumpen"), LogOnSucceeded);
}

TEST_F(SlapdTest, AnExpiredPasswordIsRenewedAgainstItself) {
  EXPECT_EQ(bench.Change(u"alt", u"Acht Pumpen", u"wrong"), ChangePasswordInvalidPassword);
  EXPECT_EQ(bench.Change(u"alt", u"Acht Pumpen", kPlantPassword), ChangePasswordSucceeded);
  EXPECT_EQ(bench.LogOn(u"alt", u"Acht Pumpen"), LogOnSucceeded);
}

TEST_F(SlapdTest, TheListShowsEveryUserWhoHasAClass) {
  const auto list = bench.WholeList();
  std::string shown;
  for (const auto& [name, user] : *list)
    shown += ToUtf8(name + u"/" + user.ClassName + u"/" + ToString(user.State) + u" ");
  EXPECT_EQ(shown,
            "alt/Operator/0 boss/Administrator/0 eva/Operator/0 gesperrt/Operator/2 "
            "milde/Operator/0 neu/Operator/3 olga/Engineer/0 ruhend/Operator/1 ");
}

TEST_F(SlapdTest, AnEntryThatSearchesLogsOnWithItsPassword) {
  bench.rules.Directory.SearchAs = runtime::SearchIdentity::Entry;
  bench.rules.Directory.SearchDn = u"uid=gast,ou=people,dc=plant";
  EXPECT_THROW(bench.LogOn(u"eva", kPlantPassword), Error);
  bench.search_password.emplace(u"wrong");
  EXPECT_THROW(bench.LogOn(u"eva", kPlantPassword), Error);
  bench.search_password.emplace(kPlantPassword);
  EXPECT_EQ(bench.LogOn(u"eva", kPlantPassword), LogOnSucceeded);
}

TEST_F(SlapdTest, UsersCanBindByANameMadeOfTheirs) {
  bench.rules.Directory.BindAs = u"uid={user},ou=people,dc=plant";
  EXPECT_EQ(bench.LogOn(u"eva", kPlantPassword), LogOnSucceeded);
  EXPECT_EQ(bench.LogOn(u"eva,ou=people", kPlantPassword), LogOnInvalidPassword);
  EXPECT_EQ(bench.last.Name, u"");  // it may be a password
}

TEST_F(SlapdTest, AUserDisabledAtTheServerIsLetInNoMore) {
  EXPECT_EQ(bench.LogOn(u"eva", kPlantPassword), LogOnSucceeded);
  server.Modify(
      "dn: uid=eva,ou=people,dc=plant\nchangetype: modify\nadd: pwdAccountLockedTime\n"
      "pwdAccountLockedTime: 000001010000Z\n");
  EXPECT_EQ(bench.LogOn(u"eva", kPlantPassword), LogOnUserDeactivated);
}

TEST_F(SlapdTest, WithoutAServerOnlyTheOfflinePeriodLetsAnybodyIn) {
  EXPECT_EQ(bench.LogOn(u"eva", kPlantPassword), LogOnSucceeded);
  EXPECT_TRUE(bench.kept.Records.empty());
  bench.rules.Directory.OfflineDays = 7;
  EXPECT_EQ(bench.LogOn(u"eva", kPlantPassword), LogOnSucceeded);
  server.Kill();
  EXPECT_EQ(bench.LogOn(u"eva", kPlantPassword), LogOnSucceeded);
  EXPECT_THAT(ToUtf8(bench.last.Outcome), HasSubstr("logged on offline, class Operator"));
  EXPECT_EQ(bench.LogOn(u"eva", u"wrong"), LogOnInvalidPassword);
  EXPECT_THROW(bench.LogOn(u"olga", kPlantPassword), DirectorySilence);
  EXPECT_THROW(bench.Change(u"eva", u"Acht Pumpen", kPlantPassword), DirectorySilence);
  bench.rules.Directory.OfflineDays = 0;
  EXPECT_THROW(bench.LogOn(u"eva", kPlantPassword), DirectorySilence);
  server.Start();
  EXPECT_EQ(bench.LogOn(u"eva", kPlantPassword), LogOnSucceeded);
}

TEST_F(SlapdTest, TheOfflinePeriodEndsAndTheNextServerBeginsAnother) {
  constexpr std::int64_t kPeriod = std::int64_t{7} * 86'400;
  bench.rules.Directory.OfflineDays = 7;
  EXPECT_EQ(bench.LogOn(u"eva", kPlantPassword), LogOnSucceeded);
  server.Kill();
  bench.clock.Seconds += kPeriod - 1;
  EXPECT_EQ(bench.LogOn(u"eva", kPlantPassword), LogOnSucceeded);
  bench.clock.Seconds += 1;
  EXPECT_THROW(bench.LogOn(u"eva", kPlantPassword), DirectorySilence);
  server.Start();
  EXPECT_EQ(bench.LogOn(u"eva", kPlantPassword), LogOnSucceeded);
  server.Kill();
  bench.clock.Seconds += kPeriod - 1;
  EXPECT_EQ(bench.LogOn(u"eva", kPlantPassword), LogOnSucceeded);
}

TEST_F(SlapdTest, AServerThatLetsNobodyInEndsTheOfflinePeriod) {
  bench.rules.Directory.OfflineDays = 7;
  EXPECT_EQ(bench.LogOn(u"eva", kPlantPassword), LogOnSucceeded);
  EXPECT_EQ(bench.LogOn(u"eva", u"wrong"), LogOnInvalidPassword);  // says nothing against her
  server.Modify(
      "dn: uid=eva,ou=people,dc=plant\nchangetype: modify\nadd: pwdAccountLockedTime\n"
      "pwdAccountLockedTime: 000001010000Z\n");
  EXPECT_EQ(bench.LogOn(u"eva", kPlantPassword), LogOnUserDeactivated);
  server.Kill();
  EXPECT_THROW(bench.LogOn(u"eva", kPlantPassword), DirectorySilence);
}

TEST_F(SlapdTest, AUserOfAGroupInAGroupHasTheClassOfTheInnerOneAlone) {
  server.Modify(
      "dn: cn=inner,ou=groups,dc=plant\nchangetype: add\nobjectClass: groupOfNames\n"
      "cn: inner\nmember: uid=gast,ou=people,dc=plant\n\n"
      "dn: cn=operators,ou=groups,dc=plant\nchangetype: modify\nadd: member\n"
      "member: cn=inner,ou=groups,dc=plant\n");
  EXPECT_EQ(bench.LogOn(u"gast", kPlantPassword), LogOnUnknownUser);
  EXPECT_FALSE(bench.WholeList()->contains(u"gast"));
  bench.rules.Directory.Groups.push_back({u"Operator", u"cn=inner,ou=groups,dc=plant"});
  EXPECT_EQ(bench.LogOn(u"gast", kPlantPassword), LogOnSucceeded);
  EXPECT_EQ(bench.last.User->ClassName, u"Operator");
  EXPECT_EQ(bench.WholeList()->at(u"gast").ClassName, u"Operator");
}

// Two servers that replicate each other.
class TwoSlapdTest : public testing::Test {
 protected:
  TwoSlapdTest() { bench.rules = RulesFor({first.Server(), second.Server()}); }

  // A bench that asks one server alone.
  void WaitUntilReplicated(const Slapd& server, const String& name, std::int32_t state) {
    DirectoryBench alone(client);
    alone.rules = RulesFor({server.Server()});
    for (;;) {
      try {
        const auto user = alone.users.FindForSure(alone.rules, {}, name);
        if (user && user->State == state) return;
      } catch (const Error&) {
        // The group may come later than the base of the tree.
      }
      std::this_thread::yield();
    }
  }

  ServerFolder folder;
  int first_port = FreePort();
  int second_port = FreePort();
  Slapd first{folder, {"follows=" + std::to_string(second_port)}, 1, first_port};
  Slapd second{folder, {"follows=" + std::to_string(first_port), "empty"}, 2, second_port};
  OpenLdapClient client;
  DirectoryBench bench{client};
};

TEST_F(TwoSlapdTest, OneIsKilledInTheMiddleOfLogOnsAndNobodyNoticesIt) {
  WaitUntilReplicated(second, u"boss", UserActive);
  std::atomic<int> done = 0;
  std::atomic<int> refused = 0;
  std::vector<std::thread> operators;
  operators.reserve(3);
  for (int i = 0; i < 3; ++i) {
    operators.emplace_back([&] {
      for (int log_on = 0; log_on < 40; ++log_on) {
        const auto outcome = bench.users.LogOn(bench.rules, {}, u"boss", Password(kPlantPassword));
        if (outcome.Code != LogOnSucceeded) ++refused;
        ++done;
      }
    });
  }
  while (done < 30)
    std::this_thread::yield();
  first.Kill();
  for (std::thread& one : operators)
    one.join();
  EXPECT_EQ(done, 120);
  EXPECT_EQ(refused, 0);
}

TEST_F(TwoSlapdTest, BothKilledIsSilenceThatNamesBoth) {
  first.Kill();
  second.Kill();
  try {
    bench.LogOn(u"eva", kPlantPassword);
    FAIL() << "nobody is there to let him in";
  } catch (const DirectorySilence& silence) {
    for (const Slapd* server : {&first, &second})
      EXPECT_THAT(silence.what(), HasSubstr(ToUtf8(server->Server().Address())));
  }
}

TEST_F(TwoSlapdTest, AUserDisabledAtOneIsRefusedByTheOther) {
  WaitUntilReplicated(second, u"eva", UserActive);
  first.Modify(
      "dn: uid=eva,ou=people,dc=plant\nchangetype: modify\nadd: pwdAccountLockedTime\n"
      "pwdAccountLockedTime: 000001010000Z\n");
  WaitUntilReplicated(second, u"eva", UserDeactivated);
  first.Kill();
  EXPECT_EQ(bench.LogOn(u"eva", kPlantPassword), LogOnUserDeactivated);
}

// A server that accepts connections and says nothing.
class Tarpit {
 public:
  Tarpit() : socket_(socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
    address_.sin_family = AF_INET;
    address_.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t size = sizeof address_;
    if (bind(socket_, reinterpret_cast<const sockaddr*>(&address_), size) != 0)
      throw std::runtime_error("no port is free");
    listen(socket_, 8);
    getsockname(socket_, reinterpret_cast<sockaddr*>(&address_), &size);
  }
  ~Tarpit() { close(socket_); }

  runtime::DirectoryServer Server() const {
    return {u"127.0.0.1", ntohs(address_.sin_port), false};
  }
  // Whether somebody has connected.
  bool WasAsked() const {
    pollfd state{socket_, POLLIN, 0};
    return poll(&state, 1, 0) == 1;
  }

 private:
  int socket_;
  sockaddr_in address_{};
};

TEST_F(SlapdTest, ASlowServerIsGivenUpAndTheSecondAnswers) {
  Tarpit slow;
  bench.rules = RulesFor({slow.Server(), server.Server()});
  bench.rules.Directory.AnswerSeconds = 1;
  EXPECT_EQ(bench.LogOn(u"eva", kPlantPassword), LogOnSucceeded);
  EXPECT_TRUE(slow.WasAsked());
}

TEST_F(SlapdTest, ASlowServerAloneIsSilence) {
  Tarpit slow;
  bench.rules = RulesFor({slow.Server()});
  bench.rules.Directory.AnswerSeconds = 1;
  EXPECT_THROW(bench.LogOn(u"eva", kPlantPassword), DirectorySilence);
}

TEST(EncryptedSlapdTest, OnlyAServerThatProvesItsNameIsTrusted) {
  ServerFolder folder;
  folder.MakeCertificate("127.0.0.1");
  const int port = FreePort();
  Slapd server(folder, {"encrypted=" + std::to_string(port), "name=127.0.0.1"});
  OpenLdapClient trusting((folder.Path() / "authority.pem").string());
  DirectoryBench bench(trusting);
  bench.rules = RulesFor({{u"127.0.0.1", port, true}});
  EXPECT_EQ(bench.LogOn(u"eva", kPlantPassword), LogOnSucceeded);

  bench.rules = RulesFor({{u"localhost", port, true}});  // not in the certificate
  EXPECT_THROW(bench.LogOn(u"eva", kPlantPassword), DirectorySilence);

  folder.MakeCertificate("other");
  OpenLdapClient strange((folder.Path() / "other.pem").string());  // no authority of this server
  DirectoryBench stranger(strange);
  stranger.rules = RulesFor({{u"127.0.0.1", port, true}});
  EXPECT_THROW(stranger.LogOn(u"eva", kPlantPassword), DirectorySilence);
}

TEST(LargeSlapdTest, TenThousandUsersAreListedWhole) {
  constexpr int kUsers = 10'000;
  ServerFolder folder;
  Slapd server(folder, {"operators=" + std::to_string(kUsers)});
  OpenLdapClient client;
  DirectoryBench bench(client);
  bench.rules = RulesFor({server.Server()});
  using Clock = std::chrono::steady_clock;
  using Milliseconds = std::chrono::duration<double, std::milli>;
  const auto start = Clock::now();
  const auto names = bench.users.List(bench.rules, {});
  const Milliseconds first = Clock::now() - start;
  EXPECT_EQ(names->size(), kUsers + 8u);
  EXPECT_EQ(names->at(u"op10000").ClassName, u"Operator");
  const auto list = bench.WholeList();
  const Milliseconds all = Clock::now() - start;
  EXPECT_EQ(list->size(), kUsers + 8u);
  EXPECT_EQ(list->at(u"op10000").FullName, u"Operator op10000");
  EXPECT_EQ(bench.users.List(bench.rules, {}), list);
  std::printf("10,000 users: names in %.0f ms, all in %.0f ms\n", first.count(), all.count());
}

}  // namespace
}  // namespace krx::test
