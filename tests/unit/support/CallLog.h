#pragma once

#include <string>
#include <vector>

#include "base/Error.h"

namespace krx::test {

// Writes down every call that reaches a fake, in order, and fails the n-th one: once or from then
// on.
class CallLog {
 public:
  void FailCall(int number, bool persistent);
  void FailNothing();
  // Writes the call down; throws the failure of this call when it is its turn.
  void Add(std::string call);
  // Writes down what cannot fail, such as the end of an object.
  void Note(std::string event) { entries_.push_back(std::move(event)); }

  int Calls() const { return calls_; }
  bool Injected() const { return injected_; }
  const std::vector<std::string>& Entries() const { return entries_; }
  // The entries that begin with `prefix`.
  std::vector<std::string> EntriesOf(std::string_view prefix) const;

  static Error FailureOf(int number);

  int LiveApplications = 0;

 private:
  std::vector<std::string> entries_;
  int calls_ = 0;
  int fail_at_ = 0;
  bool persistent_ = false;
  bool injected_ = false;
};

}  // namespace krx::test
