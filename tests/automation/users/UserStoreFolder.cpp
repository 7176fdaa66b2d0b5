#include "users/UserStoreFolder.h"

#include <windows.h>

#include <atomic>
#include <fstream>
#include <sstream>
#include <stdexcept>

#include "driver/Client.h"
#include "driver/Window.h"

namespace krx::drive {

namespace {

constexpr Milliseconds kAdministration{600000};  // 500 users on the slowest machine
constexpr const char* kRules = "hash-iterations = 1000\n";
constexpr const char* kPasswordLine = "Password, shown this once: ";

std::filesystem::path NewFolder() {
  static std::atomic<int> count = 0;
  const std::string name =
      "krx-users-" + std::to_string(GetCurrentProcessId()) + "-" + std::to_string(++count);
  const std::filesystem::path folder = std::filesystem::temp_directory_path() / name;
  std::filesystem::remove_all(folder);
  std::filesystem::create_directories(folder);
  return folder;
}

}  // namespace

UserStoreFolder::UserStoreFolder(const std::string& rules) : folder_(NewFolder()) {
  std::ofstream(folder_ / "users.conf", std::ios::binary) << kRules << rules;
}

UserStoreFolder::UserStoreFolder(const UserStoreFolder& other) : folder_(NewFolder()) {
  for (const auto& file : std::filesystem::directory_iterator(other.folder_))
    std::filesystem::copy_file(file.path(), folder_ / file.path().filename());
}

UserStoreFolder::~UserStoreFolder() {
  std::error_code ignored;
  std::filesystem::remove_all(folder_, ignored);
}

void UserStoreFolder::AddRule(const std::string& line) const {
  std::ofstream(folder_ / "users.conf", std::ios::binary | std::ios::app) << line << '\n';
}

void UserStoreFolder::Use() const {
  SetEnvironmentVariableW(L"KORVEL_USERS_FOLDER", folder_.c_str());
}

std::string UserStoreFolder::Provision(const std::string& administrator) const {
  Use();
  Client command(L"\"" + (ProgramFolder() / "krxusers.exe").wstring() + L"\" provision " +
                 Widen(administrator) + L" --generate");
  const DWORD code = command.Finish();
  std::string said;
  for (const std::string& line : command.Lines()) {
    if (line.starts_with(kPasswordLine)) return line.substr(std::string(kPasswordLine).size());
    said += line + '\n';
  }
  throw std::runtime_error("provisioning ended with " + std::to_string(code) + ": " + said);
}

void UserStoreFolder::Provision(const std::wstring& administrator, const std::wstring& password,
                                const std::string& script) const {
  const std::string generated = ScriptLiteral(Widen(Provision(Narrow(administrator))));
  const std::string name = ScriptLiteral(administrator);
  const std::string chosen = ScriptLiteral(password);
  Administer("Users.ChangeUserPassword " + name + ", " + chosen + ", " + generated +
             ", Result\r\nCheck Result, 0\r\n" + "Session.LogOnUser " + name + ", " + chosen +
             ", Result\r\nCheck Result, 2\r\n" + script);
}

void UserStoreFolder::Administer(const std::string& script) const {
  Use();
  const ScriptFile file(
      "Option Explicit\r\n"
      "Dim Users, Session, Result\r\n"
      "Set Users = CreateObject(\"KorvelRuntime.UserAdministration\")\r\n"
      "Set Session = CreateObject(\"KorvelRuntime.UserSession\")\r\n"
      "Sub Check(found, wanted)\r\n"
      "  If found = wanted Then Exit Sub\r\n"
      "  WScript.Echo \"result \" & found & \" instead of \" & wanted\r\n"
      "  WScript.Quit 1\r\n"
      "End Sub\r\n" +
      script + "WScript.Echo \"end\"\r\n");
  Client client(file.Command());
  const DWORD code = client.Finish(kAdministration);
  const auto lines = client.Lines();
  // The script host ends well after an error too.
  if (code == 0 && !lines.empty() && lines.back() == "end") return;
  throw std::runtime_error("the users cannot be set up: " +
                           (lines.empty() ? std::string("nothing printed") : lines.back()));
}

// What a change undoes is written beside the database first; a folder of that file's name is in its
// way.
void UserStoreFolder::RefuseWriting() const {
  std::filesystem::create_directories(folder_ / "users.db-journal" / "kept");
}

void UserStoreFolder::Write(const std::string& name, const std::string& bytes) const {
  std::ofstream(folder_ / name, std::ios::binary) << bytes;
}

std::string UserStoreFolder::AuditLog() const {
  Use();
  const std::filesystem::path file = folder_ / "audit.csv";
  Client command(L"\"" + (ProgramFolder() / "krxusers.exe").wstring() + L"\" export-audit \"" +
                 file.wstring() + L"\"");
  if (command.Finish() != 0) throw std::runtime_error("the audit records cannot be exported");
  std::ostringstream text;
  text << std::ifstream(file, std::ios::binary).rdbuf();
  return text.str();
}

}  // namespace krx::drive
