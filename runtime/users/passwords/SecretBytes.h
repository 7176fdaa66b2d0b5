#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace krx::runtime {

// Bytes that are wiped from memory when they go.
class SecretBytes {
 public:
  explicit SecretBytes(std::size_t size) : bytes_(size) {}
  SecretBytes(const SecretBytes&) = delete;
  SecretBytes& operator=(const SecretBytes&) = delete;
  ~SecretBytes() {
    // Volatile, so that the compiler cannot drop writes to memory that is about to be freed.
    volatile std::uint8_t* const memory = bytes_.data();
    for (std::size_t i = 0; i < bytes_.size(); ++i)
      memory[i] = 0;
  }

  std::span<std::uint8_t> Bytes() { return bytes_; }
  std::span<const std::uint8_t> Bytes() const { return bytes_; }

 private:
  std::vector<std::uint8_t> bytes_;  // never grown: a reallocation would leave a copy behind
};

}  // namespace krx::runtime
