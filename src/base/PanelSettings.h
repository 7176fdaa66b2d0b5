#pragma once

#include <optional>

#include "base/String.h"

namespace krx {

// How the dialogs look. High contrast wins over all when the system asks for it.
enum class Theme { Light, Dark, Grey, HighContrast };

// When the keyboard on the screen appears: with a text field that is entered by finger or pen, with
// every text field, or not at all.
enum class KeyboardUse { Touch, Always, Never };

// What a plant chooses for its panels. As it stands here, it is what a dialog gets from a runtime
// that knows nothing of panels.
struct PanelSettings {
  KeyboardUse Keyboard = KeyboardUse::Never;
  krx::Theme Theme = krx::Theme::Light;
  bool ShowCountdown = false;   // seconds until a button activates itself, on that button
  double FirstAnswerDelay = 0;  // seconds, 0 to 1, for which a new dialog takes no answer
};

inline constexpr double kLongestAnswerDelay =
    1;  // seconds; longer, an operator takes it for a fault

// Names of the values in settings: "touch", "always", "never"; "light", "dark", "grey",
// "high-contrast". None for any other name; case of ASCII letters does not matter.
std::optional<KeyboardUse> KeyboardUseNamed(StringView name);
std::optional<Theme> ThemeNamed(StringView name);
StringView NameOf(KeyboardUse use);
StringView NameOf(Theme theme);

}  // namespace krx
