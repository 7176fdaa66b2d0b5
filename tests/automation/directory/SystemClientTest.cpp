#include <windows.h>

#include <gtest/gtest.h>
#include <wincrypt.h>

#include <atomic>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <map>
#include <thread>
#include <vector>

#include "directory/PlantServer.h"
#include "host/UserManager.h"
#include "platform/Differences.h"
#include "runtime/users/directory/DirectoryUsers.h"
#include "runtime/users/directory/win32/SystemLdapClient.h"
#include "runtime/users/win32/Win32Clock.h"
#include "runtime/users/win32/Win32Cryptography.h"
#include "runtime/users/win32/Win32Errands.h"

namespace krx::test {
namespace {

using namespace host;
using runtime::DirectorySilence;

// Keeps nothing: these rules ask for no offline period.
class NothingKept : public runtime::OfflineStore {
 public:
  std::unique_ptr<Hold> Open() override {
    ADD_FAILURE() << "nothing is to be kept";
    return nullptr;
  }
};

// The system's client, as the component uses it.
class Panel {
 public:
  explicit Panel(std::vector<runtime::DirectoryServer> servers) {
    rules.Directory.Servers = std::move(servers);
    rules.Directory.Base = u"dc=plant";
    rules.Directory.Groups = {{u"Administrator", u"cn=administrators,ou=groups,dc=plant"},
                              {u"Engineer", u"cn=engineers,ou=groups,dc=plant"},
                              {u"Operator", u"cn=operators,ou=groups,dc=plant"}};
  }

  std::int32_t LogOn(const String& name, StringView password = kPlantPassword) {
    last = users.LogOn(rules, {}, name, Password(password));
    return last.Code;
  }
  std::int32_t Change(const String& name, StringView changed, StringView current) {
    return users.Change(rules, {}, name, Password(changed), Password(current)).Code;
  }

  runtime::UserRules rules;
  runtime::DirectoryOutcome last;

 private:
  runtime::SystemLdapClient client_;
  runtime::Win32Errands errands_;
  runtime::Win32Cryptography cryptography_;
  runtime::Win32Clock clock_;
  NothingKept kept_;
  runtime::OfflineUsers offline_{kept_, cryptography_, clock_};
  runtime::DirectoryService service_{client_, errands_};

