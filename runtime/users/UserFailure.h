#pragma once

#include <cstdint>
#include <utility>

#include "runtime/core/Failure.h"

namespace krx::runtime {

// Statuses of the user management's own failures.
inline constexpr std::uint32_t kUnreadableUsers = 0x80040211u;
inline constexpr std::uint32_t kMalformedRules = 0x80040212u;
inline constexpr std::uint32_t kUnableToSaveUsers = 0x80040213u;
inline constexpr std::uint32_t kFileFailure = 0x80040214u;
inline constexpr std::uint32_t kCryptographyFailure = 0x80040215u;
inline constexpr std::uint32_t kStoreBusy = 0x80040216u;
inline constexpr std::uint32_t kUnableToProvision = 0x80040217u;

// The store could not be written; the old one is still in force.
class UnableToSave : public Error {
 public:
  explicit UnableToSave(String description)
      : Error(Failure(kUnableToSaveUsers, std::move(description))) {}
};

}  // namespace krx::runtime
