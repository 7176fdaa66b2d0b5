#pragma once

#include <chrono>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <vector>

#include "runtime/users/directory/DirectoryService.h"
#include "runtime/users/rules/Names.h"

namespace krx::runtime {

struct NameOrder {
  bool operator()(StringView left, StringView right) const { return PrecedesInList(left, right); }
};

// Users by name, upper and lower case alike.
using UsersByName = std::map<String, DirectoryUser, NameOrder>;

// All users of the directory, kept for a while, so that a list of them opens quickly. What is read
// at first is their names, where the groups tell them; all that is to be known of the users is read
// when somebody asks for more than one of them, or for the list again. Where an older list is
// there, a new one is waited for less than a second; it comes to its end nevertheless, and the next
// call has it.
class DirectoryList {
 public:
  using Access = DirectoryService::Access;

  explicit DirectoryList(DirectoryService& service) : service_(service) {}

  // The list; an older one, or an empty one, when no server answers in time.
  std::shared_ptr<const UsersByName> Read(const Access& access);
  // What was read last, fresh or not; never null.
  std::shared_ptr<const UsersByName> Known() const;
  // Whether what was read last counts as fresh and whole.
  bool IsFresh(const DirectoryRules& rules) const;
  // Waits until the users are known as a whole, for who asks for this one of the list. Whoever asks
  // for a single one is better off asking for him alone.
  void AwaitWhole(const Access& access, const String& name);

 private:
  // By which rules something was read, and when.
  struct Mark {
    std::optional<DirectoryRules> By;
    std::chrono::steady_clock::time_point At;

    bool IsFresh(const DirectoryRules& rules) const;
  };
  struct State {
    bool IsReading();

    std::mutex Guard;
    std::shared_ptr<const UsersByName> Users = std::make_shared<const UsersByName>();
    Mark Named;  // names and classes
    Mark Whole;
    String AskedFor;  // the first one that was asked for since the names are known
    bool Reading = false;
    std::mutex Turn;  // held by who reads, from beginning to end
  };
  enum class Part { Names, Whole };

  static void Work(DirectoryService& service, const Access& access, Part part, State& state);
  static bool ReadNames(DirectoryService& service, const Access& access, State& state);
  static bool HasJustAnswered(const Access& access, State& state);
  static void ReadWhole(DirectoryService& service, const Access& access, bool answers,
                        State& state);
  static void Publish(State& state, const Access& access, std::vector<DirectoryUser> users,
                      Part part);
  void Start(const Access& access, Part part, std::chrono::milliseconds patience);

  DirectoryService& service_;
  std::shared_ptr<State> state_ = std::make_shared<State>();
};

}  // namespace krx::runtime
