#pragma once

#include <chrono>
#include <map>
#include <memory>
#include <mutex>

#include "runtime/users/directory/DirectoryService.h"
#include "runtime/users/rules/Names.h"

namespace krx::runtime {

struct NameOrder {
  bool operator()(StringView left, StringView right) const { return PrecedesInList(left, right); }
};

// Users by name, upper and lower case alike.
using UsersByName = std::map<String, DirectoryUser, NameOrder>;

// All users of the directory, read at once and kept for a while, so that a list of them opens
// quickly. Where an older list is there, a new one is waited for less than a second; it comes to
// its end nevertheless, and the next call has it. The first list is one of names alone, where the
// groups tell them; all that is to be known of the users follows.
class DirectoryList {
 public:
  explicit DirectoryList(DirectoryService& service) : service_(service) {}

  // The list; an older one, or an empty one, when no server answers in time.
  std::shared_ptr<const UsersByName> Read(const DirectoryService::Access& access);
  // What was read last, fresh or not; never null.
  std::shared_ptr<const UsersByName> Known() const;
  // Whether what was read last counts as fresh and whole.
  bool IsFresh(const DirectoryRules& rules) const;
  // Waits for the end of a reading that is under way.
  void AwaitReading(const DirectoryRules& rules);

 private:
  struct State {
    bool IsReading();

    std::mutex Guard;
    std::shared_ptr<const UsersByName> Users = std::make_shared<const UsersByName>();
    std::optional<DirectoryRules> ReadBy;  // the rules of that list
    std::chrono::steady_clock::time_point ReadAt;
    bool Reading = false;
    std::mutex Turn;  // held by who reads, from beginning to end
  };

  void ReadAll(const DirectoryService::Access& access, bool is_first);
  // `answers`: a server has just answered.
  static void Fill(DirectoryService& service, const DirectoryService::Access& access, bool answers,
                   State& state);
  static void EndReading(State& state);
  static void Publish(State& state, std::vector<DirectoryUser> users);

  DirectoryService& service_;
  std::shared_ptr<State> state_ = std::make_shared<State>();
};

}  // namespace krx::runtime
