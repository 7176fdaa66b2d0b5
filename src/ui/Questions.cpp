#include "ui/Questions.h"

#include "base/Error.h"

namespace krx::ui {

namespace {

constexpr int kInterval = 10;  // milliseconds between two looks for answers

}  // namespace

Questions::Questions(Form& form, String timer) : timer_(form, std::move(timer)) {
  timer_.Interval = kInterval;
  timer_.Tick = [this] { Tick(); };
}

void Questions::Add(Look look) {
  open_.push_back(std::move(look));
  timer_.Enabled = true;
}

void Questions::Drop() {
  open_.clear();
  came_.clear();
  timer_.Enabled = false;
}

// Whoever is told an answer may ask more, drop all or show something that lets the timer tick.
void Questions::Tick() {
  std::erase_if(open_, [&](Look& look) {
    try {
      std::function<void()> told = look(folders::kNoPatience);
      if (!told) return false;
      came_.push_back(std::move(told));
    } catch (const Error&) {
      // A question that cannot be asked stays without an answer.
    }
    return true;
  });
  timer_.Enabled = !open_.empty();
  while (!came_.empty()) {
    const std::function<void()> tell = std::move(came_.front());
    came_.erase(came_.begin());
    tell();
  }
}

}  // namespace krx::ui
