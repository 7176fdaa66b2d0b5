#pragma once

#include "base/String.h"

namespace krx::ui {

// Has no width of its own.
inline constexpr char16_t kLeftToRightMark = 0x200E;

// A text as it is shown among texts that are written from right to left: one that begins with a
// letter of the other direction, as paths and file names mostly do, keeps its order inside, and so
// does a number with its sign.
String InsideRightToLeft(StringView text);

}  // namespace krx::ui
