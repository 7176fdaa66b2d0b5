#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace krx::runtime {

// Overwrites memory. Volatile, so that the compiler cannot drop writes to what is about to be
// freed.
inline void Wipe(void* memory, std::size_t size) {
  volatile std::uint8_t* const bytes = static_cast<std::uint8_t*>(memory);
  for (std::size_t i = 0; i < size; ++i)
    bytes[i] = 0;
}

// Bytes that are wiped from memory when they go.
class SecretBytes {
 public:
  explicit SecretBytes(std::size_t size) : bytes_(size) {}
  SecretBytes(const SecretBytes&) = delete;
  SecretBytes& operator=(const SecretBytes&) = delete;
  SecretBytes(SecretBytes&&) noexcept = default;  // the other one has nothing left
  ~SecretBytes() { Wipe(bytes_.data(), bytes_.size()); }

  std::span<std::uint8_t> Bytes() { return bytes_; }
  std::span<const std::uint8_t> Bytes() const { return bytes_; }

 private:
  std::vector<std::uint8_t> bytes_;  // never grown: a reallocation would leave a copy behind
};

}  // namespace krx::runtime
