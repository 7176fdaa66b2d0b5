#include "runtime/users/store/Checksum.h"

#include <array>

namespace krx::runtime {
namespace {

constexpr std::array<std::uint64_t, 256> MakeTable() {
  constexpr std::uint64_t kPolynomial = 0xC96C5795D7870F42u;
  std::array<std::uint64_t, 256> table{};
  for (std::uint64_t byte = 0; byte < table.size(); ++byte) {
    std::uint64_t remainder = byte;
    for (int bit = 0; bit < 8; ++bit)
      remainder = (remainder >> 1) ^ ((remainder & 1) != 0 ? kPolynomial : 0);
    table[static_cast<std::size_t>(byte)] = remainder;
  }
  return table;
}

constexpr std::array<std::uint64_t, 256> kTable = MakeTable();

}  // namespace

std::uint64_t Checksum(std::string_view bytes) {
  std::uint64_t sum = ~std::uint64_t{0};
  for (const char byte : bytes)
    sum = kTable[(sum ^ static_cast<unsigned char>(byte)) & 0xFF] ^ (sum >> 8);
  return ~sum;
}

}  // namespace krx::runtime
