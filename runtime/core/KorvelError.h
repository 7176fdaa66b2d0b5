#pragma once

#include <cstdint>
#include <utility>

#include "base/Error.h"

namespace krx::runtime {

// Statuses of the runtime's own errors.
inline constexpr std::uint32_t kInvalidArgument = 0x80070057u;
inline constexpr std::uint32_t kMalformedTexts = 0x80040201u;
inline constexpr std::uint32_t kUnreadableTexts = 0x80040202u;
inline constexpr std::uint32_t kUnreadableUsers = 0x80040211u;
inline constexpr std::uint32_t kMalformedRules = 0x80040212u;
inline constexpr std::uint32_t kUnableToSaveUsers = 0x80040213u;
inline constexpr std::uint32_t kFileFailure = 0x80040214u;
inline constexpr std::uint32_t kCryptographyFailure = 0x80040215u;
inline constexpr std::uint32_t kStoreBusy = 0x80040216u;
inline constexpr std::uint32_t kUnableToProvision = 0x80040217u;
inline constexpr std::uint32_t kUnableToRecover = 0x80040218u;
inline constexpr std::uint32_t kDirectorySilent = 0x80040219u;
inline constexpr std::uint32_t kDirectoryFailure = 0x8004021Au;
inline constexpr std::uint32_t kPasswordKeyMissing = 0x8004021Bu;

// An error of the runtime, named as its source.
inline Error KorvelError(std::uint32_t status, String description) {
  return Error(status, std::move(description), u"KorvelRuntime");
}

}  // namespace krx::runtime
