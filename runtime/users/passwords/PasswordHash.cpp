#include "runtime/users/passwords/PasswordHash.h"

#include "runtime/core/KorvelError.h"
#include "runtime/users/passwords/PasswordKeys.h"
#include "runtime/users/passwords/SecretBytes.h"

namespace krx::runtime {
namespace {

void Derive(Cryptography& cryptography, const Password& password, const PasswordHash& hash,
            std::span<std::uint8_t> key) {
  const StringView units = password.View();
  SecretBytes bytes(units.size() * 2);
  for (std::size_t i = 0; i < units.size(); ++i) {
    bytes.Bytes()[2 * i] = static_cast<std::uint8_t>(units[i] & 0xFF);
    bytes.Bytes()[2 * i + 1] = static_cast<std::uint8_t>(units[i] >> 8);
  }
  cryptography.DeriveKey(bytes.Bytes(), hash.Salt, hash.Iterations, key);
}

// Looks at every byte, whatever the first ones are.
bool EqualInConstantTime(std::span<const std::uint8_t> left, std::span<const std::uint8_t> right) {
  if (left.size() != right.size()) return false;
  volatile std::uint8_t difference = 0;
  for (std::size_t i = 0; i < left.size(); ++i)
    difference = static_cast<std::uint8_t>(difference | (left[i] ^ right[i]));
  return difference == 0;
}

}  // namespace

PasswordHash HashPassword(Cryptography& cryptography, const Password& password,
                          std::uint32_t iterations) {
  PasswordHash hash{iterations, std::vector<std::uint8_t>(kSaltSize),
                    std::vector<std::uint8_t>(kKeySize)};
  cryptography.FillRandom(hash.Salt);
  Derive(cryptography, password, hash, hash.Key);
  return hash;
}

bool Matches(Cryptography& cryptography, const Password& password, const PasswordHash& hash,
             PasswordKeys* keys) {
  if (keys == nullptr && !hash.KeyId.empty())
    throw KorvelError(kPasswordKeyMissing, u"a password was hashed with a key that is not known");
  SecretBytes key(hash.Key.size());
  Derive(cryptography, password, hash, key.Bytes());
  if (keys != nullptr) keys->Mix(hash.KeyId, key.Bytes());
  return EqualInConstantTime(key.Bytes(), hash.Key);
}

PasswordHash DecoyHash(std::uint32_t iterations) {
  return {iterations, std::vector<std::uint8_t>(kSaltSize), std::vector<std::uint8_t>(kKeySize)};
}

}  // namespace krx::runtime
