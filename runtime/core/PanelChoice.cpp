#include "runtime/core/PanelChoice.h"

#include "runtime/core/KorvelError.h"

namespace krx::runtime {

namespace {

[[noreturn]] void Refuse(String what) {
  throw KorvelError(kInvalidArgument, std::move(what));
}

}  // namespace

template <class Change>
void PanelChoice::Apply(Change change) {
  const std::lock_guard lock(mutex_);
  Begin();
  change(settings_);
}

void PanelChoice::Begin() {
  if (!beginning_) return;
  settings_ = beginning_();
  beginning_ = nullptr;
}

krx::PanelSettings PanelChoice::Read() {
  const std::lock_guard lock(mutex_);
  Begin();
  return settings_;
}

void PanelChoice::SetKeyboard(StringView name) {
  const auto use = KeyboardUseNamed(name);
  if (!use)
    Refuse(u"Keyboard is \"touch\", \"always\" or \"never\", not \"" + String(name) + u"\"");
  Apply([&](krx::PanelSettings& settings) { settings.Keyboard = *use; });
}

void PanelChoice::SetTheme(StringView name) {
  const auto theme = ThemeNamed(name);
  if (!theme) {
    Refuse(u"Theme is \"light\", \"dark\", \"grey\" or \"high-contrast\", not \"" + String(name) +
           u"\"");
  }
  Apply([&](krx::PanelSettings& settings) { settings.Theme = *theme; });
}

void PanelChoice::SetShowCountdown(bool show) {
  Apply([&](krx::PanelSettings& settings) { settings.ShowCountdown = show; });
}

void PanelChoice::SetFirstAnswerDelay(double seconds) {
  if (!(seconds >= 0 && seconds <= kLongestAnswerDelay)) {
    Refuse(u"FirstAnswerDelay is 0 to 1 second");
  }
  Apply([&](krx::PanelSettings& settings) { settings.FirstAnswerDelay = seconds; });
}

}  // namespace krx::runtime
