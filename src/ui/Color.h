#pragma once

#include <cstdint>

namespace krx::ui {

// Either a red-green-blue value (0x00BBGGRR) or, with the highest bit set, the index of a system
// colour, which follows the operator's settings (high contrast among them).
using Color = std::uint32_t;

constexpr Color SystemColor(std::uint32_t index) {
  return 0x80000000u | index;
}

inline constexpr Color kActiveCaption = SystemColor(2);
inline constexpr Color kWindowBackground = SystemColor(5);
inline constexpr Color kWindowText = SystemColor(8);
inline constexpr Color kActiveCaptionText = SystemColor(9);
inline constexpr Color kButtonFace = SystemColor(15);
inline constexpr Color kButtonText = SystemColor(18);

}  // namespace krx::ui
