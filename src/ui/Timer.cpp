#include "ui/Timer.h"

#include <utility>

namespace krx::ui {

Timer::Timer(Form& parent, String name) : Component(parent, std::move(name), ui::Kind::Timer) {}

}  // namespace krx::ui
