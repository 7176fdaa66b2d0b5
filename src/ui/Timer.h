#pragma once

#include "ui/Component.h"

namespace krx::ui {

// Raises Tick once per interval while it is enabled and its form is shown.
class Timer : public Component {
 public:
  Timer(Form& parent, String name);

  Property<int> Interval{*this, Aspect::Timing, 0};  // milliseconds; 0 never ticks
  Property<bool> Enabled{*this, Aspect::Timing, false};

  Event<> Tick;
};

}  // namespace krx::ui
