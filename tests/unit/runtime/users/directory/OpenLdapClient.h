#pragma once

#include <ldap.h>

#include <string>

#include "runtime/users/directory/LdapConnection.h"

namespace krx::test {

// How OpenLDAP's own library is called.
class OpenLdapApi {
 public:
  using Session = LDAP;
  using Message = LDAPMessage;

  void Close(LDAP* session);
  void Free(LDAPMessage* message) { ldap_msgfree(message); }
  String LastFailure(LDAP* session);

  // All return the number of the request, or -1.
  int SimpleBind(LDAP* session, const String& name, const Password& password);
  int NegotiateBind(LDAP*) { return LDAP_AUTH_METHOD_NOT_SUPPORTED; }
  int Search(LDAP* session, const runtime::DirectorySearch& search, const std::string& cookie);
  int Extended(LDAP* session, const std::string& operation, const runtime::SecretBytes& request);
  int Exchange(LDAP* session, const String& dn, const std::string& attribute,
               const runtime::SecretBytes& before, const runtime::SecretBytes& after);

  bool Poll(LDAP* session, int request, std::chrono::microseconds patience, LDAPMessage** message);
  LDAPMessage* FirstEntry(LDAP* session, LDAPMessage* answer) {
    return ldap_first_entry(session, answer);
  }
  LDAPMessage* NextEntry(LDAP* session, LDAPMessage* entry) {
    return ldap_next_entry(session, entry);
  }
  runtime::DirectoryEntry Entry(LDAP* session, LDAPMessage* entry);
  runtime::DirectoryAnswer Parse(LDAP* session, LDAPMessage* answer, std::string* cookie);
};

// The native client of the tests: OpenLDAP's library, which trusts the authorities of one file.
class OpenLdapClient : public runtime::DirectoryClient {
 public:
  explicit OpenLdapClient(std::string authorities = {}) : authorities_(std::move(authorities)) {}

  std::unique_ptr<runtime::DirectoryConnection> Connect(
      const runtime::DirectoryServer& server, runtime::DirectoryDeadline deadline) override;

 private:
  std::string authorities_;
  OpenLdapApi api_;
};

}  // namespace krx::test
