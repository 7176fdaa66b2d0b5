#pragma once

#include <mutex>

#include "runtime/users/UserManagement.h"

namespace krx::runtime {

// What operators have to acknowledge before they log on: log-on-notice.<language>.txt in the users'
// folder, or log-on-notice.txt. Safe to use from several threads.
class LogOnNotice {
 public:
  static constexpr std::size_t kLargest = 16'384;  // bytes

  explicit LogOnNotice(UserManagement& management) : management_(management) {}

  // The text in the language ("pt-br"), in that without its region, or the one for all; empty where
  // there is none. Raises Error, which is recorded once, for a file that cannot be read, is too
  // long or is no text.
  String Read(StringView language);

 private:
  std::optional<String> ReadFile(const std::filesystem::path& file);
  String Find(StringView language);
  void Record(const String& fault);

  UserManagement& management_;
  std::mutex guard_;
  String fault_;  // that has been recorded
};

}  // namespace krx::runtime
