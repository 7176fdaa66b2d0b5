#include "base/PanelSettings.h"

#include <cstddef>

namespace krx {

namespace {

// In the order of the enumerations.
constexpr StringView kKeyboardUses[] = {u"touch", u"always", u"never"};
constexpr StringView kThemes[] = {u"light", u"dark", u"grey", u"high-contrast"};

template <class Value, std::size_t Count>
std::optional<Value> Named(const StringView (&names)[Count], StringView name) {
  for (std::size_t i = 0; i < Count; ++i) {
    if (AsciiUpper(name) == AsciiUpper(names[i])) return static_cast<Value>(i);
  }
  return std::nullopt;
}

}  // namespace

std::optional<KeyboardUse> KeyboardUseNamed(StringView name) {
  return Named<KeyboardUse>(kKeyboardUses, name);
}

std::optional<Theme> ThemeNamed(StringView name) {
  return Named<Theme>(kThemes, name);
}

StringView NameOf(KeyboardUse use) {
  return kKeyboardUses[static_cast<std::size_t>(use)];
}

StringView NameOf(Theme theme) {
  return kThemes[static_cast<std::size_t>(theme)];
}

}  // namespace krx
