#pragma once

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "base/String.h"

namespace krx::timing {

// One kind of attempt that is refused.
struct LogOnCase {
  std::string Name;
  String User;
  String Password;
  std::int32_t Code;  // of the refusal
};

// A user management on real files, whose passwords cost one iteration, so that all else weighs
// most.
class LogOnBench {
 public:
  explicit LogOnBench(const std::filesystem::path& folder);
  ~LogOnBench();

  // Cases whose times are to be alike.
  const std::vector<LogOnCase>& Cases() const { return cases_; }
  // Everybody's attempts are as at the beginning.
  void Restart();
  // The time of the processor that one attempt takes, in nanoseconds. Raises Error when it does not
  // end as it should.
  double Measure(const LogOnCase& attempt);

 private:
  struct State;

  std::unique_ptr<State> state_;
  std::vector<LogOnCase> cases_;
};

}  // namespace krx::timing
