#pragma once

#include <cstdint>

#include "base/String.h"

namespace krx {

// A font as the runtime's font classes describe it; Size is in points (1 point = 20 twips).
struct Font {
  String Name = u"Tahoma";
  float Size = 8.25f;
  std::int16_t Weight = 400;
  bool Italic = false;
  bool Underline = false;
  bool Strikethrough = false;
  std::int16_t Charset = 1;  // the platform's default character set

  bool operator==(const Font&) const = default;
};

}  // namespace krx
