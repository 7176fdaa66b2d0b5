#pragma once

#include <algorithm>
#include <memory>
#include <utility>

#include "runtime/users/directory/Directory.h"

namespace krx::runtime {

// A connection through a library with the interface of RFC 1823 and its successors, which every
// platform has with other names for the same; `Api` says how they are called:
//   types Session, Message, Control, Value (bv_len, bv_val), Text (a string for the library),
//   Secret; InText, OutText, SecretOf; Poll, Parse, SimpleBind, NegotiateBind, SearchPage,
//   FirstEntry, ...
template <class Api>
class LdapConnection : public DirectoryConnection {
 public:
  using Session = typename Api::Session;
  using Message = typename Api::Message;

  // Takes the session over.
  LdapConnection(Api& api, Session* session, DirectoryDeadline deadline)
      : api_(api), session_(session), deadline_(deadline) {}
  ~LdapConnection() override { api_.Close(session_); }

  DirectoryAnswer Bind(const String& name, const Password& password) override {
    return Await(api_.SimpleBind(session_, name, password));
  }

  DirectoryAnswer BindAsProcess() override { return {api_.NegotiateBind(session_), {}, {}}; }

  DirectoryEntries Search(const DirectorySearch& search) override {
    DirectoryEntries all;
    std::string cookie;
    do {
      Answer page = Wait(api_.Search(session_, search, cookie));
      cookie.clear();
      for (auto* entry = api_.FirstEntry(session_, page.get()); entry != nullptr;
           entry = api_.NextEntry(session_, entry))
        all.Entries.push_back(api_.Entry(session_, entry));
      static_cast<DirectoryAnswer&>(all) = api_.Parse(session_, page.get(), &cookie);
    } while (all.Code == 0 && !cookie.empty());
    return all;
  }

  DirectoryAnswer Extended(const std::string& operation, const SecretBytes& request) override {
    return Await(api_.Extended(session_, operation, request));
  }

  DirectoryAnswer Exchange(const String& dn, const std::string& attribute,
                           const SecretBytes& before, const SecretBytes& after) override {
    return Await(api_.Exchange(session_, dn, attribute, before, after));
  }

 private:
  struct Free {
    Api& api;
    void operator()(Message* message) const { api.Free(message); }
  };
  using Answer = std::unique_ptr<Message, Free>;

  DirectoryAnswer Await(int request) {
    const Answer answer = Wait(request);
    return api_.Parse(session_, answer.get(), nullptr);
  }

  // The whole answer to a request, or silence.
  Answer Wait(int request) {
    using std::chrono::microseconds;
    if (request < 0) throw DirectorySilence(api_.LastFailure(session_));
    const auto rest =
        std::chrono::duration_cast<microseconds>(deadline_ - std::chrono::steady_clock::now());
    Message* message = nullptr;
    if (!api_.Poll(session_, request, std::max(rest, microseconds(1)), &message))
      throw DirectorySilence(api_.LastFailure(session_));
    if (message == nullptr) throw DirectorySilence(u"no answer in time");
    return Answer(message, Free{api_});
  }

  Api& api_;
  Session* session_;
  DirectoryDeadline deadline_;
};

}  // namespace krx::runtime
