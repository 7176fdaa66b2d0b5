#pragma once

#include <cstdint>

namespace krx::service {

// The numbers of message boxes under the names that the field has for them. A style is a sum of one
// value of each group.

// Which buttons stand in the box.
inline constexpr std::int32_t kButtonSetBits = 15;
inline constexpr std::int32_t kOKOnly = 0;
inline constexpr std::int32_t kOKCancel = 1;
inline constexpr std::int32_t kAbortRetryIgnore = 2;
inline constexpr std::int32_t kYesNoCancel = 3;
inline constexpr std::int32_t kYesNo = 4;
inline constexpr std::int32_t kRetryCancel = 5;

// Which icon it shows.
inline constexpr std::int32_t kIconBits = 112;
inline constexpr std::int32_t kCritical = 16;
inline constexpr std::int32_t kQuestion = 32;
inline constexpr std::int32_t kExclamation = 48;
inline constexpr std::int32_t kInformation = 64;

// Which button is the default; the fourth one is Help.
inline constexpr std::int32_t kDefaultBits = 768;
inline constexpr std::int32_t kDefaultButton2 = 256;
inline constexpr std::int32_t kDefaultButton3 = 512;
inline constexpr std::int32_t kDefaultButton4 = 768;

// What the box returns: the button that was pressed.
inline constexpr std::int32_t kOK = 1;
inline constexpr std::int32_t kCancel = 2;
inline constexpr std::int32_t kAbort = 3;
inline constexpr std::int32_t kRetry = 4;
inline constexpr std::int32_t kIgnore = 5;
inline constexpr std::int32_t kYes = 6;
inline constexpr std::int32_t kNo = 7;
inline constexpr std::int32_t kFirstFreeButton = 11;  // and 12 and 13

}  // namespace krx::service
