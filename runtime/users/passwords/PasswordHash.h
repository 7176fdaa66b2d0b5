#pragma once

#include <cstdint>
#include <vector>

#include "base/Password.h"
#include "runtime/users/system/Cryptography.h"

namespace krx::runtime {

inline constexpr std::size_t kSaltSize = 16;  // bytes
inline constexpr std::size_t kKeySize = 32;   // bytes, one block of the hash

inline constexpr std::size_t kKeyIdSize = 8;  // bytes

class PasswordKeys;

// Names one of the secret keys that passwords are hashed with; empty for none.
using KeyId = std::vector<std::uint8_t>;

// What is stored of a password: enough to recognise it, at a price, and no way back.
struct PasswordHash {
  std::uint32_t Iterations = 0;
  std::vector<std::uint8_t> Salt;
  std::vector<std::uint8_t> Key;
  runtime::KeyId KeyId = {};  // what else is needed to recognise it

  bool operator==(const PasswordHash& other) const = default;
};

// Hashes with a fresh random salt and without secret key. A password is hashed unit by unit, whole;
// who typed it has brought it into its normal form (Cryptography).
PasswordHash HashPassword(Cryptography& cryptography, const Password& password,
                          std::uint32_t iterations);

// Whether the password is the hashed one; derives one key and compares it in constant time.
// Raises Error when it was hashed with a secret key that is not to be had.
bool Matches(Cryptography& cryptography, const Password& password, const PasswordHash& hash,
             PasswordKeys* keys = nullptr);

// A hash that nobody has a password for; checking against it costs the same as against a real one.
PasswordHash DecoyHash(std::uint32_t iterations);

}  // namespace krx::runtime
