#pragma once

#include <sys/types.h>

#include <filesystem>
#include <string>
#include <vector>

#include "runtime/users/rules/DirectoryRules.h"

namespace krx::test {

// The password of every user in the plant's directory; tests/directory/server says who they are.
inline constexpr const char16_t* kPlantPassword = u"Sieben Ventile";

// A folder of its own for servers, gone with the object.
class ServerFolder {
 public:
  ServerFolder();
  ~ServerFolder();
  ServerFolder(const ServerFolder&) = delete;
  ServerFolder& operator=(const ServerFolder&) = delete;

  const std::filesystem::path& Path() const { return path_; }
  // Makes a certificate for this name and, before the first one, the authority ("authority.pem").
  void MakeCertificate(const std::string& name) const;

 private:
  std::filesystem::path path_;
};

// A port of this machine that was free a moment ago.
int FreePort();

// A server of the plant's directory on this machine: a process of its own, by the script
// tests/directory/server.
class Slapd {
 public:
  // `options` are those of the script.
  explicit Slapd(const ServerFolder& folder, std::vector<std::string> options = {}, int number = 1,
                 int port = FreePort());
  ~Slapd() { Kill(); }
  Slapd(const Slapd&) = delete;
  Slapd& operator=(const Slapd&) = delete;

  // Ends the process at once, as a power cut does.
  void Kill();
  // Starts it again with what it had stored.
  void Start();
  // Changes entries by LDIF, as the directory's administrator.
  void Modify(const std::string& ldif) const;

  runtime::DirectoryServer Server() const { return {u"127.0.0.1", port_, false}; }

 private:
  std::filesystem::path folder_;
  std::vector<std::string> options_;
  int number_;
  int port_;
  pid_t process_ = 0;
};

}  // namespace krx::test
