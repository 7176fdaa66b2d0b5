#include <windows.h>

#include <gtest/gtest.h>

#include <optional>

#include "directory/PlantServer.h"
#include "users/UserStoreFolder.h"

namespace krx::drive {
namespace {

constexpr const wchar_t* kSecret = L"Acht Pumpen";

// Clients of the reference runtime on a panel whose users come from a server, beside its own
// administrator.
class PlantTest : public testing::Test {
 protected:
  // The system's desktop would be started by the first client, and keep its output open.
  void SetUp() override { GetDesktopWindow(); }

  void Provision(const std::string& more_rules = {}) {
    store.emplace(server.Rules() + more_rules);
    store->Provision(L"admin", kSecret);
  }

  static std::string LogOn(const std::string& name, int result,
                           const std::string& password = "Sieben Ventile") {
    return "Session.LogOnUser \"" + name + "\", \"" + password + "\", Result\r\nCheck Result, " +
           std::to_string(result) + "\r\n";
  }

  test::PlantServer server;
  std::optional<UserStoreFolder> store;
};

TEST_F(PlantTest, AnAdministratorOfTheDirectoryChangesThisMachinesUsersAndNoOthers) {
  Provision();
  store->Administer(
      LogOn("boss", 2) +
      "Users.CreateUser \"anna\", \"\", \"\", \"Neun Kessel\", \"Operator\", 0, 0, Result\r\n"
      "Check Result, 0\r\n"
      "Users.CreateUser \"eva\", \"\", \"\", \"Neun Kessel\", \"Operator\", 0, 0, Result\r\n"
      "Check Result, 3\r\n"
      "Users.ModifyUser \"eva\", \"\", \"\", \"Neun Kessel\", \"Operator\", 0, 0, Result\r\n"
      "Check Result, 6\r\n"
      "Users.RemoveUser \"eva\", Result\r\nCheck Result, 6\r\n"
      "Users.SetUserActive \"eva\", 0, Result\r\nCheck Result, 6\r\n"
      "Users.ChangeUserPassword \"eva\", \"Zehn Motoren\", \"Sieben Ventile\", Result\r\n"
      "Check Result, 0\r\n" +
      LogOn("eva", 2, "Zehn Motoren") + LogOn("anna", 2, "Neun Kessel"));
}

TEST_F(PlantTest, WithoutTheServerThisMachinesUsersLogOnAndOthersOnlyInTheirOfflinePeriod) {
  Provision("directory-offline-days = 7\n");
  store->Administer(LogOn("eva", 2));
  server.Kill();
  store->Administer(LogOn("admin", 2, "Acht Pumpen") + LogOn("eva", 2) + LogOn("eva", 1, "wrong") +
                    "On Error Resume Next\r\n"
                    "Session.LogOnUser \"olga\", \"Sieben Ventile\", Result\r\n"
                    "Check Hex(Err.Number), \"80040219\"\r\n");
}

}  // namespace
}  // namespace krx::drive
