#pragma once

#include <gtest/gtest.h>

#include <deque>
#include <set>
#include <string>
#include <vector>

#include "runtime/users/directory/Directory.h"

namespace krx::test {

// A client whose servers give recorded answers, in their order, to what it writes down.
class RecordedClient : public runtime::DirectoryClient {
 public:
  struct Answer {
    runtime::DirectoryAnswer Result;
    std::vector<runtime::DirectoryEntry> Entries;
  };

  std::unique_ptr<runtime::DirectoryConnection> Connect(const runtime::DirectoryServer& server,
                                                        runtime::DirectoryDeadline) override {
    asked.push_back("connect " + ToUtf8(server.Host));
    if (silent.contains(server.Host)) throw runtime::DirectorySilence(u"connection refused");
    return std::make_unique<Connection>(*this);
  }

  void Answers(runtime::DirectoryAnswer result, std::vector<runtime::DirectoryEntry> entries = {}) {
    answers.push_back({std::move(result), std::move(entries)});
  }

  std::set<String> silent;
  std::deque<Answer> answers;
  std::vector<std::string> asked;

 private:
  Answer Next(std::string request) {
    asked.push_back(std::move(request));
    if (answers.empty()) {
      ADD_FAILURE() << "no answer is recorded to: " << asked.back();
      return {{80, "no answer is recorded", {}}, {}};
    }
    Answer answer = std::move(answers.front());
    answers.pop_front();
    return answer;
  }

  struct Connection : runtime::DirectoryConnection {
    explicit Connection(RecordedClient& client) : Client(client) {}

    runtime::DirectoryAnswer Bind(const String& name, const Password& password) override {
      return Client.Next("bind " + ToUtf8(name) + " " + ToUtf8(password.View())).Result;
    }
    runtime::DirectoryAnswer BindAsProcess() override { return Client.Next("negotiate").Result; }
    runtime::DirectoryEntries Search(const runtime::DirectorySearch& search) override {
      std::string request = "search " + ToUtf8(search.Base) + " " + ToUtf8(search.Filter);
      if (search.Scope == runtime::DirectorySearch::Reach::Entry)
        request += " " + search.Attributes.front();
      Answer answer = Client.Next(std::move(request));
      return {std::move(answer.Result), std::move(answer.Entries)};
    }
    runtime::DirectoryAnswer Extended(const std::string& operation,
                                      const runtime::SecretBytes&) override {
      return Client.Next("extended " + operation).Result;
    }
    runtime::DirectoryAnswer Exchange(const String& dn, const std::string& attribute,
                                      const runtime::SecretBytes& before,
                                      const runtime::SecretBytes& after) override {
      return Client
          .Next("exchange " + ToUtf8(dn) + " " + attribute + " " + Letters(before) + " by " +
                Letters(after))
          .Result;
    }

    // UTF-16 of plain letters, without what lies between them.
    static std::string Letters(const runtime::SecretBytes& bytes) {
      std::string letters;
      for (const std::uint8_t byte : bytes.Bytes()) {
        if (byte != 0) letters += static_cast<char>(byte);
      }
      return letters;
    }

    RecordedClient& Client;
  };
};

}  // namespace krx::test
