#pragma once

#include <cstdint>
#include <utility>

#include "base/Error.h"

namespace krx::runtime {

// Statuses of the runtime's own failures.
inline constexpr std::uint32_t kInvalidArgument = 0x80070057u;
inline constexpr std::uint32_t kMalformedTexts = 0x80040201u;
inline constexpr std::uint32_t kUnreadableTexts = 0x80040202u;

// A failure of the runtime, named as its source.
inline Error Failure(std::uint32_t status, String description) {
  return Error(status, std::move(description), u"KorvelRuntime");
}

}  // namespace krx::runtime
