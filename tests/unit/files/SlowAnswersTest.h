#pragma once

#include <algorithm>
#include <set>

#include "files/TouchTest.h"

namespace krx::test {

// The selection dialogs on a machine that keeps answers back, with an operator whose every act is
// timed: nothing may hang him, whatever medium is silent.
class SlowAnswersTest : public TouchTest {
 protected:
  using Milliseconds = headless::HeadlessPlatform::Milliseconds;

  // The sum of all waits of one act that nobody notices.
  static constexpr Milliseconds kLongestWait{100};
  // Between two looks at the timers.
  static constexpr Milliseconds kMoment{10};

  // C:\Windows is current; \\server\share is there, too.
  SlowAnswersTest() {
    machine.AddFolder(u"\\\\server\\share\\Plant\\One");
    machine.CurrentFolder = u"C:\\Windows";
    machine.Held = [this](const std::string& question) { return IsKept(question); };
    machine.OnWait = [this](folders::Patience patience) { waited_ += patience; };
  }

  // Keeps the answers of questions whose names begin so, until they are let go.
  void Keep(std::string beginning) { kept_.insert(std::move(beginning)); }
  void LetGo() { kept_.clear(); }

  // Something that the operator does, or time that passes: it waits no longer than he bears.
  template <class Act>
  void Do(const std::string& name, Act act) {
    const std::size_t boxes = platform.Boxes.size();
    waited_ = Milliseconds(0);
    answered_ = 0;
    act();
    EXPECT_LE(waited_.count(), kLongestWait.count()) << name;
    longest_ = std::max(longest_, waited_);
    for (std::size_t i = boxes; i < platform.Boxes.size() && answered_ == 0; ++i) {
      const auto end = platform.Boxes.begin() + static_cast<std::ptrdiff_t>(boxes);
      EXPECT_NE(std::find(platform.Boxes.begin(), end, platform.Boxes[i]), end)
          << name << ": a box tells of what nobody has answered";
    }
  }
  void Pass(Operator& op, Milliseconds time) {
    for (Milliseconds passed{0}; passed < time; passed += kMoment)
      Do("time passes", [&] { op.Wait(kMoment); });
  }

  // Of the whole test.
  Milliseconds longest_{0};

  // Asked for every answer that is looked for.
  virtual bool IsKept(const std::string& question) {
    const bool kept = std::any_of(kept_.begin(), kept_.end(), [&](const std::string& beginning) {
      return question.starts_with(beginning);
    });
    if (!kept) ++answered_;
    return kept;
  }

  std::set<std::string> kept_;
  Milliseconds waited_{0};  // during the present act
  int answered_ = 0;        // likewise
};

}  // namespace krx::test
