#pragma once

#include <array>
#include <cstdint>
#include <span>

namespace krx::runtime {

using Digest = std::array<std::uint8_t, 32>;

// The system's cryptography: slow key derivation, a digest and randomness. All raise Error when the
// system refuses.
class Cryptography {
 public:
  virtual ~Cryptography() = default;
  // PBKDF2 with HMAC-SHA256; fills the whole of `key`.
  virtual void DeriveKey(std::span<const std::uint8_t> password, std::span<const std::uint8_t> salt,
                         std::uint32_t iterations, std::span<std::uint8_t> key) = 0;
  // SHA-256.
  virtual Digest Hash(std::span<const std::uint8_t> bytes) = 0;
  // Fills `bytes` from the system's generator for secrets.
  virtual void FillRandom(std::span<std::uint8_t> bytes) = 0;
};

}  // namespace krx::runtime
