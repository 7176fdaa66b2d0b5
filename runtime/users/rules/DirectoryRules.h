#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "base/String.h"

namespace krx::runtime {

// One server of the directory service, as the rules name it.
struct DirectoryServer {
  String Host;  // a name or an address; one of version 6 without its brackets
  std::int32_t Port = 636;
  bool Encrypted = true;

  // Whether it is this machine, by a name or address that cannot be another's.
  bool IsThisMachine() const;
  // As the rules write it: ldaps://host, and the port where it is not the usual one.
  String Address() const;
  bool operator==(const DirectoryServer& other) const = default;
};

// A group of the directory whose members are users of a class.
struct DirectoryGroup {
  String ClassName;
  String Dn;

  bool operator==(const DirectoryGroup& other) const = default;
};

// Who searches: nobody, the process by what it is logged on as, or an entry with a password.
enum class SearchIdentity { Anonymous, Negotiate, Entry };

// How the directory keeps passwords and what it says about its users' state.
enum class DirectoryKind { OpenLdap, ActiveDirectory };

// Where a plant's users are looked up besides the local ones.
struct DirectoryRules {
  std::vector<DirectoryServer> Servers;  // asked in this order; none: no directory service
  DirectoryKind Kind = DirectoryKind::OpenLdap;
  String Base;
  String UserFilter = u"(&(objectClass=inetOrgPerson)(uid={user}))";
  String GroupFilter = u"(&(objectClass=groupOfNames)(member={dn}))";
  std::vector<DirectoryGroup> Groups;
  std::string NameAttribute = "uid";
  std::string FullNameAttribute = "cn";
  std::string CommentAttribute = "description";
  std::string MemberAttribute = "member";
  String BindAs = u"{dn}";
  SearchIdentity SearchAs = SearchIdentity::Anonymous;
  String SearchDn;                 // of SearchIdentity::Entry
  bool AllowsUnencrypted = false;  // to other machines
  std::int32_t AnswerSeconds = 5;  // no server is waited for longer
  std::int32_t ListMinutes = 5;    // as long the list of users counts as fresh
  std::int32_t OfflineDays = 0;    // 0: nobody logs on without a server

  bool InUse() const { return !Servers.empty(); }
  // Whether somebody is there to search before a user has logged on.
  bool CanSearch() const {
    return SearchAs != SearchIdentity::Anonymous || BindAs.find(u"{dn}") != String::npos;
  }
  bool operator==(const DirectoryRules& other) const = default;
};

}  // namespace krx::runtime
