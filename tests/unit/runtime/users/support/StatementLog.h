#pragma once

#include <string>
#include <vector>

namespace krx::test {

// The statements of all databases that are opened while it lives, in their order.
class StatementLog {
 public:
  StatementLog();
  ~StatementLog();
  StatementLog(const StatementLog&) = delete;
  StatementLog& operator=(const StatementLog&) = delete;

  const std::vector<std::string>& Texts() const { return texts_; }

 private:
  std::vector<std::string> texts_;
};

}  // namespace krx::test
