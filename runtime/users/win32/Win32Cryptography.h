#pragma once

#include "runtime/users/system/Cryptography.h"

namespace krx::runtime {

// The system's own cryptography (bcrypt.dll).
class Win32Cryptography : public Cryptography {
 public:
  Win32Cryptography();
  ~Win32Cryptography() override;
  Win32Cryptography(const Win32Cryptography&) = delete;
  Win32Cryptography& operator=(const Win32Cryptography&) = delete;

  void DeriveKey(std::span<const std::uint8_t> password, std::span<const std::uint8_t> salt,
                 std::uint32_t iterations, std::span<std::uint8_t> key) override;
  Digest Hash(std::span<const std::uint8_t> bytes) override;
  Digest Authenticate(std::span<const std::uint8_t> key,
                      std::span<const std::uint8_t> bytes) override;
  void FillRandom(std::span<std::uint8_t> bytes) override;
  Password Normalized(const Password& password) override;

 private:
  void TakePlaces(std::span<const std::uint8_t> salt, std::size_t size);

  void* algorithm_ = nullptr;  // HMAC-SHA256
  void* digest_ = nullptr;     // SHA-256
};

}  // namespace krx::runtime
