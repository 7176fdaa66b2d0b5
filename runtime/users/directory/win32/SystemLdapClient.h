#pragma once

#include "runtime/users/directory/LdapConnection.h"
#include "runtime/users/directory/win32/SystemLdap.h"

namespace krx::runtime {

// How the system's client is called; see LdapConnection.
class SystemLdapApi {
 public:
  using Session = LDAP;
  using Message = LDAPMessage;

  void Close(LDAP* session);
  void Free(LDAPMessage* message);
  String LastFailure(LDAP* session);

  // All return the number of the request, or -1.
  int SimpleBind(LDAP* session, const String& name, const Password& password);
  int NegotiateBind(LDAP* session);  // the result code itself
  int Search(LDAP* session, const DirectorySearch& search, const std::string& cookie);
  int Extended(LDAP* session, const std::string& operation, const SecretBytes& request);
  int Exchange(LDAP* session, const String& dn, const std::string& attribute,
               const SecretBytes& before, const SecretBytes& after);

  bool Poll(LDAP* session, int request, std::chrono::microseconds patience, LDAPMessage** message);
  LDAPMessage* FirstEntry(LDAP* session, LDAPMessage* answer);
  LDAPMessage* NextEntry(LDAP* session, LDAPMessage* entry);
  DirectoryEntry Entry(LDAP* session, LDAPMessage* entry);
  DirectoryAnswer Parse(LDAP* session, LDAPMessage* answer, std::string* cookie);
};

// The system's client of directory services (wldap32.dll). Encrypted connections are made only
// where the client lets the certificate be judged: by the authorities that the system trusts and
// by the name that the rules give the server.
class SystemLdapClient : public DirectoryClient {
 public:
  std::unique_ptr<DirectoryConnection> Connect(const DirectoryServer& server,
                                               DirectoryDeadline deadline) override;

 private:
  SystemLdapApi api_;
};

}  // namespace krx::runtime
