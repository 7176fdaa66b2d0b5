#pragma once

#include "runtime/users/passwords/KeyProtection.h"

namespace krx::runtime {

// The system's data protection for all programs of the machine (crypt32.dll, loaded at first use).
class Win32KeyProtection : public KeyProtection {
 public:
  std::string Seal(std::span<const std::uint8_t> secret) override;
  std::optional<SecretBytes> Open(std::string_view sealed) override;
};

}  // namespace krx::runtime
