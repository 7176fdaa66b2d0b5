#pragma once

#include <cstdint>
#include <optional>

#include "base/Error.h"

namespace krx::test {

inline constexpr std::uint32_t kTypeMismatch = 0x800A0000u + 13;
inline constexpr std::uint32_t kPathNotFound = 0x800A0000u + 76;
inline constexpr std::uint32_t kObjectNotSet = 0x800A0000u + 91;

// The error that the act ends with, or none.
template <class Act>
std::optional<Error> ErrorOf(Act&& act) {
  try {
    act();
  } catch (const Error& error) {
    return error;
  }
  return std::nullopt;
}

// Its status; 0 when the act succeeds.
template <class Act>
std::uint32_t StatusOf(Act&& act) {
  const std::optional<Error> error = ErrorOf(act);
  return error ? error->Status() : 0;
}

}  // namespace krx::test
