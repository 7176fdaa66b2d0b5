#pragma once

#include <mutex>

#include "base/PanelSettings.h"

namespace krx::runtime {

// The panel settings of a process; safe to use from several threads. A value that is none raises
// Error and leaves everything as it was.
class PanelChoice {
 public:
  krx::PanelSettings Read() const;
  void SetKeyboard(StringView name);
  void SetTheme(StringView name);
  void SetShowCountdown(bool show);
  void SetFirstAnswerDelay(double seconds);

 private:
  template <class Change>
  void Apply(Change change);

  mutable std::mutex mutex_;
  krx::PanelSettings settings_{.Keyboard = KeyboardUse::Touch};
};

}  // namespace krx::runtime
