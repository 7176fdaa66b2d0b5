#include "runtime/users/tool/Commands.h"

#include <windows.h>

#include <algorithm>
#include <fstream>
#include <functional>
#include <string>

#include "base/Error.h"
#include "runtime/core/KorvelError.h"
#include "runtime/users/administration/KeyCare.h"
#include "runtime/users/administration/Provisioning.h"
#include "runtime/users/administration/Recovery.h"
#include "runtime/users/administration/UserDirectory.h"
#include "runtime/users/com/ProcessUsers.h"
#include "runtime/users/store/AuditArchive.h"
#include "runtime/users/store/AuditExport.h"
#include "runtime/users/tool/Console.h"
#include "runtime/users/win32/FolderRights.h"
#include "runtime/users/win32/Win32EventLog.h"

namespace krx::runtime {
namespace {

// Waits longer than a dialog may.
UserManagement& Users() {
  return ProcessUsers({nullptr, std::chrono::seconds(30)});
}

void PrintPassword(const Password& password) {
  Print(u"Password, shown this once: ");
  Print(password.View());
  Print(u"\n");
}

Password ChoosePassword(bool generates) {
  if (generates) return GeneratePassword(Users().System.Crypto, Users().Rules());
  Password password = TypePassword(u"Password: ");
  if (!(password == TypePassword(u"Password again: ")))
    throw KorvelError(kUnableToProvision, u"the passwords differ");
  return password;
}

int Provision(const Arguments& arguments) {
  UserManagement& users = Users();
  const std::filesystem::path& folder = users.Store.Folder();
  PrepareFolder(folder);
  if (UserStore::Reading(users.Store).Data() != nullptr)
    throw KorvelError(kUnableToProvision, u"there are users already");
  const Password password = ChoosePassword(arguments.Generates);
  // Before there is anything to protect, and again when all files are there.
  SetRights(folder, arguments.PanelAccount);
  ProvisionFirstAdministrator(users, arguments.Names[0], password);
  SetRights(folder, arguments.PanelAccount);
  Print(u"Created the users in " + folder.u16string() + u".\n");
  if (arguments.Generates) PrintPassword(password);
  return kDone;
}

StringView StateText(std::int32_t state) {
  switch (state) {
    case host::UserDeactivated:
      return u"deactivated";
    case host::UserLocked:
      return u"locked";
    case host::UserActiveChangePassword:
      return u"to renew";
    default:
      return u"active";
  }
}

int List(const Arguments&) {
  UserDirectory directory(Users());
  for (const String& name : directory.GetUserNames(u"")) {
    const host::UserInfo info = directory.GetUserInfo(name);
    String line = name + u"\t" + directory.GetUserClass(name).ClassName + u"\t";
    line.append(StateText(info.State)).append(u"\t").append(info.FullName);
    for (char16_t& unit : line)
      if (unit < u' ' && unit != u'\t') unit = u' ';
    Print(line + u"\n");
  }
  return kDone;
}

int Unlock(const Arguments& arguments) {
  UnlockUser(Users(), arguments.Names[0]);
  Print(u"Unlocked.\n");
  return kDone;
}

int Reset(const Arguments& arguments) {
  PrintPassword(ResetPassword(Users(), arguments.Names[0]));
  return kDone;
}

// No damage: a plant may keep them elsewhere.
void PrintMissingArchives() {
  UserStore::Reading reading(Users().Store);
  if (reading.Data() == nullptr) return;
  for (const AuditArchive& archive : ListArchives(*reading.Data(), Users().Store, Users().System)) {
    if (!archive.IsThere)
      Print(u"Not here, so not looked at: " + archive.File.filename().u16string() + u"\n");
  }
}

int Verify(const Arguments&) {
  std::vector<String> problems = CheckStore(Users());
  if (problems.empty()) problems = CheckKeys(Users());
  if (const std::optional<String> fault = Users().FaultOfRules())
    problems.push_back(*fault + u"; the rules before stay in force, where there are any");
  for (const String& problem : problems)
    Print(problem + u"\n");
  if (problems.empty()) Print(u"The users and their audit records are whole.\n");
  PrintMissingArchives();
  return problems.empty() ? kDone : kDamaged;
}

int BackUp(const Arguments& arguments) {
  BackUpStore(Users(), std::filesystem::path(arguments.Names[0]));
  Print(u"Backed up.\n");
  return kDone;
}

// Passwords that nobody can use any more; the users need new ones.
void PrintProblemsOfKeys() {
  for (const String& problem : CheckKeys(Users()))
    Print(problem + u"\n");
}

int Restore(const Arguments& arguments) {
  PrepareFolder(Users().Store.Folder());
  const std::filesystem::path kept =
      RestoreStore(Users(), std::filesystem::path(arguments.Names[0]));
  Print(u"Restored.\n");
  PrintProblemsOfKeys();
  if (kept.empty()) return kDone;
  Print(u"What was there before: " + kept.u16string() + u"\n");
  SetAsideForAdministrators(kept);
  return kDone;
}

int Export(const Arguments& arguments) {
  const ExportFormat format =
      arguments.Format == u"json" ? ExportFormat::JsonLines : ExportFormat::Csv;
  UserStore::Reading reading(Users().Store);
  if (reading.Data() == nullptr) throw KorvelError(kUnableToRecover, u"there are no users");
  const auto write = [&](const std::function<void(std::string_view)>& sink) {
    sink(ExportHead(format));
    for (const AuditArchive& archive :
         ListArchives(*reading.Data(), Users().Store, Users().System)) {
      if (!archive.IsThere) continue;
      Database data(archive.File, Users().System.Access, false);
      AuditTrail older(data, Users().System.Crypto);
      ExportAudit(older, format, sink);
    }
    AuditTrail trail(*reading.Data(), Users().System.Crypto);
    ExportAudit(trail, format, sink);
  };
  if (arguments.Names[0] == u"-") {
    write(PrintBytes);
    return kDone;
  }
  std::ofstream file(std::filesystem::path(arguments.Names[0]), std::ios::binary);
  write([&](std::string_view line) { file << line; });
  if (!file.flush()) throw KorvelError(kFileFailure, u"the file cannot be written");
  return kDone;
}

int ShowKeys() {
  UserManagement& users = Users();
  Print(users.Keys.File().u16string() + u"\n");
  for (const KeyUse& key : ListKeys(users)) {
    Print(TextOf(key.Id) + u"\tpasswords: " + ToString(static_cast<std::int32_t>(key.Passwords)) +
          (key.IsThere ? u"\n" : u", but the key is not there\n"));
  }
  return kDone;
}

int Key(const Arguments& arguments) {
  UserManagement& users = Users();
  const std::filesystem::path folder = users.Keys.File().parent_path();
  if (arguments.Names[0] == u"show") return ShowKeys();
  if (arguments.Names[0] == u"create") {
    PrepareFolder(folder);
    SetRightsOfKeys(folder, arguments.PanelAccount);
    CreateKey(users);
    SetRightsOfKeys(folder, arguments.PanelAccount);
  } else if (arguments.Names[0] == u"renew") {
    RenewKey(users);
  } else {
    return kWrongUsage;
  }
  return ShowKeys();
}

int EventSource(const Arguments& arguments) {
  wchar_t program[32768] = L"";
  GetModuleFileNameW(nullptr, program, 32768);
  if (arguments.Names[0] == u"register") {
    AddEventSource(program);
  } else if (arguments.Names[0] == u"remove") {
    RemoveEventSource();
  } else {
    return kWrongUsage;
  }
  Print(u"Done.\n");
  return kDone;
}

struct Deed {
  StringView Name;
  int (*Do)(const Arguments& arguments);
};
constexpr Deed kDeeds[] = {
    {u"provision", Provision},
    {u"list", List},
    {u"unlock", Unlock},
    {u"reset", Reset},
    {u"verify", Verify},
    {u"backup", BackUp},
    {u"restore", Restore},
    {u"export-audit", Export},
    {u"key", Key},
    {u"event-source", EventSource},
};

}  // namespace

int CarryOut(const Command& command, const Arguments& arguments) {
  return std::ranges::find(kDeeds, command.Name, &Deed::Name)->Do(arguments);
}

}  // namespace krx::runtime
