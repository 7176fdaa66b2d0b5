#include <memory>

#include "Source.h"
#include "runtime/users/administration/Provisioning.h"
#include "runtime/users/administration/Recovery.h"
#include "runtime/users/administration/UserDirectory.h"
#include "runtime/users/directory/OfflineTable.h"
#include "runtime/users/logon/LogOnService.h"
#include "runtime/users/session/LogOnHistory.h"
#include "runtime/users/store/AuditArchive.h"
#include "runtime/users/store/AuditExport.h"
#include "support/SimulatedDisk.h"
#include "support/SimulatedFiles.h"
#include "support/TestCryptography.h"

// Databases of users that are damaged, by bytes or by rows that nobody wrote, and all that reads
// and changes them. Whatever they hold, nobody logs on with a wrong password.

namespace krx::fuzz {
namespace {

using namespace krx::runtime;

constexpr StringView kRight = u"a right password";
constexpr StringView kWrong = u"a wrong password";
constexpr const char* kFile = "users/users.db";
constexpr const char* kNumbers[] = {"users SET failures",
                                    "users SET attempts",
                                    "users SET failures_in_a_row",
                                    "users SET last_failure",
                                    "users SET password_changed_on",
                                    "users SET remaining_log_ons",
                                    "users SET must_renew",
                                    "users SET deactivated",
                                    "users SET id",
                                    "passwords SET iterations",
                                    "passwords SET age",
                                    "audit SET number",
                                    "audit SET at",
                                    "audit_chain SET number_before",
                                    "audit_chain SET last_number",
                                    "audit_bounds SET told",
                                    "offline_users SET iterations",
                                    "offline_users SET failures",
                                    "offline_users SET failures_in_a_row",
                                    "offline_users SET last_failure",
                                    "offline_users SET confirmed_at",
                                    "offline_users SET password_changed_on"};
constexpr const char* kBlobs[] = {
    "users SET name_key",          "passwords SET salt",      "passwords SET key",
    "passwords SET key_id",        "audit SET hash",          "audit_chain SET last_hash",
    "audit_chain SET hash_before", "rules_in_force SET good", "rules_in_force SET malformed",
    "offline_users SET salt",      "offline_users SET key",   "offline_users SET key_id"};
constexpr const char* kTexts[] = {"users SET name",         "users SET full_name",
                                  "users SET class",        "audit SET actor",
                                  "audit SET outcome",      "audit_archives SET file",
                                  "offline_users SET name", "offline_users SET class"};
constexpr const char* kScripts[] = {
    "DELETE FROM passwords",
    "DELETE FROM passwords WHERE age = 0",
    "DELETE FROM users",
    "DELETE FROM audit_chain",
    "DELETE FROM audit_bounds",
    "DELETE FROM audit WHERE number = 2",
    "DROP TABLE passwords",
    "DROP TABLE offline_users",
    "DROP TABLE rules_in_force",
    "PRAGMA user_version = 0",
    "PRAGMA user_version = 1",
    "PRAGMA user_version = 3",
    "PRAGMA user_version = 99",
    "PRAGMA application_id = 7",
    "INSERT INTO audit_archives VALUES (1, 9, zeroblob(32), 'audit-1.db')",
    "INSERT OR REPLACE INTO rules_in_force VALUES (1, 'password-history = 2', x'')"};

// One panel: its disk, and what works with it.
struct Panel {
  Panel() { Crypto.IsQuick = true; }

  SystemServices System() {
    return {Files,
            Crypto,
            Clock,
            {u"panel", u"fuzz", u"operator"},
            {Disk.Name(), std::chrono::milliseconds(0)}};
  }
  void Furnish();

