#pragma once

#include <array>
#include <cstdint>
#include <span>

#include "base/Password.h"

namespace krx::runtime {

using Digest = std::array<std::uint8_t, 32>;

// What the system does for passwords: slow key derivation, digests, randomness and the one
// spelling of a text. All raise Error when the system refuses.
class Cryptography {
 public:
  virtual ~Cryptography() = default;
  // PBKDF2 with HMAC-SHA256; fills the whole of `key`.
  virtual void DeriveKey(std::span<const std::uint8_t> password, std::span<const std::uint8_t> salt,
                         std::uint32_t iterations, std::span<std::uint8_t> key) = 0;
  // SHA-256.
  virtual Digest Hash(std::span<const std::uint8_t> bytes) = 0;
  // HMAC with SHA-256.
  virtual Digest Authenticate(std::span<const std::uint8_t> key,
                              std::span<const std::uint8_t> bytes) = 0;
  // Fills `bytes` from the system's generator for secrets.
  virtual void FillRandom(std::span<std::uint8_t> bytes) = 0;
  // The password in Unicode's normalisation form C; what is no well-formed text stays as it is.
  virtual Password Normalized(const Password& password) = 0;
};

}  // namespace krx::runtime
