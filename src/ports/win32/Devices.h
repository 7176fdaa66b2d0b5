#pragma once

#include <functional>
#include <map>
#include <optional>

#include "base/String.h"
#include "ports/win32/Background.h"

namespace krx::win32 {

// Asks drives and servers with a limit to the wait: one that keeps quiet counts as not there until
// the question that it left open has ended, so it makes the operator wait once and not at every
// folder on the way.
class Devices {
 public:
  static constexpr std::chrono::milliseconds kPatience{3000};

  explicit Devices(std::chrono::milliseconds patience = kPatience) : patience_(patience) {}

  // Starts work that asks the device of a system path, and waits for its answer. False when the
  // device keeps quiet; the work has been given up then.
  bool Ask(const String& path, std::shared_ptr<Background> work);

  // The answer to a question that must not refer to anything of the caller's; none when the device
  // keeps quiet.
  template <class Reply>
  std::optional<Reply> Ask(const String& path, std::function<Reply()> question) {
    const auto work = std::make_shared<Question<Reply>>(std::move(question));
    if (!Ask(path, std::static_pointer_cast<Background>(work))) return std::nullopt;
    return std::move(work->Said);
  }

 private:
  template <class Reply>
  class Question : public Background {
   public:
    explicit Question(std::function<Reply()> question) : question_(std::move(question)) {}
    Reply Said{};

   private:
    void Run() override { Said = question_(); }
    const std::function<Reply()> question_;
  };

  const std::chrono::milliseconds patience_;
  std::map<String, std::shared_ptr<Background>> silent_;  // by device
};

}  // namespace krx::win32