  test::SimulatedDisk Disk;
  test::SimulatedFiles Files;
  test::TestCryptography Crypto;
  test::TestClock Clock;
  test::SimulatedDisk::Files Whole;
};

void Panel::Furnish() {
  Files.Put("users/users.conf", "hash-iterations = 1000\npassword-expiry-days = 90\n");
  Session session;
  {
    UserManagement management(System(), "users", session);
    UserDirectory users(management);
    const Password provisioned(u"a first password");
    ProvisionFirstAdministrator(management, u"boss", provisioned);
    users.ChangeUserPassword(u"boss", Password(kRight), provisioned);
    LogOnService(management).LogOnUser(u"boss", Password(kRight));
    for (const char16_t* const name : {u"anna", u"berta"}) {
      host::UserRecord record;
      record.Name = name;
      record.Secret = Password(kRight);
      record.ClassName = u"Operator";
      record.State = host::UserActive;
      Require(users.CreateUser(record) == host::CreateUserSucceeded);
    }
    OfflineTable kept(management.Store);
    DirectoryUser eva;
    eva.Name = u"eva";
    eva.ClassName = u"Operator";
    OfflineUsers(kept, Crypto, Clock).Remember(management.Rules(), eva, Password(kRight));
  }
  Whole = Disk.Copy();
}

std::string BlobOf(Source& source) {
  std::string blob = "x'";
  for (std::size_t size = source.Below(48); size > 0; --size) {
    const std::uint8_t byte = source.Byte();
    blob += "0123456789abcdef"[byte >> 4];
    blob += "0123456789abcdef"[byte & 0xF];
  }
  return blob + "'";
}

std::string TextOf(Source& source) {
  std::string text = "'";
  for (const char letter : source.Raw(source.Below(24)))
    text += letter == '\'' || letter == '\0' ? '"' : letter;
  return text + "'";
}

std::string ChangeOfRow(Source& source) {
  const std::size_t kind = source.Below(4);
  if (kind == 0) return kScripts[source.Below(std::size(kScripts))];
  std::string sql = "UPDATE OR IGNORE ";
  if (kind == 1)
    sql += std::string(kBlobs[source.Below(std::size(kBlobs))]) + " = " + BlobOf(source);
  else if (kind == 2)
    sql += std::string(kTexts[source.Below(std::size(kTexts))]) + " = " + TextOf(source);
  else
    sql += std::string(kNumbers[source.Below(std::size(kNumbers))]) + " = " +
           std::to_string(source.NumberNearEnds<std::int64_t>());
  return sql;
}

void DamageRows(Panel& panel, Source& source) {
  Allowed([&] {
    Database database("users/users.db", {panel.Disk.Name()}, false);
    database.Run("PRAGMA ignore_check_constraints = ON; PRAGMA foreign_keys = OFF");
    for (std::size_t changes = 1 + source.Below(3); changes > 0; --changes)
      Allowed([&] { database.Run(ChangeOfRow(source).c_str()); });
  });
}

void DamageBytes(Panel& panel, Source& source) {
  std::string& content = panel.Disk.Content(kFile);
  for (std::size_t changes = 1 + source.Below(8); changes > 0; --changes) {
    const std::size_t at = source.Whole<std::uint16_t>() % content.size();
    const std::string bytes = source.Raw(1 + source.Below(8));
    content.replace(at, std::min(bytes.size(), content.size() - at),
                    bytes.substr(0, content.size() - at));
  }
  if (source.Byte() == 0xFF) content.resize(source.Whole<std::uint16_t>() % content.size());
}

// Everything that can be asked of users, by somebody who may know a password.
class Acts {
 public:
  explicit Acts(Panel& panel) : panel_(panel) {}

  void Do(Source& source) {
    const String name = kNames[source.Below(std::size(kNames))];
    switch (source.Below(10)) {
      case 0:
        return GuessAt(name);
      case 1:
        log_on_.LogOnUser(name, Password(kRight));
        return;
      case 2:
        return LookAtAll();
      case 3:
        return ChangeByGuess(name);
      case 4:
        return LookAtRecords();
      case 5:
        CheckStore(management_);
        return;
      case 6:
        users_.SetUserActive(name, source.Coin() ? 1 : 0);
        return;
      case 7:
        users_.RemoveUser(name);
        return;
      case 8:
        return GuessOffline(name);
      default:
        ReadFurther();
        return;
    }
  }

 private:
  static constexpr const char16_t* kNames[] = {u"boss", u"anna", u"berta", u"eva", u"ANNA", u"x"};

  void GuessAt(const String& name) {
    const bool was_logged_on = session_.Current().has_value();
    Require(log_on_.LogOnUser(name, Password(kWrong)) != host::LogOnSucceeded);
    Require(session_.Current().has_value() == was_logged_on);
  }
  void ChangeByGuess(const String& name) {
    Require(users_.ChangeUserPassword(name, Password(u"another one"), Password(kWrong)) !=
            host::ChangePasswordSucceeded);
  }
  void GuessOffline(const String& name) {
    OfflineTable kept(management_.Store);
    OfflineUsers offline(kept, panel_.Crypto, panel_.Clock);
    UserRules rules = management_.Rules();
    rules.Directory.OfflineDays = 7;
    Require(offline.Check(rules, name, Password(kWrong)).Outcome != OfflineUsers::Verdict::Right);
    offline.Check(rules, name, Password(kRight));
  }
  void LookAtAll() {
    for (const String& name : users_.GetUserNames(u"")) {
      users_.GetUserInfo(name);
      users_.GetUserClass(name);
    }
    users_.GetCurrentUser();
  }
  void LookAtRecords() {
    UserStore::Reading reading(management_.Store);
    if (reading.Data() == nullptr) return;
    AuditTrail trail(*reading.Data(), panel_.Crypto);
    trail.Verify();
    ExportAudit(trail, ExportFormat::JsonLines, [](std::string_view line) {
      Require(!line.empty() && line.find('\0') == std::string_view::npos);
    });
    ListArchives(*reading.Data(), management_.Store, management_.System);
  }
  void ReadFurther() {
    panel_.Files.Put("users/users.conf", "malformed");
    const bool has_rules = Allowed([&] { management_.Rules(); });
    panel_.Files.Put("users/users.conf", "hash-iterations = 1000\n");
    Require(has_rules || management_.Rules().HashIterations == 1000);
  }

  Panel& panel_;
  Session session_;
  UserManagement management_{panel_.System(), "users", session_};
  LogOnService log_on_{management_};
  UserDirectory users_{management_};
};

}  // namespace
}  // namespace krx::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace krx::fuzz;
  static Panel* const panel = [] {
    auto* const furnished = new Panel;
    furnished->Furnish();
    return furnished;
  }();
  Source source(data, size);
  panel->Disk.Put(panel->Whole);
  panel->Files.Put("users/users.conf", "hash-iterations = 1000\npassword-expiry-days = 90\n");
  if (source.Coin())
    DamageRows(*panel, source);
  else
    DamageBytes(*panel, source);
  Acts acts(*panel);
  for (std::size_t count = 1 + source.Below(4); count > 0; --count)
    Allowed([&] { acts.Do(source); });
  return 0;
}
