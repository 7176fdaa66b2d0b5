#pragma once

#include <chrono>
#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/Password.h"
#include "runtime/core/KorvelError.h"
#include "runtime/users/passwords/SecretBytes.h"
#include "runtime/users/rules/DirectoryRules.h"

namespace krx::runtime {

// No answer came: the server cannot be reached, is busy, cannot prove who it is or keeps silent.
class DirectorySilence : public Error {
 public:
  explicit DirectorySilence(String reason)
      : Error(KorvelError(kDirectorySilent, std::move(reason))) {}
};

// What a server says to one request.
struct DirectoryAnswer {
  std::int32_t Code = 0;              // result code of LDAP
  std::string Diagnostic;             // UTF-8, for people; Active Directory hides its reason in it
  std::optional<std::string> Policy;  // value of the password policy control
};

// One entry; the names of attributes are in small letters.
struct DirectoryEntry {
  String Dn;
  std::map<std::string, std::vector<std::string>> Attributes;

  // The first value as text; empty when there is none or when it is no text.
  String Text(std::string_view attribute) const;
};

struct DirectorySearch {
  enum class Reach { Entry, Subtree };

  String Base;
  Reach Scope = Reach::Subtree;
  String Filter;
  std::vector<std::string> Attributes;
  bool Paged = false;  // for what is longer than servers give at once
};

struct DirectoryEntries : DirectoryAnswer {
  std::vector<DirectoryEntry> Entries;
};

// A connection to one server. Every request waits no longer than until the connection's deadline;
// an answer that does not come raises DirectorySilence.
class DirectoryConnection {
 public:
  virtual ~DirectoryConnection() = default;

  // Logs the connection on by a name and a password. Never called with an empty password: servers
  // take that for a request to be nobody, and say yes.
  virtual DirectoryAnswer Bind(const String& name, const Password& password) = 0;
  // Logs the connection on as what the process is logged on as.
  virtual DirectoryAnswer BindAsProcess() = 0;
  // All entries, page by page where the search asks for it.
  virtual DirectoryEntries Search(const DirectorySearch& search) = 0;
  // An extended operation, by its number and the bytes of its request.
  virtual DirectoryAnswer Extended(const std::string& operation, const SecretBytes& request) = 0;
  // Takes one value of an attribute away and adds another, in one step.
  virtual DirectoryAnswer Exchange(const String& dn, const std::string& attribute,
                                   const SecretBytes& before, const SecretBytes& after) = 0;
};

using DirectoryDeadline = std::chrono::steady_clock::time_point;

// The platform's own client of directory services.
class DirectoryClient {
 public:
  virtual ~DirectoryClient() = default;
  // Raises DirectorySilence when the server is not there in time or its certificate is not good.
  virtual std::unique_ptr<DirectoryConnection> Connect(const DirectoryServer& server,
                                                       DirectoryDeadline deadline) = 0;
};

}  // namespace krx::runtime
