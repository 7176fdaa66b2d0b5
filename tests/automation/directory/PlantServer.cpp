#include "directory/PlantServer.h"

#include <windows.h>
#include <winsock2.h>

#include <atomic>
#include <filesystem>
#include <fstream>
#include <stdexcept>

namespace krx::test {
namespace {

// What a program has to do before it may ask for anything of the network.
void UseNetwork() {
  static const int started = [] {
    WSADATA data;
    return WSAStartup(MAKEWORD(2, 2), &data);
  }();
  if (started != 0) throw std::runtime_error("no network");
}

// A name for a port of this machine; port 0 asks for any.
sockaddr_in Loopback(int port) {
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_port = htons(static_cast<u_short>(port));
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  return address;
}

SOCKET Bound(int& port) {
  UseNetwork();
  const SOCKET bound = socket(AF_INET, SOCK_STREAM, 0);
  sockaddr_in address = Loopback(0);
  int size = sizeof address;
  bind(bound, reinterpret_cast<const sockaddr*>(&address), size);
  getsockname(bound, reinterpret_cast<sockaddr*>(&address), &size);
  port = ntohs(address.sin_port);
  return bound;
}

bool Answers(int port) {
  const SOCKET client = socket(AF_INET, SOCK_STREAM, 0);
  const sockaddr_in address = Loopback(port);
  const bool answers =
      connect(client, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0;
  closesocket(client);
  return answers;
}

// The name of a file for the programs of the machine that Wine runs on.
std::string MachinePath(const std::wstring& path) {
  using Translate = char*(CDECL*)(const wchar_t*);
  const auto translate = reinterpret_cast<Translate>(reinterpret_cast<void*>(
      GetProcAddress(GetModuleHandleW(L"kernel32.dll"), "wine_get_unix_file_name")));
  if (!translate) throw std::runtime_error("only under Wine are there servers to start");
  char* const name = translate(path.c_str());
  std::string copy = name ? name : "";
  HeapFree(GetProcessHeap(), 0, name);
  return copy;
}

const std::string kScript = "bash '" KRX_CHECKOUT "/tests/directory/server'";

// Starts commands of that machine. Their end cannot be waited for.
void RunInShell(const std::string& commands) {
  const std::string arguments = "bash -c \"" + commands + "\"";
  std::wstring command(arguments.begin(), arguments.end());
  STARTUPINFOW startup{};
  startup.cb = sizeof startup;
  PROCESS_INFORMATION started{};
  if (!CreateProcessW(L"Z:\\bin\\bash", command.data(), nullptr, nullptr, FALSE, 0, nullptr,
                      nullptr, &startup, &started))
    throw std::runtime_error("a program of the machine does not start");
  CloseHandle(started.hProcess);
  CloseHandle(started.hThread);
}

std::wstring NewFolder() {
  static std::atomic<int> count = 0;
  const std::wstring name =
      L"krx-directory-" + std::to_wstring(GetCurrentProcessId()) + L"-" + std::to_wstring(++count);
  const std::filesystem::path folder = std::filesystem::temp_directory_path() / name;
  std::filesystem::remove_all(folder);
  std::filesystem::create_directories(folder);
  return folder.wstring();
}

}  // namespace

int FreePort() {
  int port = 0;
  closesocket(Bound(port));
  return port;
}

PlantServer::PlantServer(const std::string& options) : folder_(NewFolder()), port_(FreePort()) {
  Start({}, options);
}

PlantServer::PlantServer(const std::string& name, int encrypted_port)
    : folder_(NewFolder()), port_(FreePort()) {
  Start(kScript + " certificate '" + MachinePath(folder_) + "' " + name + " && ",
        "encrypted=" + std::to_string(encrypted_port) + " name=" + name);
}

void PlantServer::Start(const std::string& before, const std::string& options) {
  RunInShell(before + "exec " + kScript + " '" + MachinePath(folder_) + "/server' 1 " +
             std::to_string(port_) + " " + options);
  const ULONGLONG limit = GetTickCount64() + 120'000;
  while (!Answers(port_)) {
    if (GetTickCount64() > limit)
      throw std::runtime_error("tests/directory/server does not start a server");
    SwitchToThread();
  }
  runs_ = true;
}

PlantServer::~PlantServer() {
  try {
    Kill();
  } catch (const std::exception&) {
    // The machine's own cleaning finds it.
  }
  std::error_code ignored;
  std::filesystem::remove_all(folder_, ignored);
}

void PlantServer::Kill() {
  if (!runs_) return;
  std::string process;
  std::ifstream(std::filesystem::path(folder_) / "server" / "process") >> process;
  RunInShell("kill -9 " + process);
  while (Answers(port_))
    SwitchToThread();
  runs_ = false;
}

std::string PlantServer::Rules() const {
  return "directory = ldap://127.0.0.1:" + std::to_string(port_) +
         "\ndirectory-base = dc=plant\n"
         "directory-class = Administrator | cn=administrators,ou=groups,dc=plant\n"
         "directory-class = Engineer | cn=engineers,ou=groups,dc=plant\n"
         "directory-class = Operator | cn=operators,ou=groups,dc=plant\n";
}

SilentServer::SilentServer() : socket_(Bound(port_)) {
  listen(socket_, 8);
}

SilentServer::~SilentServer() {
  closesocket(socket_);
}

}  // namespace krx::test
