#include "directory/Slapd.h"

#include <fcntl.h>
#include <netinet/in.h>
#include <signal.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <fstream>
#include <sstream>
#include <stdexcept>
#include <thread>

namespace krx::test {
namespace {

using Words = std::vector<std::string>;

// Starts the script; what it and the server say goes to a file.
pid_t Launch(Words words, const std::filesystem::path& log) {
  words.insert(words.begin(), KRX_CHECKOUT "/tests/directory/server");
  std::vector<char*> arguments;
  for (std::string& word : words)
    arguments.push_back(word.data());
  arguments.push_back(nullptr);
  const pid_t child = fork();
  if (child != 0) return child;
  const int out = open(log.c_str(), O_WRONLY | O_CREAT | O_APPEND, 0600);
  dup2(out, 1);
  dup2(out, 2);
  execv(arguments[0], arguments.data());
  _exit(127);
}

[[noreturn]] void Fail(const std::filesystem::path& log) {
  std::ostringstream said;
  said << std::ifstream(log).rdbuf();
  throw std::runtime_error("tests/directory/server fails: " + said.str());
}

void Run(const Words& words, const std::filesystem::path& log) {
  int status = 0;
  waitpid(Launch(words, log), &status, 0);
  if (!WIFEXITED(status) || WEXITSTATUS(status) != 0) Fail(log);
}

sockaddr_in Loopback(int port) {
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_port = htons(static_cast<std::uint16_t>(port));
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  return address;
}

bool Answers(int port) {
  const int client = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
  const sockaddr_in address = Loopback(port);
  const bool answers =
      connect(client, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0;
  close(client);
  return answers;
}

}  // namespace

ServerFolder::ServerFolder() {
  std::string path = (std::filesystem::temp_directory_path() / "krx-directory-XXXXXX").string();
  if (mkdtemp(path.data()) == nullptr) throw std::runtime_error("no folder for the servers");
  path_ = path;
}

ServerFolder::~ServerFolder() {
  std::error_code ignored;
  std::filesystem::remove_all(path_, ignored);
}

void ServerFolder::MakeCertificate(const std::string& name) const {
  Run({"certificate", path_.string(), name}, path_ / "certificate.log");
}

int FreePort() {
  const int listener = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
  sockaddr_in address = Loopback(0);
  socklen_t size = sizeof address;
  const bool bound = bind(listener, reinterpret_cast<const sockaddr*>(&address), size) == 0;
  getsockname(listener, reinterpret_cast<sockaddr*>(&address), &size);
  close(listener);
  if (!bound) throw std::runtime_error("no port is free");
  return ntohs(address.sin_port);
}

Slapd::Slapd(const ServerFolder& folder, std::vector<std::string> options, int number, int port)
    : folder_(folder.Path() / ("server" + std::to_string(number))),
      options_(std::move(options)),
      number_(number),
      port_(port) {
  Start();
}

void Slapd::Start() {
  Words words = {folder_.string(), std::to_string(number_), std::to_string(port_)};
  words.insert(words.end(), options_.begin(), options_.end());
  const std::filesystem::path log = folder_.string() + ".log";
  process_ = Launch(words, log);
  while (!Answers(port_)) {
    if (waitpid(process_, nullptr, WNOHANG) != 0) {
      process_ = 0;
      Fail(log);
    }
    std::this_thread::yield();
  }
}

void Slapd::Kill() {
  if (process_ == 0) return;
  kill(process_, SIGKILL);
  waitpid(process_, nullptr, 0);
  process_ = 0;
}

void Slapd::Modify(const std::string& ldif) const {
  std::ofstream(folder_ / "change.ldif", std::ios::binary) << ldif;
  Run({"modify", std::to_string(port_), (folder_ / "change.ldif").string()},
      folder_ / "modify.log");
}

}  // namespace krx::test
