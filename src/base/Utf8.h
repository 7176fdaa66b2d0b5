#pragma once

#include <optional>
#include <string_view>

#include "base/String.h"

namespace krx {

// The text of UTF-8 bytes; nothing if they are no well-formed UTF-8 (overlong forms and surrogates
// included).
std::optional<String> FromUtf8(std::string_view bytes);

}  // namespace krx