 public:
  runtime::DirectoryUsers users{service_, offline_};
};

class SystemClientTest : public testing::Test {
 protected:
  PlantServer server;
  Panel panel{{server.Server()}};
};

TEST_F(SystemClientTest, EveryStateOfAUserBecomesItsOwnCode) {
  EXPECT_EQ(panel.LogOn(u"eva"), LogOnSucceeded);
  EXPECT_EQ(panel.last.User->ClassName, u"Operator");
  EXPECT_EQ(panel.last.User->FullName, u"Eva Meier");
  EXPECT_EQ(panel.LogOn(u"olga"), LogOnSucceeded);
  EXPECT_EQ(panel.last.User->ClassName, u"Engineer");
  EXPECT_EQ(panel.LogOn(u"eva", u"wrong"), LogOnInvalidPassword);
  EXPECT_EQ(panel.LogOn(u"eva", u""), LogOnInvalidPassword);
  EXPECT_EQ(panel.LogOn(u"nobody"), LogOnUnknownUser);
  EXPECT_EQ(panel.LogOn(u"gast"), LogOnUnknownUser);
  EXPECT_EQ(panel.LogOn(u"*"), LogOnUnknownUser);
  EXPECT_EQ(panel.LogOn(u"neu"), LogOnRenewPassword);
  EXPECT_EQ(panel.LogOn(u"alt"), LogOnPasswordExpired);
  EXPECT_EQ(panel.LogOn(u"milde"), LogOnPasswordExpired);
  EXPECT_EQ(panel.LogOn(u"ruhend"), LogOnUserDeactivated);
  EXPECT_EQ(panel.LogOn(u"gesperrt"), LogOnTooManyFailedLogons);
}

TEST_F(SystemClientTest, APasswordIsChangedByTheServer) {
  EXPECT_EQ(panel.Change(u"eva", u"short", kPlantPassword), ChangePasswordInvalidLength);
  EXPECT_EQ(panel.Change(u"eva", kPlantPassword, kPlantPassword), ChangePasswordNotAccepted);
  EXPECT_EQ(panel.Change(u"eva", u"Acht P\u00FCmpen", u"wrong"), ChangePasswordInvalidPassword);
  EXPECT_EQ(panel.Change(u"eva", u"Acht P\u00FCmpen", kPlantPassword), ChangePasswordSucceeded);
  EXPECT_EQ(panel.LogOn(u"eva"), LogOnInvalidPassword);
  EXPECT_EQ(panel.LogOn(u"eva", u"Acht P\u00FCmpen"), LogOnSucceeded);
  EXPECT_EQ(panel.Change(u"neu", u"Acht Pumpen", kPlantPassword), ChangePasswordSucceeded);
  EXPECT_EQ(panel.LogOn(u"neu", u"Acht Pumpen"), LogOnSucceeded);
}

TEST_F(SystemClientTest, ASlowServerIsGivenUpAndTheSecondAnswers) {
  const SilentServer slow;
  Panel patient({slow.Server(), server.Server()});
  patient.rules.Directory.AnswerSeconds = 1;
  EXPECT_EQ(patient.LogOn(u"eva"), LogOnSucceeded);
  Panel alone({slow.Server()});
  alone.rules.Directory.AnswerSeconds = 1;
  EXPECT_THROW(alone.LogOn(u"eva"), DirectorySilence);
}

TEST_F(SystemClientTest, AServerThatDiesIsFollowedByTheSecond) {
  PlantServer second;
  Panel both({server.Server(), second.Server()});
  EXPECT_EQ(both.LogOn(u"eva"), LogOnSucceeded);
  server.Kill();
  EXPECT_EQ(both.LogOn(u"eva"), LogOnSucceeded);
  second.Kill();
  EXPECT_THROW(both.LogOn(u"eva"), DirectorySilence);
}

TEST_F(SystemClientTest, AServerKilledInTheMiddleOfLogOnsRefusesNobody) {
  constexpr int kOperators = 4;
  constexpr int kAfterwards = 5;  // log-ons of each
  PlantServer second;
  Panel both({server.Server(), second.Server()});
  std::atomic<int> done = 0;
  std::atomic<bool> killed = false;
  std::vector<std::jthread> operators;
  for (int i = 0; i < kOperators; ++i) {
    operators.emplace_back([&] {
      for (int left = kAfterwards; left > 0; left -= killed ? 1 : 0, ++done) {
        try {
          const auto outcome = both.users.LogOn(both.rules, {}, u"eva", Password(kPlantPassword));
          EXPECT_EQ(outcome.Code, LogOnSucceeded);
        } catch (const Error& failure) {
          ADD_FAILURE() << failure.what();
        }
      }
    });
  }
  while (done < kOperators)
    std::this_thread::yield();
  server.Kill();
  killed = true;
  operators.clear();
  EXPECT_GE(done, kOperators * (1 + kAfterwards));
}

// Trusts an authority for as long as it lives.
class Trust {
 public:
  explicit Trust(const std::wstring& file) {
    std::ifstream stream(std::filesystem::path(file), std::ios::binary);
    const std::string text{std::istreambuf_iterator<char>(stream), {}};
    DWORD size = 0;
    CryptStringToBinaryA(text.data(), 0, CRYPT_STRING_BASE64HEADER, nullptr, &size, nullptr,
                         nullptr);
    std::vector<BYTE> bytes(size);
    CryptStringToBinaryA(text.data(), 0, CRYPT_STRING_BASE64HEADER, bytes.data(), &size, nullptr,
                         nullptr);
    EXPECT_TRUE(CertAddEncodedCertificateToStore(store_, X509_ASN_ENCODING, bytes.data(), size,
                                                 CERT_STORE_ADD_REPLACE_EXISTING, &certificate_));
    EXPECT_TRUE(CertControlStore(store_, 0, CERT_STORE_CTRL_COMMIT, nullptr));
  }
  ~Trust() {
    CertDeleteCertificateFromStore(certificate_);
    CertCloseStore(store_, 0);
  }
  Trust(const Trust&) = delete;
  Trust& operator=(const Trust&) = delete;

 private:
  HCERTSTORE store_ = CertOpenSystemStoreW(0, L"ROOT");
  PCCERT_CONTEXT certificate_ = nullptr;
};

bool LogsOnAt(const String& host, int port) {
  try {
    return Panel({{host, port, true}}).LogOn(u"eva") == LogOnSucceeded;
  } catch (const DirectorySilence&) {
    return false;
  }
}

// Authorities are trusted before the first question: the system may look them up once.
TEST(EncryptedSystemClientTest, OnlyWhomATrustedAuthorityVouchesForIsTalkedTo) {
  const int port = FreePort();
  const PlantServer server("localhost", port);
  const Trust trust(server.Authority());
  EXPECT_EQ(LogsOnAt(u"localhost", port), Expected(kCertificatesAreNotShown, false, true));
  EXPECT_FALSE(LogsOnAt(u"127.0.0.1", port)) << "the certificate has another name";

  const int other_port = FreePort();
  const PlantServer other("localhost", other_port);
  EXPECT_FALSE(LogsOnAt(u"localhost", other_port)) << "nobody trusts that authority";
}

TEST(LargeSystemClientTest, TenThousandUsersAreListedWhole) {
  const PlantServer server("operators=10000");
  Panel panel({server.Server()});
  const ULONGLONG start = GetTickCount64();
  auto list = panel.users.List(panel.rules, {});
  const ULONGLONG names = GetTickCount64() - start;
  EXPECT_EQ(list->size(), 10'008u);
  EXPECT_EQ(list->at(u"op10000").ClassName, u"Operator");
  while (list->at(u"op10000").FullName.empty()) {
    panel.users.Find(panel.rules, {}, u"op10000");  // waits for all of it
    list = panel.users.List(panel.rules, {});
  }
  EXPECT_EQ(list->size(), 10'008u);
  std::printf("10,000 users: names in %llu ms, all in %llu ms\n", names, GetTickCount64() - start);
}

}  // namespace
}  // namespace krx::test
