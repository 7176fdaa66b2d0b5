#pragma once

#include <functional>
#include <mutex>

#include "base/PanelSettings.h"

namespace krx::runtime {

// The panel settings of a process; safe to use from several threads. A value that is none raises
// Error and leaves everything as it was.
class PanelChoice {
 public:
  // What counts without any word of the plant: a keyboard with a finger.
  static constexpr krx::PanelSettings kDefaults{.Keyboard = KeyboardUse::Touch};
  using Beginning = std::function<krx::PanelSettings()>;

  explicit PanelChoice(const krx::PanelSettings& settings = kDefaults) : settings_(settings) {}
  // Begins at its first use with what this gives. While it fails, so does every use.
  explicit PanelChoice(Beginning beginning) : beginning_(std::move(beginning)) {}

  krx::PanelSettings Read();
  void SetKeyboard(StringView name);
  void SetTheme(StringView name);
  void SetShowCountdown(bool show);
  void SetFirstAnswerDelay(double seconds);

 private:
  template <class Change>
  void Apply(Change change);
  void Begin();

  std::mutex mutex_;
  Beginning beginning_;  // empty once it has begun
  krx::PanelSettings settings_;
};

}  // namespace krx::runtime
