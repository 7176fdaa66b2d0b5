#pragma once

#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <utility>
#include <vector>

#include "runtime/users/directory/DirectoryTalk.h"
#include "runtime/users/system/Errands.h"

namespace krx::runtime {

// What it takes to talk to the plant's directory; shared with work that nobody waits for any more.
struct DirectoryAccess {
  DirectoryRules Rules;
  std::optional<Password> SearchPassword;
};

// The servers of the directory: one after the other is asked until one answers. None is waited for
// longer than the rules say, whatever the platform's client does meanwhile. A server that kept
// silent is asked behind the others for half a minute. To be used by several threads at once.
class DirectoryService {
 public:
  using Access = std::shared_ptr<const DirectoryAccess>;

  DirectoryService(DirectoryClient& client, Errands& errands)
      : client_(client), errands_(errands) {}

  // Holds a talk with the first server that answers, on another thread: the talk keeps what it
  // needs itself. Raises DirectorySilence, which names every server, when none answers.
  template <class Answer>
  Answer Ask(const Access& access, std::function<Answer(DirectoryTalk&)> talk) {
    std::shared_ptr<std::optional<Answer>> answer;
    Hold(access, [&]() -> Talk {
      answer = std::make_shared<std::optional<Answer>>();
      return [answer, talk](DirectoryTalk& with) { answer->emplace(talk(with)); };
    });
    return std::move(**answer);
  }

  // Whether every server kept silent when it was last asked, less than half a minute ago.
  bool AreAllSilent(const DirectoryRules& rules);

  runtime::Errands& Threads() { return errands_; }

 private:
  using Talk = std::function<void(DirectoryTalk&)>;

  // A new talk for each server: an abandoned one may still come to its end.
  void Hold(const Access& access, const std::function<Talk()>& new_talk);
  // Nothing when the server has answered, else why it has not.
  std::optional<String> HoldWith(const DirectoryServer& server, const Access& access, Talk talk);
  std::vector<DirectoryServer> Order(const DirectoryRules& rules);
  void NoteSilence(const DirectoryServer& server, bool silent);

  DirectoryClient& client_;
  Errands& errands_;
  std::mutex guard_;
  std::map<String, std::chrono::steady_clock::time_point> silent_since_;
};

}  // namespace krx::runtime
