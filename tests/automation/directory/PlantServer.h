#pragma once

#include <string>
#include <vector>

#include "runtime/users/rules/DirectoryRules.h"

namespace krx::test {

// The password of every user in the plant's directory; tests/directory/server says who they are.
inline constexpr const char16_t* kPlantPassword = u"Sieben Ventile";

// A port of this machine that was free a moment ago.
int FreePort();

// A server of the plant's directory on the machine that Wine runs on, by the script
// tests/directory/server; ends with the object.
class PlantServer {
 public:
  // `options` are those of the script. Returns once the server answers.
  explicit PlantServer(const std::string& options = {});
  // It also answers encrypted, with a certificate for that name by an authority of its own.
  PlantServer(const std::string& name, int encrypted_port);
  ~PlantServer();
  PlantServer(const PlantServer&) = delete;
  PlantServer& operator=(const PlantServer&) = delete;

  // Ends the process at once, as a power cut does, and waits until nobody answers any more.
  void Kill();

  runtime::DirectoryServer Server() const { return {u"127.0.0.1", port_, false}; }
  // The settings by which panels find it.
  std::string Rules() const;
  // The file of the authority's certificate.
  std::wstring Authority() const { return folder_ + L"\\authority.pem"; }

 private:
  void Start(const std::string& before, const std::string& options);

  std::wstring folder_;  // as this program names it
  int port_;
  bool runs_ = false;
};

// A server that takes connections and says nothing.
class SilentServer {
 public:
  SilentServer();
  ~SilentServer();
  SilentServer(const SilentServer&) = delete;
  SilentServer& operator=(const SilentServer&) = delete;

  runtime::DirectoryServer Server() const { return {u"127.0.0.1", port_, false}; }

 private:
  int port_ = 0;  // before the socket, whose making tells it
  std::uintptr_t socket_;
};

}  // namespace krx::test
