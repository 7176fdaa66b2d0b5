#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <map>
#include <optional>
#include <string>

#include "directory/Threads.h"
#include "host/UserManager.h"
#include "runtime/users/directory/DirectoryUsers.h"
#include "support/TestCryptography.h"

namespace krx::test {

// What is kept for offline log-ons, in memory.
class KeptInMemory : public runtime::OfflineStore {
 public:
  std::unique_ptr<Hold> Open() override { return std::make_unique<Held>(*this); }

  std::map<String, runtime::OfflineRecord, runtime::NameOrder> Records;

 private:
  struct Held : Hold {
    explicit Held(KeptInMemory& kept) : Kept(kept), Changed(kept.Records) {}
    std::optional<runtime::OfflineRecord> Find(StringView name) override {
      const auto found = Changed.find(String(name));
      return found == Changed.end() ? std::nullopt : std::optional(found->second);
    }
    std::optional<runtime::OfflineRecord> FindOrAny(StringView name) override {
      const auto found = Changed.find(String(name));
      if (found != Changed.end()) return found->second;
      return Changed.empty() ? std::nullopt : std::optional(Changed.begin()->second);
    }
    void Put(const runtime::OfflineRecord& record) override {
      Changed.insert_or_assign(record.User.Name, record);
    }
    void Remove(StringView name) override { Changed.erase(String(name)); }
    void Commit() override { Kept.Records = Changed; }

    KeptInMemory& Kept;
    decltype(Records) Changed;
  };
};

// Rules for a directory of these servers, with three classes mapped to groups.
inline runtime::UserRules RulesFor(std::vector<runtime::DirectoryServer> servers) {
  runtime::UserRules rules;
  rules.HashIterations = 1000;
  rules.Directory.Servers = std::move(servers);
  rules.Directory.Base = u"dc=plant";
  rules.Directory.Groups = {{u"Administrator", u"cn=administrators,ou=groups,dc=plant"},
                            {u"Engineer", u"cn=engineers,ou=groups,dc=plant"},
                            {u"Operator", u"cn=operators,ou=groups,dc=plant"}};
  return rules;
}

// The users of a directory behind one client.
class DirectoryBench {
 public:
  explicit DirectoryBench(runtime::DirectoryClient& client) : service(client, *threads) {}
  ~DirectoryBench() { threads.reset(); }  // work under way uses the others

  std::int32_t LogOn(const String& name, StringView password) {
    last = users.LogOn(rules, search_password, name, Password(password));
    return last.Code;
  }
  std::int32_t Change(const String& name, StringView changed, StringView current) {
    last = users.Change(rules, search_password, name, Password(changed), Password(current));
    return last.Code;
  }

  // The list with all that is to be known of the users; the first one has their names alone.
  std::shared_ptr<const runtime::UsersByName> WholeList() {
    auto list = users.List(rules, search_password);
    while (!list->empty() && list->begin()->second.FullName.empty()) {
      users.Find(rules, search_password, list->begin()->first);  // waits for all of it
      list = users.List(rules, search_password);
    }
    return list;
  }

  runtime::UserRules rules;
  std::optional<Password> search_password;
  runtime::DirectoryOutcome last;
  KeptInMemory kept;
  TestCryptography crypto;
  TestClock clock;
  runtime::OfflineUsers offline{kept, crypto, clock};
  std::unique_ptr<Threads> threads = std::make_unique<Threads>();
  runtime::DirectoryService service;
  runtime::DirectoryUsers users{service, offline};
};

}  // namespace krx::test
