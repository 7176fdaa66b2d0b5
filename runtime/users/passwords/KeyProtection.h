#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "runtime/users/passwords/SecretBytes.h"

namespace krx::runtime {

// What lets a secret lie in a file that only this machine can open. Raises Error when the system
// refuses.
class KeyProtection {
 public:
  virtual ~KeyProtection() = default;
  // The secret in a form that does not show it.
  virtual std::string Seal(std::span<const std::uint8_t> secret) = 0;
  // The secret again; nothing when it was not sealed on this machine.
  virtual std::optional<SecretBytes> Open(std::string_view sealed) = 0;
};

}  // namespace krx::runtime
