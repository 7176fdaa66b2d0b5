#pragma once

#include <atomic>
#include <cstdint>
#include <random>
#include <span>

#include "runtime/users/system/Clock.h"
#include "runtime/users/system/Cryptography.h"

namespace krx::test {

// The derivation of a well-kept library; randomness that repeats, so that runs can be compared.
class TestCryptography : public runtime::Cryptography {
 public:
  void DeriveKey(std::span<const std::uint8_t> password, std::span<const std::uint8_t> salt,
                 std::uint32_t iterations, std::span<std::uint8_t> key) override;
  runtime::Digest Hash(std::span<const std::uint8_t> bytes) override;
  runtime::Digest Authenticate(std::span<const std::uint8_t> key,
                               std::span<const std::uint8_t> bytes) override;
  void FillRandom(std::span<std::uint8_t> bytes) override;
  Password Normalized(const Password& password) override;

  void Restart(std::uint32_t seed) { random_.seed(seed); }

  std::atomic<int> Derivations = 0;
  std::atomic<std::uint64_t> Iterations = 0;
  std::atomic<bool> Fails = false;
  std::atomic<bool> HashFails = false;
  bool IsQuick = false;  // one iteration, whatever is asked for: where only the course matters

 private:
  std::mt19937 random_{1};
};

class TestClock : public runtime::Clock {
 public:
  std::int64_t Now() override { return Seconds; }

  std::atomic<std::int64_t> Seconds = 1'767'225'600;  // 2026-01-01 00:00:00
};

}  // namespace krx::test
